#include "core/brv_op.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_SalesHead.h"
#include "qb/clsQBAccount.h"
#include "qb/clsQBCustomer.h"
#include "qb/clsQBEmployee.h"
#include "qb/clsQBInventory.h"
#include "qb/clsQBPO.h"
#include "qb/clsQBSales.h"
#include "qb/clsQBVendor.h"
#include "qb/gateway_fixture.h"
#include "qb/journal_and_payments.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "support/expected_file.h"

#include <type_traits>

namespace {

using platform::PlatformError;
using testing_support::answer;
using util::Money;

Money cents(std::int64_t value) {
    return Money::fromRaw(value * 100);
}

clsQBCustomer customer() {
    clsQBCustomer given;
    given.ListID = "8000007B-1420967073";
    given.EditSequence = "1420967073";
    given.FirstName = "Jo";
    given.LastName = "Smith & Sons";
    given.CompanyName = "Smith  ";
    given.Name = "SMITH01";
    given.Address1 = "1 Main Street";
    given.Address2 = "Floor 2";
    given.City = "Troy";
    given.Phone = "555-0101";
    given.OpenBalance = cents(1234);
    given.CreditLimit = Money::fromRaw(5000050);
    given.Terms = "Net 30";
    given.SalesTaxCode = "Tax";
    given.JobType = "Residential";
    return given;
}

clsQBVendor vendor() {
    clsQBVendor given;
    given.ListID = "80000005-1";
    given.EditSequence = "77";
    given.Name = given.CompanyName = "ACME";
    given.AltPhone = "555-2";
    given.OpenBalanceDate = qb::dateOf("3/4/2024");
    given.TermsName = "Net 15";
    given.Addr1 = "2 Dock Road";
    return given;
}

clsQBInventory item() {
    clsQBInventory given;
    given.ListID = "80000009-1";
    given.EditSequence = "5";
    given.Name = "1000001.2";
    given.IsActive = kYes;
    given.IsTaxable = kYes;
    given.SalesTaxCode = "7.5%";
    given.SalesDesc = given.PurchaseDesc = "Blue mug";
    given.SalesPrice = Money::fromRaw(99950);
    given.PurchaseCost = Money::fromRaw(33333);
    given.QuantityOnHand = 12.5F;
    given.PrefVendor = "ACME";
    given.IncomeAccount = "Merchandise Sales";
    given.COGSAccount = "Cost of Goods Sold";
    given.AssetAccount = "Inventory Asset";
    given.ExpenseAccount = "Checking";
    return given;
}

clsQBEmployee employee() {
    clsQBEmployee given;
    given.Name = "Ann Lee Rep";
    given.FirstName = "Ann";
    given.LastName = "Lee";
    given.EmployeeType = "2";
    given.Gender = "1";
    given.HiredDate = "12/31/2023";
    given.AccountNumber = "AL";
    given.IsActive = kYes;
    given.Address2 = "Back door";
    return given;
}

clsQBSales sale() {
    clsQBSales given;
    given.TxnDate = "2/29/2024";
    given.RefNumber = "0000123";
    given.CustomerName = "SMITH01";
    given.DueDate = " ";
    given.ShipDate = "3/1/2024";
    given.BillAddr1 = "Smith & Sons";
    given.BillAddr4 = "Hall 4";
    given.BillCity = "Troy";
    given.SalesRep = "H";
    given.Memo = "gift";
    given.TaxCode = "A ";
    given.Terms = "Net 30";
    given.DepositToAccount = "Checking";
    gaSaleLines = {
        {"unused", "", "", 9, cents(999), "", ""},
        {"1000001.2", "", "Blue mug", 2, Money::fromRaw(199950), "Tax", ""},
        {"0300", "", "Category", 0, {}, "Non", ""},
        {"", "2/28/2024", "No amount", 1, {}, "", ""},
        {"~POUT", "", " ", 0.5F, cents(-1000), "", ""},
    };
    return given;
}

clsQBPO order() {
    clsQBPO given;
    given.TxnID = "1C5D12-1";
    given.TxnDate = "5/6/2024";
    given.DueDate = "5/7/2024";
    given.RefNumber = "4711";
    given.VendorName = "ACME";
    given.Memo = "spring";
    gaQBPOLines = {
        {},
        {"1000001.2", "Blue mug", Money::fromRaw(-1234550), "SMITH01", 3},
        {"~NONSTK", "", cents(100), "", 1},
    };
    return given;
}

const std::vector<QBJournalLine> kJournal = {
    {},
    {kDebitSide, "9", "Cost of Goods Sold", cents(-500), "", "0000123"},
    {2, "", "Nowhere", cents(1), "", ""},
    {kCreditSide, "9", "Inventory Asset", cents(500), "SMITH01", ""},
};

void postJournal() {
    gfbRequestMsgSet_reset();
    gpJournalEntry_add(kJournal, "2/29/2024", "0000123", " ");
}

QBPaymentRecord payment() {
    return {
        "SMITH01",
        "2/29/2024",
        cents(2500),
        "Visa Credit Card",
        "Visa Credit Card",
        "0000124",
        " Checking "};
}

/// Runs a request of a class on a new record; one without a result counts as kYes.
template <auto make, auto method>
LegacyBool on() {
    auto record = make();
    if constexpr (std::is_void_v<decltype((record.*method)())>) {
        (record.*method)();
        return kYes;
    } else {
        return (record.*method)();
    }
}

template <auto routine>
LegacyBool done() {
    routine();
    return kYes;
}

clsQBVendor vendorWithOrder() {
    qb::purchaseOrder() = order();
    return vendor();
}

void postPayment() {
    gpReceivePayment_add(payment());
}

void addTenderType() {
    gpTenderType_add("Visa", 0);
}

void addSalesCode() {
    gpSalesCode_add("Ann Lee Rep", "AL", kYes);
}

/// One routine of the gateway: what it sends, and how it tells a refusal and an error.
struct Routine {
    std::string name;  ///< of the expected document below tests/data/qb
    LegacyBool (*call)();
    std::string refused;        ///< stands in front of a refusal's text
    const char* failed = same;  ///< stands in front of an error's text
    bool hasResult = true;

