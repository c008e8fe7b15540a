#include "core/brv_op.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_SalesHead.h"
#include "qb/books_requests.h"
#include "qb/clsQBAccount.h"
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
#include "util/basic_error.h"

namespace {

using testing_support::item;
using testing_support::kGoneText;
using testing_support::serverGone;
using util::Money;

constexpr char kNotFound[] =
    "NUV Brevane|A query request did not find a matching object in QuickBooksGetting Request";

/// Adds a customer, vendor and so on of a name, with `mark` in a field that a search reads.
void addCustomer(const char* name, const char* mark) {
    clsQBCustomer customer;
    customer.Name = name;
    customer.City = mark;
    customer.ReadAddress1 = "1 Main Street";
    customer.SalesTaxCode = "Tax";
    customer.Terms = "Net 30";
    customer.JobType = "Residential";
    EXPECT_EQ(customer.CustomerAddNewReq(), kYes) << gsQBStatusMessage;
}

void addVendor(const char* name, const char* mark) {
    clsQBVendor vendor;
    vendor.Name = name;
    vendor.City = mark;
    vendor.OpenBalanceDate = qb::dateOf("1/2/2015");
    EXPECT_EQ(vendor.VendorAddRequest(), kYes) << gsQBStatusMessage;
}

void addPeople() {
    clsQBEmployee person;
    person.IsActive = kYes;
    person.EmployeeType = "2";
    person.Gender = "0";
    person.FirstName = "Bobby";
    person.LastName = "Ray";
    person.Name = "Bobby Ray";
    person.EmployeeAddNewReq();  // told as done without the name that the file makes itself
    person.Name = "Bobby Ray Rep";
    EXPECT_EQ(person.OtherNameAddNewReq(), kYes) << gsQBStatusMessage;
}

void addTickets() {
    clsQBSales sale;
    sale.TxnDate = "2/28/2015";
    sale.RefNumber = "0000123";
    sale.CustomerName = "ABC";
    sale.SalesRep = "H";
    gsQBSaleTaxItem = "Non";
    gaSaleLines = {{}, {"FREIGHT", "", "", 1, Money::fromWhole(5), "Non", ""}};
    sale.SalesReceiptAddRq();
    EXPECT_EQ(gsQBStatusMessage, "");
    sale.InvoiceAddRq();
    EXPECT_EQ(gsQBStatusMessage, "");
    gaSaleLines[1].Amount = Money::fromWhole(-5);
    sale.CreditMemoAddRq();
    EXPECT_EQ(gsQBStatusMessage, "");
    gpReceivePayment_add({"ABC", "2/28/2015", Money::fromWhole(5), "Cash", "", "0000123", ""});
    EXPECT_EQ(gsQBStatusMessage, "");
}

void addOrder() {
    clsQBPO order;
    order.RefNumber = "0004711";
    order.TxnDate = "5/6/2015";
    order.DueDate = "5/7/2015";
    order.Memo = "spring";
    order.VendorName = "ACME";
    order.VendorCity = "Troy";
    gaQBPOLines = {{}, {"1000001.2", "Blue mug", Money::fromWhole(7), "", 2}};
    EXPECT_EQ(order.POHeaderAddNewReq(), kYes) << gsQBStatusMessage;
}

class BookSearches : public testing_support::BooksTest {
protected:
    BookSearches() {
        addCustomer("ABCD", "elsewhere");
        addCustomer("ABC", "here");
        addVendor("ACME", "Troy");
        addPeople();
        EXPECT_EQ(item("1000001.25").InvtAddNewReq(), kYes) << gsQBStatusMessage;
        EXPECT_EQ(item("1000001.2").InvtAddNewReq(), kYes) << gsQBStatusMessage;
        EXPECT_EQ(item("FREIGHT").OtherChargeAddNewReq(), kYes) << gsQBStatusMessage;
        addTickets();
        addOrder();
        boxes();
        logLines();
    }
};

template <LegacyBool (clsQBEmployee::*search)()>
LegacyBool person(const std::string& key) {
    clsQBEmployee given;
    given.Name = key;
    return (given.*search)();
}

LegacyBool customer(const std::string& key) {
    gNames.ARCode = key;
    clsQBCustomer given;
    given.Name = key;
    return given.CustomerSearchRq();
}

LegacyBool vendor(const std::string& key) {
    clsQBVendor given;
    given.Name = key;
    return given.VendorSearchRq();
}

LegacyBool inventory(const std::string& key) {
    gInventory.SL = key;
    clsQBInventory given;
    given.Name = "1000001." + key.substr(7);
    return given.ItemQueryRq();
}

template <LegacyBool (clsQBSales::*search)()>
LegacyBool ticket(const std::string& key) {
    gSalesHead.Invoice = key;
    clsQBSales given;
    given.RefNumber = key;
    return (given.*search)();
}

LegacyBool payment(const std::string& key) {
    gSalesHead.Invoice = key;
    return gfbReceivePayment_search();
}

LegacyBool purchaseOrder(const std::string& key) {
    gfbRequestMsgSet_reset();
    clsQBPO given;
    given.RefNumber = key;
    return given.POSearchRq();
}

struct Search {
    const char* query;
    LegacyBool (*call)(const std::string& key);
    const char* present;
    const char* absent;
    std::string failed;  ///< status text after a failed send
    std::int32_t failedNumber = 0;
    const char* moreBoxes = "";
    LegacyBool otherKind = kNo;  ///< result for an answer of another kind
};

constexpr char kOtherKind[] = "<QBXML><QBXMLMsgsRs><HostQueryRs statusCode=\"0\"><HostRet/>"
                              "</HostQueryRs></QBXMLMsgsRs></QBXML>";

const Search kSearches[] = {
    {"CustomerQuery", customer, "ABC", "ABX", "CustomerSearchRq ABX "},
    {"VendorQuery", vendor, "AC", "ACMES", "VendorSearchRq ACMES "},
    {"ItemQuery", inventory, "10000012", "10000013", "ItemQueryRq 1000001.3 "},
    {"EmployeeQuery",
     person<&clsQBEmployee::EmployeeSearchRq>,
     "bob",
     "Bobby Ray Rep",
     "EmployeeSearchRq Bobby Ray Rep "},
    {"OtherNameQuery",
     person<&clsQBEmployee::OtherNameSearchRq>,
     "Bobby",
     "Ray",
     "OtherNameSearchRq Ray "},
    {"SalesReceiptQuery",
     ticket<&clsQBSales::SalesReceiptSearchRq>,
     "123",
     "1234",
     "SalesReceipt search 1234 "},
    {"InvoiceQuery", ticket<&clsQBSales::InvoiceSearchRq>, "123", "1234", "Incoice search 1234 "},
    {"CreditMemoQuery",
     ticket<&clsQBSales::CreditMemoSearchRq>,
     "123",
     "1234",
     "Credit Memo search 1234 "},
    {"ReceivePaymentQuery", payment, "123", "1234", "ReceivePayment search 1234 "},
    {"PurchaseOrderQuery",
     purchaseOrder,
     "4711",
     "4712",
     kGoneText,
     testing_support::kServerGone,
     " / NUV Brevane|No Record Match.",
     kYes},
};

TEST_F(BookSearches, tellFoundFromNotFoundAndFromFailed) {
    changes();
    std::string sent;
    for (const Search& search : kSearches) {
        SCOPED_TRACE(search.query);
        EXPECT_EQ(search.call(search.present), kYes);
        sent += faults->documents.back();
        EXPECT_GT(gnQBReturnedCount, 0);
        EXPECT_EQ(boxes(), "");

        EXPECT_EQ(search.call(search.absent), kNo);
        EXPECT_EQ(boxes(), std::string(kNotFound) + search.moreBoxes);
        EXPECT_EQ(gnQBErrorNumber, 0);

        faults->failAt(1, testing_support::FaultPoint::before, serverGone(), search.query);
        EXPECT_EQ(search.call(search.absent), kNo);
        EXPECT_EQ(gsQBStatusMessage, search.failed);
        EXPECT_EQ(gnQBErrorNumber, search.failedNumber);
        EXPECT_EQ(boxes(), std::string("NUV Brevane|") + kGoneText);

        faults->answerAt(1, kOtherKind, search.query);
        EXPECT_EQ(search.call(search.present), search.otherKind);
        EXPECT_EQ(boxes(), "");
    }
    testing_support::expectFile("qb/searches.txt", sent);
    EXPECT_EQ(logLines(), "");
    EXPECT_EQ(changes(), "") << "a search changes nothing";
}

TEST_F(BookSearches, readTheRecordThatTheirRuleChooses) {
    gNames.ARCode = std::string_view("ABC");
    clsQBCustomer exact;
    exact.Name = "ABC";
    exact.Address1 = exact.Phone = "stays";
    EXPECT_EQ(exact.CustomerSearchRq(), kYes);
    EXPECT_EQ(exact.City + exact.ReadAddress1, "here1 Main Street");
    EXPECT_EQ(exact.Address1 + exact.Phone, "staysstays");
    EXPECT_EQ(gnQBReturnedCount, 2);
    EXPECT_EQ(exact.OpenBalance, Money::fromWhole(-5)) << "invoice, credit memo and payment of 5";

    gNames.ARCode = std::string_view("AB");
    clsQBCustomer beginning;
    beginning.Name = "AB";
    EXPECT_EQ(beginning.CustomerSearchRq(), kNo) << "two names that only begin with the key";
    EXPECT_EQ(beginning.Name + beginning.City, "AB");
    EXPECT_EQ(boxes(), "") << "the query itself found something";

    clsQBVendor other;
    other.Name = "AC";
    EXPECT_EQ(other.VendorSearchRq(), kYes);
    EXPECT_EQ(other.Name + other.City, "ACTroy") << "a vendor whose name merely begins alike";
    other.VendorKeyRet_get(0);
    EXPECT_EQ(other.Name, "ACME");
    EXPECT_THROW(other.VendorInfoRet_get(1), util::BasicError);

    gInventory.SL = std::string_view("10000012");
    clsQBInventory stock;
    stock.Name = "1000001.2";
    EXPECT_EQ(stock.ItemQueryRq(), kYes);
    EXPECT_EQ(gnQBReturnedCount, 2);
    EXPECT_EQ(stock.AverageCost, Money::fromWhole(8));
    EXPECT_EQ(stock.COGSAccount, "Cost of Goods Sold");
    EXPECT_NE(stock.ListID, "");

    gInventory.SL = std::string_view("~FREIGHT");
    clsQBInventory charge;
    charge.Name = "FREIGHT";
    EXPECT_EQ(charge.ItemQueryRq(), kNo) << "the code of the record is another text";
    EXPECT_EQ(charge.Name + charge.ListID, "~FREIGHT");

    clsQBEmployee employee;
    employee.Name = "B";
    EXPECT_EQ(employee.EmployeeSearchRq(), kYes);
    EXPECT_EQ(employee.Name + employee.LastName, "Bobby RayRay");
}

TEST_F(BookSearches, readAPurchaseOrderAndItsKey) {
    clsQBPO order;
    order.RefNumber = "711";
    gfbRequestMsgSet_reset();
    EXPECT_EQ(order.POSearchRq(), kYes);
    EXPECT_EQ(order.RefNumber, "711");
    order.POKeyRet_get();
    EXPECT_EQ(order.RefNumber, "0004711");
    EXPECT_EQ(order.DueDate + order.Memo + order.VendorName, "5/7/2015springACME");
    EXPECT_EQ(order.VendorCity, "Troy");
    EXPECT_EQ(gsQBStatusCode + gsQBStatusSeverity + gsQBStatusMessage, "0InfoStatus OK");
    order.RefNumber = "9";
    gfbRequestMsgSet_reset();
    EXPECT_EQ(order.POSearchRq(), kNo);
    EXPECT_EQ(gsQBStatusCode + gsQBStatusMessage, "1No items were returned by QuickBooks.");
}

TEST_F(BookSearches, fillTheListsOfAccountsAndSalesReps) {
    EXPECT_EQ(gfbAccountQuery_requested(), kYes);
    gpAccountQuery_populated();
    const auto all = gaQBAccounts.size();
    clsQBAccount cash;
    cash.Name = "cash";
    EXPECT_EQ(cash.AccountSearchRq(), kYes);
    EXPECT_EQ(gfbRequests_do(), kYes);
    gpAccountQuery_populated();
    std::string found;
    for (const clsQBAccount& account : gaQBAccounts) {
        found += account.FullName + " " + account.AccountType + " " + account.RetType + "; ";
    }
    EXPECT_GT(all, gaQBAccounts.size());
    EXPECT_EQ(
        found, "Cash Drawer 2 AccountRet; Cash Paid Out 6 AccountRet; Petty Cash 2 AccountRet; "
    );

    changes();
    gpTenderType_add("Scrip", 0);
    EXPECT_EQ(changes(), "+ paymentMethods \"Name\": \"Scrip\" \"IsActive\": \"false\"}\n");
    gpSalesCode_add("Bobby Ray Rep", "BR", kYes);
    gpSalesCode_add("ACME", "OFF", kNo);
    qb::querySalesReps();
    EXPECT_EQ(gaQBSalesReps, (std::vector<std::string>{"", "BR", "H"}));
    faults->failAt(1, testing_support::FaultPoint::before, serverGone(), "SalesRepQuery");
    qb::querySalesReps();
    EXPECT_EQ(gaQBSalesReps, std::vector<std::string>{""});
    faults->failAt(1, testing_support::FaultPoint::before, serverGone(), "AccountQuery");
    EXPECT_EQ(gfbAccountQuery_requested(), kNo);
    EXPECT_EQ(gsQBStatusMessage, kGoneText);
}

}  // namespace
