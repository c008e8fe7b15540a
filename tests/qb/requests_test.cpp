#include "core/brv_op.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SalesHead.h"
#include "qb/books_requests.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "support/table_file.h"

namespace {

using util::Money;

/// What the records of the shop become on the wire, where the company file does not matter.
class Requests : public testing_support::GatewayTest {
protected:
    Requests() {
        std::string name;
        gfbOpenConnectionBeginSession(name);
        gsQBSaleTaxItem = "A";
    }
    static clsQBSales sale() { return testing_support::sale(false, "0000123"); }
};

TEST_F(Requests, takeTheMemberOfTheSaleThatTheKindAsksFor) {
    const auto sent = [&](const std::string& code) {
        const std::string element = "<CustomerSalesTaxCodeRef><FullName>" + code + "<";
        return lastRequest().find(element) != std::string::npos;
    };
    for (const auto& [member, invoice, credit] :
         testing_support::tableRows<3>("qb/tax_codes.json")) {
        SCOPED_TRACE(member);
        clsQBSales given = sale();
        given.TaxCode = member;
        given.CreditMemoAddRq();
        EXPECT_TRUE(sent(credit)) << company.sent.back();
        given.InvoiceAddRq();
        EXPECT_TRUE(sent(invoice)) << company.sent.back();
        EXPECT_EQ(given.TaxCode, invoice);
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
    clsQBPO& late = testing_support::order(false);
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
    clsQBEmployee odd = testing_support::employee("Ann Lee");
    odd.Gender = "7";
    EXPECT_EQ(odd.EmployeeAddNewReq(), kNo);
    EXPECT_EQ(gsQBStatusMessage, "EmployeeAddNewReq Ann Lee Subscript out of range");
}

}  // namespace