    static constexpr char same[] = "as refused";
    static constexpr char untold[] = "no text at all";

    [[nodiscard]] std::string failureText(const std::string& description) const {
        if (failed == untold) {
            return {};
        }
        return (failed == same ? refused : failed) + description;
    }
};

constexpr const char* kSame = Routine::same;
constexpr const char* kUntold = Routine::untold;

using Customer = clsQBCustomer;
using Vendor = clsQBVendor;
using Item = clsQBInventory;
using Employee = clsQBEmployee;
using Sale = clsQBSales;
using Order = clsQBPO;

const Routine kRoutines[] = {
    {"customer_add", on<customer, &Customer::CustomerAddNewReq>, "CustomerAddNewReq SMITH01 "},
    {"customer_mod", on<customer, &Customer::CustomerModifyReq>, "CustomerModifyReq SMITH01 "},
    {"customer_del",
     on<customer, &Customer::CustomerDeleteReq>,
     "CustomerDeleteReq SMITH01 ",
     kUntold},
    {"vendor_add", on<vendor, &Vendor::VendorAddRequest>, "VendorAddRequest ACME "},
    {"vendor_mod", on<vendor, &Vendor::VendorModifyReq>, "", "VendorModifyReq ACME "},
    {"vendor_credit", on<vendorWithOrder, &Vendor::VendorCreditAddReq>, "VendorcreditAddRq ACME "},
    {"item_inventory_add", on<item, &Item::InvtAddNewReq>, "InvtAddNewReq 1000001.2 "},
    {"item_inventory_mod", on<item, &Item::InvtModifyReq>, "InvtModifyReq 1000001.2 "},
    {"item_with_cost",
     on<item, &Item::NonInvtWithCostAddNewReq>,
     "NonInvtAddNewReq 1000001.2 ",
     "NonInvtWithCostAddNewReq 1000001.2 "},
    {"item_sold_only", on<item, &Item::NonInvtAddNewReq>, "NonInvtAddNewReq 1000001.2 "},
    {"item_other_charge", on<item, &Item::OtherChargeAddNewReq>, "OtherChargeAddNewReq 1000001.2 "},
    {"item_sales_tax", on<item, &Item::SalesTaxInvtAddNewReq>, "SalesTaxInvtAddNewReq 1000001.2 "},
    {"sales_tax_code", on<item, &Item::SalesTaxCodeAddNewReq>, "SalesTaxCodeAddNewReq 1000001.2 "},
    {"item_payment", on<item, &Item::PaymentInvtAddNewReq>, "PaymentInvtAddNewReq 1000001.2 "},
    {"employee_add", on<employee, &Employee::EmployeeAddNewReq>, "EmployeeAddNewReq Ann Lee Rep "},
    {"other_name_add",
     on<employee, &Employee::OtherNameAddNewReq>,
     "OtherNameAddNewReq Ann Lee Rep "},
    {"purchase_order_add", on<order, &Order::POHeaderAddNewReq>, "POHeaderAddNewReq 4711 "},
    {"item_receipt_add", on<order, &Order::POItemReceivedAddRq>, "", "POItemReceivedAddRq 4711 "},
    {"sales_receipt_add",
     on<sale, &Sale::SalesReceiptAddRq>,
     "SalesAddNewReq 0000123 ",
     kSame,
     false},
    {"invoice_add", on<sale, &Sale::InvoiceAddRq>, "InvoiceAddRq 0000123 ", kSame, false},
    {"credit_memo_add", on<sale, &Sale::CreditMemoAddRq>, "CreditMemoAddRq 0000123 ", kSame, false},
    {"journal_add", done<postJournal>, "gpJournalEntry_add 0000123 ", kUntold, false},
    {"payment_add",
     done<postPayment>,
     "ReceivePaymentAddRq 0000124 ",
     "ReceivePaymentAddRq 0000124 -7 ",
     false},
    {"payment_method_add",
     done<addTenderType>,
     "gpTenderType_add Visa ",
     "gpTenderType_add Visa -7 ",
     false},
    {"sales_rep_add", done<addSalesCode>, "gpSalesCode_add AL ", "gpSalesCode_add AL -7 ", false},
};

class Requests : public testing_support::GatewayTest {
protected:
    Requests() {
        std::string name;
        gfbOpenConnectionBeginSession(name);
        gSalesHead.Invoice = std::string_view("0000123");
        gSalesHead.TaxRate1 = 7.5F;
        gsQBSaleTaxItem = "A";
        gsQBFileName = "shop.qbw";
    }
};

TEST_F(Requests, goOutAsExpected) {
    for (const Routine& routine : kRoutines) {
        SCOPED_TRACE(routine.name);
        const int hostQueries = company.hostQueries;
        EXPECT_EQ(routine.call(), kYes);
        EXPECT_EQ(gsQBStatusMessage, "");
        EXPECT_EQ(company.hostQueries, hostQueries + 1) << "one reset for each request";
        testing_support::expectFile("qb/" + routine.name + ".xml", company.sent.back());
    }
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(logLines(), "");
}

TEST_F(Requests, tellARefusalUnderTheirName) {
    for (const Routine& routine : kRoutines) {
        SCOPED_TRACE(routine.name);
        company.answers = {answer("Any", 3140, "no")};
        EXPECT_EQ(routine.call(), routine.hasResult ? kNo : kYes);
        EXPECT_EQ(gsQBStatusMessage, routine.refused + "no");
        EXPECT_EQ(gnQBErrorNumber, 0);
        const bool showsAgain = routine.name == "sales_rep_add";
        EXPECT_EQ(
            boxes(),
            std::string("NUV Brevane|noGetting Request") +
                (showsAgain ? " / NUV Brevane|gpSalesCode_add AL no" : "")
        );
    }
    EXPECT_EQ(
        logLines(),
        "SalesAddNewReq 0000123 no / no / InvoiceAddRq 0000123 no / "
        "CreditMemoAddRq 0000123 no / ReceivePaymentAddRq 0000124 no"
    );
}

TEST_F(Requests, sendNothingWhenTheSetCannotBeMade) {
    const std::size_t before = company.sent.size();
    for (const Routine& routine : kRoutines) {
        if (routine.name == "journal_add") {
            continue;  // it joins the set that its caller made
        }
        SCOPED_TRACE(routine.name);
        company.failures.clear();
        company.failures.emplace("exchange", PlatformError(-7, "gone"));
        gsQBStatusMessage.clear();
        EXPECT_EQ(routine.call(), routine.hasResult ? kNo : kYes);
        EXPECT_EQ(gsQBStatusMessage, routine.failureText("gone"));
    }
    EXPECT_EQ(company.sent.size(), before);
    EXPECT_EQ(
        logLines(),
        "SalesAddNewReq 0000123 gone / InvoiceAddRq 0000123 gone / CreditMemoAddRq 0000123 "
        "gone / ReceivePaymentAddRq 0000124 -7 gone"
    );
}

TEST_F(Requests, takeTheMemberOfTheSaleThatTheKindAsksFor) {
    struct Case {
        const char* given;
        const char* invoice;
        const char* credit;
    };
    const Case cases[] = {
        {"A", "Tax", "A"},
        {" A ", "Tax", " A"},
        {"", "Tax", "Non"},
        {"Tax", "Tax", "Tax"},
        {"0", "Non", "Non"},
        {" ", "Non", "Non"},
        {"N", "Non", "N"},
    };
    const auto sent = [&](const std::string& code) {
        const std::string element = "<CustomerSalesTaxCodeRef><FullName>" + code + "<";
        return lastRequest().find(element) != std::string::npos;
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.given);
        clsQBSales given = sale();
        given.TaxCode = row.given;
        given.CreditMemoAddRq();
        EXPECT_TRUE(sent(row.credit)) << company.sent.back();
        given.InvoiceAddRq();
        EXPECT_TRUE(sent(row.invoice)) << company.sent.back();
        EXPECT_EQ(given.TaxCode, row.invoice);
    }
    for (const auto& [file, rate, code] :
         {std::tuple{"x.qbw", 0.0F, "A"}, {" ", 0.0F, "Non"}, {"", 8.25F, "A"}}) {
        SCOPED_TRACE(file);
        gsQBFileName = file;
        gSalesHead.TaxRate1 = rate;
        sale().SalesReceiptAddRq();
        EXPECT_TRUE(sent(code)) << company.sent.back();
    }
}

