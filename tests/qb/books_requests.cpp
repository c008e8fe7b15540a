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
#include "support/json.h"

#include <functional>
#include <map>

namespace testing_support {

using util::Money;
using Call = std::function<LegacyBool(bool flawed)>;

static Money cents(std::int64_t value) {
    return Money::fromRaw(value * 100);
}

LegacyBool addVendor(bool /*flawed*/) {
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

LegacyBool addCustomer(bool /*flawed*/) {
    clsQBCustomer customer;
    customer.Name = "SMITH01";
    customer.LastName = "Smith & Sons";
    customer.CompanyName = "Smith  ";
    customer.Address1 = "is not sent";
    customer.Address2 = "Floor 2";
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
    given.QuantityOnHand = 12.5F;
    return given;
}

/// What adds the item of a name in one of the ways.
template <LegacyBool (clsQBInventory::*add)()>
static Call adding(const char* name) {
    return [name](bool /*flawed*/) {
        clsQBInventory given = item(name);
        return (given.*add)();
    };
}

LegacyBool addStock(bool /*flawed*/) {
    return item("1000001.2").InvtAddNewReq();
}

static LegacyBool changeStock(bool flawed) {
    gInventory.SL = std::string_view("10000012");
    clsQBInventory given = item("1000001.2");
    given.ItemQueryRq();
    given.SalesPrice = cents(2199);
    given.EditSequence = flawed ? "1" : given.EditSequence;
    return given.InvtModifyReq();
}

static LegacyBool addTaxItem(bool /*flawed*/) {
    clsQBInventory given = item("A");
    given.SalesTaxCode = "7.5%";
    given.PrefVendor = "Sales Tax Agency";
    return given.SalesTaxInvtAddNewReq();
}

static LegacyBool addPaymentItem(bool /*flawed*/) {
    clsQBInventory given = item("~CASH");
    given.ExpenseAccount = "Cash Drawer";
    given.IncomeAccount = "Cash";
    return given.PaymentInvtAddNewReq();
}

clsQBEmployee employee(const char* name) {
    clsQBEmployee given;
    given.Name = name;
    given.FirstName = "Ann";
    given.LastName = "Lee";
    given.EmployeeType = "2";
    given.Gender = "1";
    given.HiredDate = "12/31/2014";
    given.AccountNumber = "AL";
    given.IsActive = kYes;
    given.Address2 = "Back door";
    return given;
}

static LegacyBool addEmployee(bool /*flawed*/) {
    return employee("Ann Lee").EmployeeAddNewReq();
}

static LegacyBool addOtherName(bool /*flawed*/) {
    return employee("Ann Lee Rep").OtherNameAddNewReq();
}

static LegacyBool addSalesRep(bool /*flawed*/) {
    gpSalesCode_add("Ann Lee Rep", "AL", kYes);
    return kYes;
}

static LegacyBool addPaymentMethod(bool /*flawed*/) {
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
        {"1000001.2", "Blue mug", Money::fromRaw(440050), "SMITH01", 4},
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
    given.DueDate = " ";
    given.ShipDate = "3/1/2015";
    given.BillAddr1 = "Smith & Sons";
    given.BillAddr4 = "Hall 4";
    given.BillCity = "Troy";
    given.SalesRep = "AL";
    given.Memo = "Thank you for your business.";
    given.TaxCode = "A";
    given.Terms = "Net 30";
    gaSaleLines = {
        {"is not sent", "", "", 9, cents(999), "", ""},
        {"1000001.2", "", "Blue mug", 2, Money::fromRaw(439750), "Tax", ""},
        {"0300", "", "Category", 0, {}, "Non", ""},
        {"", "2/28/2015", "No amount", 1, {}, "", ""},
        {"FREIGHT", "2/27/2015", "", 0, cents(500), "Non", ""},
        {"Return", "", " ", 0.5F, cents(-1000), "", ""},
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
         {kDebitSide, "9", "Cost of Goods Sold", cents(-500), "", "0000123"},
         {2, "9", "Nowhere", cents(1), "", ""},
         {kCreditSide, "9", "Inventory Asset", cents(flawed ? 499 : 500), "SMITH01", ""}},
        "2/28/2015",
        "0000123",
        " "
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

std::string noRecord(const std::string& kind, const std::string& name, const std::string& where) {
    return "There is an invalid reference to QuickBooks " + kind + " \"" + name + "\" in the " +
           where +
           ".  QuickBooks error message: Invalid argument.  The specified record does not exist in "
           "the list.";
}

/// What makes each request, by the name of its document.
static const std::map<std::string, Call> kCalls = {
    {"vendor_add", addVendor},
    {"vendor_mod", changeVendor},
    {"customer_add", addCustomer},
    {"customer_mod", changeCustomer},
    {"item_inventory_add", addStock},
    {"item_inventory_mod", changeStock},
    {"item_with_cost", adding<&clsQBInventory::NonInvtWithCostAddNewReq>("KIT")},
    {"item_sold_only", adding<&clsQBInventory::NonInvtAddNewReq>("MATRIX")},
    {"item_other_charge", adding<&clsQBInventory::OtherChargeAddNewReq>("FREIGHT")},
    {"item_sales_tax", addTaxItem},
    {"sales_tax_code", adding<&clsQBInventory::SalesTaxCodeAddNewReq>("A")},
    {"item_payment", addPaymentItem},
    {"employee_add", addEmployee},
    {"other_name_add", addOtherName},
    {"sales_rep_add", addSalesRep},
    {"payment_method_add", addPaymentMethod},
    {"purchase_order_add", addOrder},
    {"item_receipt_add", addReceiptOfGoods},
    {"vendor_credit", addVendorCredit},
    {"sales_receipt_add", addReceipt},
    {"invoice_add", addInvoice},
    {"credit_memo_add", addCreditMemo},
    {"journal_add", addJournal},
    {"payment_add", addPayment},
};

static Post postOf(const Json& row) {
    const auto text = [&](const char* key) {
        return row.has(key) ? row[key].text() : std::string();
    };
    static const std::map<std::string, Log> kLogs = {
        {"", Log::nothing}, {"text", Log::text}, {"rawAndText", Log::rawAndText}};
    return {
        text("name"),
        text("element"),
        kCalls.at(text("name")),
        text("literal"),
        text("refusal"),
        kLogs.at(text("log")),
        !row.has("hasResult"),
        text("done"),
        text(row.has("failed") ? "failed" : "literal")};
}

static std::vector<Post> readPosts() {
    const Json table = parseJsonFile(BREVANE_TEST_DATA "/qb/posts.json");
    EXPECT_EQ(table.items().size(), kCalls.size());
    std::vector<Post> read;
    for (const Json& row : table.items()) {
        read.push_back(postOf(row));
    }
    return read;
}

const std::vector<Post>& posts() {
    static const std::vector<Post> kPosts = readPosts();
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
