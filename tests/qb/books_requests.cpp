#include "qb/books_requests.h"

#include "core/brv_op.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_SalesHead.h"
#include "qb/clsQBCustomer.h"
#include "qb/clsQBEmployee.h"
#include "qb/clsQBInventory.h"
#include "qb/clsQBPO.h"
#include "qb/clsQBSales.h"
#include "qb/clsQBVendor.h"
#include "qb/journal_and_payments.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"

namespace testing_support {

using util::Money;

static Money cents(std::int64_t value) {
    return Money::fromRaw(value * 100);
}

LegacyBool addVendor(bool flawed) {
    static_cast<void>(flawed);
    clsQBVendor vendor;
    vendor.Name = vendor.CompanyName = "ACME";
    vendor.NameOnCheck = "Acme Works";
    vendor.OpenBalance = cents(2000);
    vendor.OpenBalanceDate = qb::dateOf("1/2/2015");
    vendor.TermsName = "Net 15";
    vendor.Addr1 = "2 Dock Road";
    return vendor.VendorAddRequest();
}

static LegacyBool changeVendor(bool flawed) {
    clsQBVendor vendor;
    vendor.Name = "ACME";
    vendor.VendorSearchRq();
    vendor.City = "Troy";
    vendor.Phone = "555-0102";
    vendor.EditSequence = flawed ? "1" : vendor.EditSequence;
    return vendor.VendorModifyReq();
}

LegacyBool addCustomer(bool flawed) {
    static_cast<void>(flawed);
    clsQBCustomer customer;
    customer.Name = "SMITH01";
    customer.LastName = "Smith & Sons";
    customer.Address1 = "is not sent";
    customer.City = "Troy";
    customer.CreditLimit = cents(50005);
    customer.SalesTaxCode = "Tax";
    customer.Terms = "Net 30";
    customer.JobType = "Residential";
    customer.OpenBalance = cents(1234);
    return customer.CustomerAddNewReq();
}

static LegacyBool changeCustomer(bool flawed) {
    gNames.ARCode = std::string_view("SMITH01");
    clsQBCustomer customer;
    customer.Name = "SMITH01";
    customer.CustomerSearchRq();
    customer.Address1 = "1 Main Street";
    customer.EditSequence = flawed ? "1" : customer.EditSequence;
    return customer.CustomerModifyReq();
}

clsQBInventory item(const char* name) {
    clsQBInventory given;
    given.Name = name;
    given.IsActive = given.IsTaxable = kYes;
    given.SalesTaxCode = "Tax";
    given.SalesDesc = given.PurchaseDesc = "Blue mug";
    given.SalesPrice = Money::fromRaw(199950);
    given.PurchaseCost = Money::fromRaw(80000);
    given.PrefVendor = "ACME";
    given.IncomeAccount = "Merchandise Sales";
    given.COGSAccount = given.ExpenseAccount = "Cost of Goods Sold";
    given.AssetAccount = "Inventory Asset";
    given.QuantityOnHand = 10;
    return given;
}

template <LegacyBool (clsQBInventory::*add)()>
static LegacyBool addItem(const char* name) {
    clsQBInventory given = item(name);
    return (given.*add)();
}

LegacyBool addStock(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::InvtAddNewReq>("1000001.2");
}

static LegacyBool changeStock(bool flawed) {
    gInventory.SL = std::string_view("10000012");
    clsQBInventory given = item("1000001.2");
    given.ItemQueryRq();
    given.SalesPrice = cents(2199);
    given.EditSequence = flawed ? "1" : given.EditSequence;
    return given.InvtModifyReq();
}

static LegacyBool addBoughtAndSold(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::NonInvtWithCostAddNewReq>("KIT");
}

static LegacyBool addSoldOnly(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::NonInvtAddNewReq>("MATRIX");
}

static LegacyBool addCharge(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::OtherChargeAddNewReq>("FREIGHT");
}

static LegacyBool addTaxItem(bool flawed) {
    static_cast<void>(flawed);
    clsQBInventory given = item("A");
    given.SalesTaxCode = "7.5%";
    given.PrefVendor = "Sales Tax Agency";
    return given.SalesTaxInvtAddNewReq();
}

static LegacyBool addTaxCode(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::SalesTaxCodeAddNewReq>("A");
}

static LegacyBool addPaymentItem(bool flawed) {
    static_cast<void>(flawed);
    clsQBInventory given = item("~CASH");
    given.ExpenseAccount = "Cash Drawer";
    given.IncomeAccount = "Cash";
    return given.PaymentInvtAddNewReq();
}

static clsQBEmployee employee(const char* name) {
    clsQBEmployee given;
    given.Name = name;
    given.FirstName = "Ann";
    given.LastName = "Lee";
    given.EmployeeType = "2";
    given.Gender = "1";
    given.HiredDate = "12/31/2014";
    given.IsActive = kYes;
    given.City = "Troy";
    return given;
}

static LegacyBool addEmployee(bool flawed) {
    static_cast<void>(flawed);
    return employee("Ann Lee").EmployeeAddNewReq();
}

static LegacyBool addOtherName(bool flawed) {
    static_cast<void>(flawed);
    return employee("Ann Lee Rep").OtherNameAddNewReq();
}

static LegacyBool addSalesRep(bool flawed) {
    static_cast<void>(flawed);
    gpSalesCode_add("Ann Lee Rep", "AL", kYes);
    return kYes;
}

static LegacyBool addPaymentMethod(bool flawed) {
    static_cast<void>(flawed);
    gpTenderType_add("Visa Credit Card", kYes);
    return kYes;
}

clsQBPO& order(bool flawed) {
    clsQBPO& given = qb::purchaseOrder();
    given = clsQBPO();
    given.TxnDate = "5/6/2015";
    given.DueDate = "5/7/2015";
    given.ExpectedDate = " ";
    given.RefNumber = "4711";
    given.VendorName = flawed ? "Nobody" : "ACME";
    given.Memo = "spring";
    gaQBPOLines = {
        {},
        {"1000001.2", "Blue mug", Money::fromRaw(440000), "SMITH01", 4},
        {"~NONSTK", "String", cents(150), "", 1},
    };
    return given;
}

LegacyBool addOrder(bool flawed) {
    return order(flawed).POHeaderAddNewReq();
}

static LegacyBool addReceiptOfGoods(bool flawed) {
    return order(flawed).POItemReceivedAddRq();
}

static LegacyBool addVendorCredit(bool flawed) {
    order(flawed);
    gaQBPOLines[1].Amount = cents(-600);
    clsQBVendor vendor;
    vendor.Name = "ACME";
    return vendor.VendorCreditAddReq();
}

clsQBSales sale(bool flawed, const char* ticket) {
    gSalesHead.Invoice = std::string_view(ticket);
    clsQBSales given;
    given.TxnDate = "2/28/2015";
    given.RefNumber = ticket;
    given.CustomerName = flawed ? "Nobody" : "SMITH01";
    given.BillAddr1 = "Smith & Sons";
    given.BillCity = "Troy";
    given.SalesRep = "AL";
    given.TaxCode = "A";
    given.Terms = "Net 30";
    gaSaleLines = {
        {},
        {"1000001.2", "", "Blue mug", 2, cents(4398), "Tax", ""},
        {"0300", "", "Category", 0, {}, "Non", ""},
        {"FREIGHT", "", "", 0, cents(500), "Non", ""},
    };
    return given;
}

static LegacyBool addReceipt(bool flawed) {
    clsQBSales given = sale(flawed, "0000123");
    given.DepositToAccount = "Cash Drawer";
    given.PaymentMethod = "Cash";
    given.SalesReceiptAddRq();
    return kYes;
}

static LegacyBool addInvoice(bool flawed) {
    sale(flawed, "0000124").InvoiceAddRq();
    return kYes;
}

static LegacyBool addCreditMemo(bool flawed) {
    clsQBSales given = sale(flawed, "0000125");
    for (QBSaleLine& line : gaSaleLines) {
        line.Amount = -line.Amount;
    }
    given.CreditMemoAddRq();
    return kYes;
}

static LegacyBool addJournal(bool flawed) {
    gfbRequestMsgSet_reset();
    gpJournalEntry_add(
        {{},
         {kDebitSide, "", "Cost of Goods Sold", cents(-500), "", "0000123"},
         {kCreditSide, "", "Inventory Asset", cents(flawed ? 499 : 500), "SMITH01", ""}},
        "2/28/2015",
        "0000123",
        ""
    );
    return kYes;
}

static LegacyBool addPayment(bool flawed) {
    gpReceivePayment_add(
        {flawed ? "Nobody" : "SMITH01",
         "2/28/2015",
         cents(2500),
         "Visa Credit Card",
         "Visa Credit Card",
         "0000126",
         " Cash Drawer "}
    );
    return kYes;
}

static std::string inUse(const std::string& name) {
    return "The name \"" + name + "\" of the list element is already in use.";
}

std::string noRecord(const std::string& kind, const std::string& name, const std::string& where) {
    return "There is an invalid reference to QuickBooks " + kind + " \"" + name + "\" in the " +
           where +
           ".  QuickBooks error message: Invalid argument.  The specified record does not exist in "
           "the list.";
}

static constexpr char kStale[] = "The provided edit sequence \"1\" is out-of-date.";

static const Post kPosts[] = {
    {"vendor add", "VendorAdd", addVendor, "VendorAddRequest ACME ", inUse("ACME")},
    {"vendor change", "VendorMod", changeVendor, "", kStale},
    {"customer add", "CustomerAdd", addCustomer, "CustomerAddNewReq SMITH01 ", inUse("SMITH01")},
    {"customer change", "CustomerMod", changeCustomer, "CustomerModifyReq SMITH01 ", kStale},
    {"inventory item add",
     "ItemInventoryAdd",
     addStock,
     "InvtAddNewReq 1000001.2 ",
     inUse("1000001.2")},
    {"inventory item change", "ItemInventoryMod", changeStock, "InvtModifyReq 1000001.2 ", kStale},
    {"item with cost",
     "ItemNonInventoryAdd",
     addBoughtAndSold,
     "NonInvtAddNewReq KIT ",
     inUse("KIT")},
    {"item sold only",
     "ItemNonInventoryAdd",
     addSoldOnly,
     "NonInvtAddNewReq MATRIX ",
     inUse("MATRIX")},
    {"other charge",
     "ItemOtherChargeAdd",
     addCharge,
     "OtherChargeAddNewReq FREIGHT ",
     inUse("FREIGHT")},
    {"sales tax item", "ItemSalesTaxAdd", addTaxItem, "SalesTaxInvtAddNewReq A ", inUse("A")},
    {"sales tax code", "SalesTaxCodeAdd", addTaxCode, "SalesTaxCodeAddNewReq A ", inUse("A")},
    {"payment item",
     "ItemPaymentAdd",
     addPaymentItem,
     "PaymentInvtAddNewReq ~CASH ",
     inUse("~CASH")},
    {"employee",
     "EmployeeAdd",
     addEmployee,
     "EmployeeAddNewReq Ann Lee ",
     inUse("Ann Lee"),
     Log::nothing,
     true,
     "The field \"Name\" is not supported by this implementation."},
    {"other name",
     "OtherNameAdd",
     addOtherName,
     "OtherNameAddNewReq Ann Lee Rep ",
     inUse("Ann Lee Rep")},
    {"sales rep",
     "SalesRepAdd",
     addSalesRep,
     "gpSalesCode_add AL ",
     inUse("AL"),
     Log::nothing,
     false},
    {"payment method",
     "PaymentMethodAdd",
     addPaymentMethod,
     "gpTenderType_add Visa Credit Card ",
     inUse("Visa Credit Card"),
     Log::nothing,
     false},
    {"purchase order",
     "PurchaseOrderAdd",
     addOrder,
     "POHeaderAddNewReq 4711 ",
     noRecord("Vendor", "Nobody", "PurchaseOrder")},
    {"item receipt",
     "ItemReceiptAdd",
     addReceiptOfGoods,
     "",
     noRecord("Vendor", "Nobody", "ItemReceipt")},
    {"vendor credit",
     "VendorCreditAdd",
     addVendorCredit,
     "VendorcreditAddRq ACME ",
     noRecord("Vendor", "Nobody", "VendorCredit")},
    {"sales receipt",
     "SalesReceiptAdd",
     addReceipt,
     "SalesAddNewReq 0000123 ",
     noRecord("Customer", "Nobody", "SalesReceipt"),
     Log::text,
     false},
    {"invoice",
     "InvoiceAdd",
     addInvoice,
     "InvoiceAddRq 0000124 ",
     noRecord("Customer", "Nobody", "Invoice"),
     Log::rawAndText,
     false},
    {"credit memo",
     "CreditMemoAdd",
     addCreditMemo,
     "CreditMemoAddRq 0000125 ",
     noRecord("Customer", "Nobody", "CreditMemo"),
     Log::text,
     false},
    {"journal entry",
     "JournalEntryAdd",
     addJournal,
     "gpJournalEntry_add 0000123 ",
     "There was an error when saving a General Journal transaction.  QuickBooks error message: "
     "Transaction not in balance.",
     Log::nothing,
     false},
    {"payment",
     "ReceivePaymentAdd",
     addPayment,
     "ReceivePaymentAddRq 0000126 ",
     noRecord("Customer", "Nobody", "ReceivePayment"),
     Log::text,
     false},
};

std::span<const Post> posts() {
    return kPosts;
}

ShopBooks::ShopBooks() {
    gSalesHead.TaxRate1 = 7.5F;
    gsQBSaleTaxItem = "A";
}

void ShopBooks::growLists() {
    for (const Post& post : posts()) {
        if (post.log == Log::nothing) {
            post.call(false);
        }
    }
    boxes();
    changes();
}

}  // namespace testing_support
