#include "qb/books_requests.h"
#include "qb/clsQBCustomer.h"
#include "qb/clsQBVendor.h"
#include "qb/journal_and_payments.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"

namespace {

using testing_support::addCustomer;
using testing_support::addOrder;
using testing_support::addStock;
using testing_support::addVendor;
using testing_support::item;
using testing_support::kGoneText;
using testing_support::noRecord;
using testing_support::order;
using testing_support::sale;
using testing_support::serverGone;
using util::Money;

class BookDeletions : public testing_support::ShopBooks {};
class BookRefusals : public testing_support::ShopBooks {};

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

TEST_F(BookDeletions, loseWhatIsDeleted) {
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

TEST_F(BookDeletions, keepACustomerWithoutAWordWhenNoSetIsMade) {
    const std::string id = makeCustomer();
    changes();
    faults->failAt(1, testing_support::FaultPoint::before, serverGone(), "<HostQueryRq");
    EXPECT_EQ(deleteCustomer(id), kNo);
    EXPECT_EQ(gsQBStatusMessage + boxes(), "");
    EXPECT_EQ(gnQBErrorNumber, testing_support::kServerGone);
    EXPECT_EQ(changes(), "");
}

TEST_F(BookDeletions, keepACustomerWhoOwes) {
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

TEST_F(BookDeletions, loseAVendorByTheFirstOfTwoDeletions) {
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

TEST_F(BookRefusals, refuseWhatLacksItsPlace) {
    growLists();
    const Flaw cases[] = {
        {"an inventory item without accounts",
         [] {
             clsQBInventory bare = item("BARE");
             bare.IncomeAccount = bare.COGSAccount = bare.AssetAccount = "";
             bare.InvtAddNewReq();
         },
         "InvtAddNewReq BARE Error: -2147220480 QuickBooks found an error when parsing the "
         "provided "
         "XML text stream."},
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
             gaSaleLines[1].Item = "1000009.9";
             odd.SalesReceiptAddRq();
         },
         "SalesAddNewReq 0000127 " + noRecord("Item", "1000009.9", "SalesReceipt line")},
        {"a refund that brings money in",
         [] {
             clsQBSales odd = sale(false, "0000127");
             gaSaleLines = {{}, {"Return", "", "", 1, Money::fromWhole(5), "Non", ""}};
             odd.CreditMemoAddRq();
         },
         "CreditMemoAddRq 0000127 There was an error when saving a Credit Memo.  QuickBooks error "
         "message: Transaction amount must be positive."},
        {"a change of a customer who is gone",
         [] {
             clsQBCustomer gone;
             gone.Name = "GONE";
             gone.ListID = "FF-1";
             gone.CustomerModifyReq();
         },
         "CustomerModifyReq GONE " + notThere("FF-1")},
        {"a change of a vendor who is gone",
         [] {
             clsQBVendor gone;
             gone.Name = "GONE";
             gone.ListID = "FF-1";
             gone.VendorModifyReq();
         },
         notThere("FF-1")},
        {"a change of an item that is gone",
         [] {
             clsQBInventory gone = item("GONE");
             gone.ListID = "FF-1";
             gone.InvtModifyReq();
         },
         "InvtModifyReq GONE " + notThere("FF-1")},
        {"a credit for an order without lines",
         [] {
             order(false);
             gaQBPOLines.resize(1);
             clsQBVendor vendor;
             vendor.Name = "ACME";
             vendor.VendorCreditAddReq();
         },
         "VendorcreditAddRq ACME Subscript out of range"},
        {"initials of six characters",
         [] { gpSalesCode_add("House", "ABCDEF", kYes); },
         R"(gpSalesCode_add ABCDEF The string "ABCDEF" in the field "Initial" is too long.)"},
        {"a tax code of four characters",
         [] { item("CODE").SalesTaxCodeAddNewReq(); },
         R"(SalesTaxCodeAddNewReq CODE The string "CODE" in the field "Name" is too long.)"},
    };
    for (const Flaw& row : cases) {
        SCOPED_TRACE(row.given);
        row.call();
        EXPECT_EQ(gsQBStatusMessage, row.told);
        EXPECT_EQ(changes(), "");
    }
}

}  // namespace