TEST_F(Requests, meetATextThatIsNoDate) {
    clsQBSales given = sale();
    given.ShipDate = "20240301";
    const std::size_t before = company.sent.size();
    given.SalesReceiptAddRq();
    EXPECT_EQ(boxes(), "NUV Brevane|SalesAddNewReq 0000123 Type mismatch");
    EXPECT_EQ(gnQBErrorNumber, 13);
    given.TxnDate = "soon";
    given.CreditMemoAddRq();
    EXPECT_EQ(boxes(), "NUV Brevane|CreditMemoAddRq 0000123 Type mismatch");
    EXPECT_EQ(company.sent.size(), before);
    given.InvoiceAddRq();
    ASSERT_EQ(company.sent.size(), before + 1) << "an invoice goes out without the field";
    EXPECT_EQ(company.sent.back().find("<ShipDate>"), std::string::npos);
    EXPECT_EQ(company.sent.back().find("<TxnDate>"), std::string::npos);
    EXPECT_NE(company.sent.back().find("<InvoiceLineAdd>"), std::string::npos);
    clsQBPO late = order();
    late.DueDate = "whenever";
    EXPECT_EQ(late.POHeaderAddNewReq(), kYes);
    EXPECT_EQ(company.sent.back().find("<DueDate>"), std::string::npos);
    EXPECT_EQ(boxes(), "");
}

