#include "core/brv_op.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "qb/clsQBAccount.h"
#include "qb/clsQBCustomer.h"
#include "qb/clsQBEmployee.h"
#include "qb/clsQBInventory.h"
#include "qb/clsQBPO.h"
#include "qb/gateway_fixture.h"
#include "qb/smQB_Utilities.h"

namespace {

using testing_support::answer;
using testing_support::found;
using testing_support::notFound;

class Searches : public testing_support::GatewayTest {
protected:
    Searches() {
        std::string name;
        gfbOpenConnectionBeginSession(name);
        gNames.ARCode = std::string_view("ABC");
        gInventory.SL = std::string_view("10000012");
    }
};

TEST_F(Searches, sendNothingForABlankKey) {
    clsQBCustomer customer;
    clsQBEmployee employee;
    clsQBAccount account;
    clsQBPO order;
    customer.Name = employee.Name = account.Name = "  ";
    EXPECT_EQ(customer.CustomerSearchRq(), kNo);
    EXPECT_EQ(employee.EmployeeSearchRq(), kNo);
    EXPECT_EQ(employee.OtherNameSearchRq(), kNo);
    EXPECT_EQ(account.AccountSearchRq(), kNo);
    EXPECT_EQ(order.POSearchRq(), kNo);
    EXPECT_TRUE(company.sent.empty());
    EXPECT_EQ(boxes(), "");
}

TEST_F(Searches, takeTheItemOfTheRecordAndNeverAnotherOnesIdentity) {
    const auto inventory = [](const char* name, const char* id, const char* cost) {
        return std::string("<ItemInventoryRet><ListID>") + id + "</ListID><Name>" + name +
               "</Name><COGSAccountRef><FullName>COGS</FullName></COGSAccountRef><AverageCost>" +
               cost + "</AverageCost></ItemInventoryRet>";
    };
    const std::string service =
        "<ItemServiceRet><ListID>3</ListID><Name>else</Name></ItemServiceRet>";
    struct Case {
        const char* given;
        std::string elements;
        LegacyBool result;
        const char* listId;
        std::int64_t cost;
    };
    const Case cases[] = {
        {"exact name behind a longer one",
         inventory("1000001.25", "1", "9") + inventory("1000001.2", "2", "3.5"),
         kYes,
         "2",
         35000},
        {"only a longer name", inventory("1000001.25", "1", "9"), kNo, "", 90000},
        {"another kind counts as found", service, kYes, "", 0},
        {"another kind behind a longer name",
         inventory("1000001.25", "1", "9") + service,
         kYes,
         "",
         90000},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        clsQBInventory item;
        item.Name = "1000001.2";
        company.answers = {found("ItemQuery", row.elements)};
        EXPECT_EQ(item.ItemQueryRq(), row.result);
        EXPECT_EQ(item.ListID, row.listId);
        EXPECT_EQ(item.AverageCost.raw(), row.cost);
        EXPECT_EQ(item.Name, "1000001.2");
    }
    gInventory.SL = std::string_view("~POUT");
    clsQBInventory special;
    special.Name = "~POUT";
    company.answers = {found("ItemQuery", inventory("~POUT", "7", "0"))};
    EXPECT_EQ(special.ItemQueryRq(), kYes);
}

TEST_F(Searches, readAPurchaseOrderAsAWhole) {
    clsQBPO order;
    order.RefNumber = "4711";
    order.VendorCity = "old";
    gfbRequestMsgSet_reset();
    company.answers = {found(
        "PurchaseOrderQuery",
        "<PurchaseOrderRet><EditSequence>8</EditSequence><VendorRef><FullName>"
        "ACME</FullName></VendorRef><DueDate>2024-05-07</DueDate>"
        "</PurchaseOrderRet>"
    )};
    EXPECT_EQ(order.POSearchRq(), kYes);
    EXPECT_EQ(order.DueDate + order.VendorName + order.EditSequence, "5/7/2024ACME8");
    EXPECT_EQ(order.VendorCity, "");
    company.answers = {answer("PurchaseOrderQuery", 3020, "bad")};
    EXPECT_EQ(order.POSearchRq(), kNo);
    EXPECT_EQ(
        gsQBStatusMessage,
        "Error occured.  Status Code = 3020, Status Message = bad, Status Severity = Error"
    );
}

TEST_F(Searches, fillTheListOfAccounts) {
    company.answers = {found(
        "AccountQuery",
        "<AccountRet><ListID>1</ListID><Name>Cash</Name><FullName>Bank:Cash</FullName><ParentRef>"
        "<FullName>Bank</FullName></ParentRef><Sublevel>1</Sublevel><AccountType>Bank"
        "</AccountType><Balance>3.25</Balance></AccountRet>"
        "<AccountRet><FullName>Other</FullName><AccountType>OtherIncome</AccountType></AccountRet>"
    )};
    EXPECT_EQ(gfbAccountQuery_requested(), kYes);
    EXPECT_NE(lastRequest().find("<ActiveStatus>ActiveOnly<"), std::string::npos);
    gpAccountQuery_populated();
    ASSERT_EQ(gaQBAccounts.size(), 2U);
    EXPECT_EQ(gaQBAccounts[0].FullName + gaQBAccounts[0].ParentName, "Bank:CashBank");
    EXPECT_EQ(gaQBAccounts[0].AccountType + gaQBAccounts[1].AccountType, "214");
    EXPECT_EQ(gaQBAccounts[0].Balance.raw(), 32500);
    EXPECT_EQ(gaQBAccounts[0].Sublevel, 1);

    company.answers = {notFound("AccountQuery")};
    EXPECT_EQ(gfbAccountQuery_requested(), kYes);
    gpAccountQuery_populated();
    EXPECT_EQ(gaQBAccounts.size(), 2U) << "a failed status leaves the list";
    EXPECT_EQ(boxes(), "");

    company.failures.emplace("exchange", platform::PlatformError(-7, "gone"));
    EXPECT_EQ(gfbAccountQuery_requested(), kNo);
    EXPECT_EQ(gsQBStatusMessage, "gfbAccountQuery_requested: -7 gone");
}

}  // namespace
