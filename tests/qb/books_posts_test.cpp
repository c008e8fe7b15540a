#include "core/brv_op.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_SalesHead.h"
#include "qb/books_fixture.h"
#include "qb/clsQBCustomer.h"
#include "qb/clsQBEmployee.h"
#include "qb/clsQBInventory.h"
#include "qb/clsQBPO.h"
#include "qb/clsQBSales.h"
#include "qb/clsQBVendor.h"
#include "qb/journal_and_payments.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "support/expected_file.h"

namespace {

using testing_support::kGoneText;
using testing_support::serverGone;
using util::Money;

Money cents(std::int64_t value) {
    return Money::fromRaw(value * 100);
}

// What the shop of the test posts. `flawed` makes the company file refuse it; what is added to a
// list needs no flaw, because its name is in use the second time.

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

LegacyBool changeVendor(bool flawed) {
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

LegacyBool changeCustomer(bool flawed) {
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
LegacyBool addItem(const char* name) {
    clsQBInventory given = item(name);
    return (given.*add)();
}

LegacyBool addStock(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::InvtAddNewReq>("1000001.2");
}

LegacyBool changeStock(bool flawed) {
    gInventory.SL = std::string_view("10000012");
    clsQBInventory given = item("1000001.2");
    given.ItemQueryRq();
    given.SalesPrice = cents(2199);
    given.EditSequence = flawed ? "1" : given.EditSequence;
    return given.InvtModifyReq();
}

LegacyBool addBoughtAndSold(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::NonInvtWithCostAddNewReq>("KIT");
}

LegacyBool addSoldOnly(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::NonInvtAddNewReq>("MATRIX");
}

LegacyBool addCharge(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::OtherChargeAddNewReq>("FREIGHT");
}

LegacyBool addTaxItem(bool flawed) {
    static_cast<void>(flawed);
    clsQBInventory given = item("A");
    given.SalesTaxCode = "7.5%";
    given.PrefVendor = "Sales Tax Agency";
    return given.SalesTaxInvtAddNewReq();
}

LegacyBool addTaxCode(bool flawed) {
    static_cast<void>(flawed);
    return addItem<&clsQBInventory::SalesTaxCodeAddNewReq>("A");
}

LegacyBool addPaymentItem(bool flawed) {
    static_cast<void>(flawed);
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
    given.IsActive = kYes;
    given.City = "Troy";
    return given;
}

LegacyBool addEmployee(bool flawed) {
    static_cast<void>(flawed);
    return employee("Ann Lee").EmployeeAddNewReq();
}

LegacyBool addOtherName(bool flawed) {
    static_cast<void>(flawed);
    return employee("Ann Lee Rep").OtherNameAddNewReq();
}

LegacyBool addSalesRep(bool flawed) {
    static_cast<void>(flawed);
    gpSalesCode_add("Ann Lee Rep", "AL", kYes);
    return kYes;
}

LegacyBool addPaymentMethod(bool flawed) {
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

LegacyBool addReceiptOfGoods(bool flawed) {
    return order(flawed).POItemReceivedAddRq();
}

LegacyBool addVendorCredit(bool flawed) {
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

LegacyBool addReceipt(bool flawed) {
    clsQBSales given = sale(flawed, "0000123");
    given.DepositToAccount = "Cash Drawer";
    given.PaymentMethod = "Cash";
    given.SalesReceiptAddRq();
    return kYes;
}

LegacyBool addInvoice(bool flawed) {
    sale(flawed, "0000124").InvoiceAddRq();
    return kYes;
}

LegacyBool addCreditMemo(bool flawed) {
    clsQBSales given = sale(flawed, "0000125");
    for (QBSaleLine& line : gaSaleLines) {
        line.Amount = -line.Amount;
    }
    given.CreditMemoAddRq();
    return kYes;
}

LegacyBool addJournal(bool flawed) {
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

LegacyBool addPayment(bool flawed) {
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

enum class Log { nothing, text, rawAndText };

/// One request that changes the company file, in the order in which a shop's books grow.
struct Post {
    const char* name;     ///< in the file of expected changes
    const char* element;  ///< of its document
    LegacyBool (*call)(bool flawed);
    std::string literal;  ///< in front of the texts of the company file
    std::string refusal;
    Log log = Log::nothing;
    bool hasResult = true;
    const char* done = "";  ///< text of the company file when it carried the request out
};

std::string inUse(const std::string& name) {
    return "The name \"" + name + "\" of the list element is already in use.";
}

std::string noRecord(const std::string& kind, const std::string& name, const std::string& where) {
    return "There is an invalid reference to QuickBooks " + kind + " \"" + name + "\" in the " +
           where +
           ".  QuickBooks error message: Invalid argument.  The specified record does not exist in "
           "the list.";
}

constexpr char kStale[] = "The provided edit sequence \"1\" is out-of-date.";

const Post kPosts[] = {
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

class Books : public testing_support::BooksTest {
protected:
    Books() {
        gSalesHead.TaxRate1 = 7.5F;
        gsQBSaleTaxItem = "A";
    }

    /// The texts that a routine leaves behind after the company file said `raw`.
    void expectTold(const Post& post, const std::string& raw, const std::string& box, bool read) {
        const std::string text = post.literal + raw;
        const bool boxed = std::string(post.element) == "SalesRepAdd";
        EXPECT_EQ(gsQBStatusMessage, text);
        EXPECT_EQ(boxes(), "NUV Brevane|" + box + (boxed ? " / NUV Brevane|" + text : ""));
        const bool twice = post.log == Log::rawAndText && read;
        const std::string log = twice ? raw + " / " + text : text;
        EXPECT_EQ(logLines(), post.log == Log::nothing ? "" : log);
    }
};

TEST_F(Books, growWithEachRequestAndTellWhatFailed) {
    std::string grown;
    for (const Post& post : kPosts) {
        SCOPED_TRACE(post.name);
        faults->failAt(
            1, testing_support::FaultPoint::before, serverGone(), std::string(post.element) + "Rq"
        );
        EXPECT_EQ(post.call(false), post.hasResult ? kNo : kYes);
        expectTold(post, kGoneText, kGoneText, false);
        EXPECT_EQ(changes(), "") << "nothing was sent";

        const std::string done = post.done;
        EXPECT_EQ(post.call(false), done.empty() ? kYes : kNo);
        grown += std::string(post.name) + "\n" + changes() + "\n";
        if (done.empty()) {
            EXPECT_EQ(gsQBStatusMessage + boxes() + logLines(), "");
        } else {
            expectTold(post, done, done + "Getting Request", true);
        }

        EXPECT_EQ(post.call(true), post.hasResult ? kNo : kYes);
        expectTold(post, post.refusal, post.refusal + "Getting Request", true);
        EXPECT_EQ(changes(), "") << "a refusal leaves nothing behind";
        expectSound();
    }
    testing_support::expectFile("qb/books.txt", grown);
}

/// A deletion of one kind of record, made by `make`, which gives its id.
struct Deletion {
    const char* given;
    const char* element;
    std::string (*make)();
    LegacyBool (*remove)(const std::string& id);
    std::string literal;
    std::string refused = {};  ///< an id that is in use
};

std::string idInAnswer(const char* path) {
    return response->Detail.find(path).text();
}

std::string makeCustomer() {
    clsQBCustomer customer;
    customer.Name = "GONE";
    customer.SalesTaxCode = "Tax";
    customer.Terms = "Net 0";
    customer.JobType = "Residential";
    EXPECT_EQ(customer.CustomerAddNewReq(), kYes);
    return idInAnswer("CustomerRet/ListID");
}

LegacyBool deleteCustomer(const std::string& id) {
    clsQBCustomer customer;
    customer.Name = "GONE";
    customer.ListID = id;
    return customer.CustomerDeleteReq();
}

std::string makeOrder() {
    EXPECT_EQ(addOrder(false), kYes);
    return idInAnswer("PurchaseOrderRet/TxnID");
}

LegacyBool deleteOrder(const std::string& id) {
    clsQBPO& given = order(false);
    given.TxnID = id;
    gfbRequestMsgSet_reset();
    return given.PODeleteReq();
}

std::string notThere(const std::string& id) {
    return "Object \"" + id +
           "\" specified in the request cannot be found.  QuickBooks error message: Invalid "
           "argument.  The specified record does not exist in the list.";
}

TEST_F(Books, loseWhatIsDeleted) {
    addVendor(false);
    addCustomer(false);
    addStock(false);
    const Deletion cases[] = {
        {"a customer", "ListDel", makeCustomer, deleteCustomer, "CustomerDeleteReq GONE "},
        {"a purchase order", "TxnDel", makeOrder, deleteOrder, ""},
    };
    changes();
    for (const Deletion& row : cases) {
        SCOPED_TRACE(row.given);
        const std::string id = row.make();
        const std::string made = changes();
        faults->failAt(
            1, testing_support::FaultPoint::before, serverGone(), std::string(row.element) + "Rq"
        );
        EXPECT_EQ(row.remove(id), kNo);
        EXPECT_EQ(gsQBStatusMessage, row.literal + kGoneText);
        EXPECT_EQ(boxes(), std::string("NUV Brevane|") + kGoneText);
        EXPECT_EQ(changes(), "");

        EXPECT_EQ(row.remove(id), kYes);
        EXPECT_EQ(gsQBStatusMessage + boxes(), "");
        EXPECT_EQ(changes(), "-" + made.substr(1));

        EXPECT_EQ(row.remove(id), kNo);
        EXPECT_EQ(gsQBStatusMessage, row.literal + notThere(id));
        EXPECT_EQ(boxes(), "NUV Brevane|" + notThere(id) + "Getting Request");
        expectSound();
    }
    EXPECT_EQ(logLines(), "");
}

TEST_F(Books, keepACustomerWhoOwes) {
    addCustomer(false);
    changes();
    const std::string id = idInAnswer("CustomerRet/ListID");
    EXPECT_EQ(deleteCustomer(id), kNo);
    EXPECT_EQ(
        gsQBStatusMessage,
        "CustomerDeleteReq GONE Cannot delete the object specified by the id = \"" + id +
            "\".  QuickBooks error message: This list element is in use and cannot be deleted."
    );
    EXPECT_EQ(changes(), "");
}

TEST_F(Books, loseAVendorByTheFirstOfTwoDeletions) {
    clsQBVendor vendor;
    vendor.Name = "GONE";
    vendor.OpenBalanceDate = qb::dateOf("1/2/2015");
    EXPECT_EQ(vendor.VendorAddRequest(), kYes);
    vendor.ListID = idInAnswer("VendorRet/ListID");
    const std::string made = changes();
    // When
    faults->failAt(1, testing_support::FaultPoint::before, serverGone(), "ListDelRq");
    EXPECT_EQ(vendor.VendorDeleteRequest(), kNo);
    EXPECT_EQ(boxes(), std::string("NUV Brevane|") + kGoneText);
    EXPECT_EQ(changes(), "");
    EXPECT_EQ(vendor.VendorDeleteRequest(), kNo);
    // Then
    EXPECT_EQ(changes(), "-" + made.substr(1));
    EXPECT_EQ(boxes(), "NUV Brevane|" + notThere(vendor.ListID) + "Getting Request");
    EXPECT_EQ(vendor.VendorDeleteRequest(), kNo);
    EXPECT_EQ(
        boxes(),
        "NUV Brevane|Status: Code = 3120, Severity = Error, Message = " + notThere(vendor.ListID) +
            " / NUV Brevane|" + notThere(vendor.ListID) + "Getting Request"
    );
}

/// A refusal that a member of the record causes.
struct Flaw {
    const char* given;
    void (*call)();
    std::string told;
};

TEST_F(Books, refuseWhatLacksItsPlace) {
    addVendor(false);
    addCustomer(false);
    const Flaw cases[] = {
        {"an inventory item without accounts",
         [] {
             clsQBInventory bare = item("BARE");
             bare.IncomeAccount = bare.COGSAccount = bare.AssetAccount = "";
             bare.InvtAddNewReq();
         },
         "InvtAddNewReq BARE "},
        {"an item of a vendor that is not there",
         [] {
             clsQBInventory odd = item("ODD");
             odd.PrefVendor = "Nobody";
             odd.InvtAddNewReq();
         },
         "InvtAddNewReq ODD " + noRecord("Vendor", "Nobody", "ItemInventory")},
        {"an order without a vendor",
         [] {
             order(false).VendorName = " ";
             qb::purchaseOrder().POHeaderAddNewReq();
         },
         "POHeaderAddNewReq 4711 There is a missing element: \"VendorRef\"."},
        {"a sale to terms that are not there",
         [] {
             clsQBSales odd = sale(false, "0000127");
             odd.Terms = "Net 7";
             odd.InvoiceAddRq();
         },
         "InvoiceAddRq 0000127 " + noRecord("Terms", "Net 7", "Invoice")},
        {"a sale whose item is not there",
         [] {
             clsQBSales odd = sale(false, "0000127");
             odd.SalesRep.clear();
             gsQBSaleTaxItem = "Non";
             odd.SalesReceiptAddRq();
         },
         "SalesAddNewReq 0000127 " + noRecord("Item", "1000001.2", "SalesReceipt line")},
        {"a refund that brings money in",
         [] {
             clsQBSales odd = sale(false, "0000127");
             odd.SalesRep = "H";
             gaSaleLines = {{}, {"Return", "", "", 1, cents(500), "Non", ""}};
             odd.CreditMemoAddRq();
         },
         "CreditMemoAddRq 0000127 There was an error when saving a Credit Memo.  QuickBooks error "
         "message: Transaction amount must be positive."},
        {"initials of six characters",
         [] { gpSalesCode_add("House", "ABCDEF", kYes); },
         "gpSalesCode_add ABCDEF The string \"ABCDEF\" in the field \"Initial\" is too long."},
        {"a tax code of four characters",
         [] { item("CODE").SalesTaxCodeAddNewReq(); },
         "SalesTaxCodeAddNewReq CODE The string \"CODE\" in the field \"Name\" is too long."},
    };
    changes();
    for (const Flaw& row : cases) {
        SCOPED_TRACE(row.given);
        row.call();
        EXPECT_EQ(gsQBStatusMessage, row.told);
        EXPECT_EQ(changes(), "");
    }
}

TEST_F(Books, holdASaleWhoseAnswerWasLost) {
    addVendor(false);
    addCustomer(false);
    for (const Post& post : kPosts) {
        if (post.log == Log::nothing) {
            post.call(false);
        }
    }
    boxes();
    changes();
    for (const Post& post : kPosts) {
        if (post.log == Log::nothing) {
            continue;
        }
        SCOPED_TRACE(post.name);
        faults->failAt(
            1, testing_support::FaultPoint::after, serverGone(), std::string(post.element) + "Rq"
        );
        post.call(false);
        expectTold(post, kGoneText, kGoneText, false);
        EXPECT_NE(changes(), "") << "the work was done before the answer was lost";
    }
    clsQBSales found = sale(false, "0000123");
    EXPECT_EQ(found.SalesReceiptSearchRq(), kYes);
    gSalesHead.Invoice = std::string_view("0000126");
    EXPECT_EQ(gfbReceivePayment_search(), kYes);
    expectSound();
}

}  // namespace