TEST_F(Requests, writeValuesAsTheWireHasThem) {
    const std::pair<std::string, const char*> cases[] = {
        {qb::wireAmount(Money::fromRaw(-12350)), "-1.24"},
        {qb::wireAmount(Money::fromRaw(-49)), "0.00"},
        {qb::wirePrice(Money::fromRaw(-100)), "-0.01"},
        {qb::wirePrice(Money::fromWhole(100)), "100"},
        {qb::wireNumber(0.015625), "0.01563"},
        {qb::wireNumber(-0.000001), "0"},
        {qb::wireNumber(2.3F), "2.3"},
        {qb::wireDate(qb::dateOf("2/3/2024")), "2024-02-03"},
    };
    for (const auto& [written, expected] : cases) {
        EXPECT_EQ(written, expected);
    }
    gCommon.USEurope = std::string_view("E");
    EXPECT_EQ(qb::wireDate(qb::dateOf("2/3/2024")), "2024-03-02");
}

TEST_F(Requests, refuseANumberThatIsNoWordOfTheField) {
    clsQBEmployee odd = employee();
    odd.Gender = "7";
    EXPECT_EQ(odd.EmployeeAddNewReq(), kNo);
    EXPECT_EQ(gsQBStatusMessage, "EmployeeAddNewReq Ann Lee Rep Subscript out of range");
}

}  // namespace
