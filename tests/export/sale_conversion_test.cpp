#include "support/link_fixture.h"
#include "util/conversions.h"

#include <vector>

namespace {

using testing_support::describe;
using testing_support::LinkFixture;

/// Items of the shop: number and short code. The tax codes are "A", "B", "C" and untaxed.
struct Goods {
    std::int32_t number;
    const char* sl;
};
constexpr Goods kTaxedA = {18, "1000018A"};
constexpr Goods kTaxedB = {21, "1000021A"};
constexpr Goods kUntaxed = {25, "1000025B"};
constexpr Goods kShipping = {15, "SHIPUPSA"};
constexpr Goods kService = {13, "9000002A"};
constexpr Goods kDeleted = {12, "9000001A"};

struct Line {
    Goods goods;
    float quantity;
    const char* total;
    const char* tax;  ///< tax of the line; empty: an untaxed line
    const char* cost = "0";
};

struct Tax {
    float rate;
    const char* base;
    const char* tax;
};

struct Tender {
    std::int16_t type;
    const char* amount;
};

struct SaleCase {
    const char* given;
    const char* description;
    const char* customer;
    std::vector<Line> lines;
    std::vector<Tax> taxes;
    std::vector<Tender> tenders;
    std::vector<std::string> expected;  ///< what the books hold of the sale
};

util::Money money(const char* text) {
    return util::Money::fromDecimal(text);
}

/// The exported sale `number` of the case.
db::SalesHeadRecord headOf(const SaleCase& sale, const std::string& invoice) {
    db::SalesHeadRecord head;
    head.Invoice = invoice;
    head.ARCode = sale.customer;
    head.Description = sale.description;
    head.Taxed = sale.taxes.empty() ? "N" : "Y";
    head.Taxes = static_cast<std::int16_t>(sale.taxes.size());
    head.Tenders = static_cast<std::int16_t>(sale.tenders.size());
    for (const Line& line : sale.lines) {
        head.SubTotal += money(line.total);
    }
    head.TotalSale = head.SubTotal;
    for (std::size_t slot = 0; slot < sale.taxes.size(); ++slot) {
        (slot == 0 ? head.TaxRate1 : head.TaxRate2) = sale.taxes[slot].rate;
        (slot == 0 ? head.TaxAmount1 : head.TaxAmount2) = money(sale.taxes[slot].base);
        (slot == 0 ? head.TaxTax1 : head.TaxTax2) = money(sale.taxes[slot].tax);
        head.TotalSale += money(sale.taxes[slot].tax);
    }
    for (std::size_t slot = 0; slot < sale.tenders.size(); ++slot) {
        (slot == 0 ? head.TendType1 : head.TendType2) = sale.tenders[slot].type;
        (slot == 0 ? head.TendAmount1 : head.TendAmount2) = money(sale.tenders[slot].amount);
    }
    return head;
}

std::vector<db::SalesItemRecord> linesOf(const SaleCase& sale) {
    std::vector<db::SalesItemRecord> items;
    for (const Line& line : sale.lines) {
        db::SalesItemRecord item;
        item.InvUID = line.goods.number;
        item.SL = line.goods.sl;
        item.Shipped = line.quantity;
        item.LineTotal = money(line.total);
        item.Cost = money(line.cost);
        item.Taxed = *line.tax != '\0' ? "Y" : "N";
        item.Linetax = *line.tax != '\0' ? money(line.tax) : util::Money();
        item.Description = "As sold";
        items.push_back(item);
    }
    return items;
}

class SaleConversion : public LinkFixture {
protected:
    void SetUp() override {
        makeStore(0, 1);
        // The first daily export sends the items above the special ones.
        setSetupValue("IMPORT HIST", "Last Inventory UID Added", "11");
        openSetup();
        click("CmdInitialized");
    }
    /// Exports the cases in one run and compares what the books hold of each.
    void check(const std::vector<SaleCase>& cases) {
        int number = 2000;
        for (const SaleCase& sale : cases) {
            addSale(headOf(sale, "000" + std::to_string(++number)), linesOf(sale));
        }
        exportChecked(3);
        number = 2000;
        for (const SaleCase& sale : cases) {
            const std::string invoice = "000" + std::to_string(++number);
            SCOPED_TRACE(sale.given);
            std::vector<std::string> found;
            for (const auto& transaction : transactions()) {
                if (transaction.refNumber == invoice) {
                    found.push_back(describe(transaction));
                }
            }
            EXPECT_EQ(found, sale.expected);
        }
    }
};

TEST_F(SaleConversion, kindsOfSaleBecomeTheirTransactions) {
    check({
        {"a cash sale",
         "",
         "",
         {{kTaxedA, 2, "100", "8.25"}},
         {{8.25F, "100", "8.25"}},
         {{1, "108.25"}},
         {"SalesReceipt 108.25 tax 8.25 | 1000018.A x2 100.00 A"}},
        {"a sale on account",
         "",
         "Chan0007",
         {{kTaxedA, 1, "100", "8.25"}},
         {{8.25F, "100", "8.25"}},
         {{0, "108.25"}},
         {"Invoice 108.25 tax 8.25 | 1000018.A x1 100.00 A"}},
        {"a part-paid sale gets a line that brings it to the amount on account",
         "",
         "Chan0007",
         {{kUntaxed, 1, "100", ""}},
         {},
         {{0, "60"}, {1, "40"}},
         {"Invoice 60.00 | 1000025.B x1 100.00 Non | ~POUT -40.00 "}},
        {"a credit on account",
         "",
         "Chan0007",
         {{kUntaxed, -1, "-30", ""}},
         {},
         {{0, "-30"}},
         {"CreditMemo 30.00 | 1000025.B x-1 30.00 Non"}},
        {"a cash refund is balanced by what was paid out",
         "",
         "",
         {{kUntaxed, -1, "-30", ""}},
         {},
         {{1, "-30"}},
         {"SalesReceipt 0.00 | 1000025.B x-1 -30.00 Non | ~POUT 30.00 "}},
        {"a layaway payment is a journal only",
         "ROAL",
         "Chan0007",
         {{{3, "~ROAL"}, 1, "50", ""}},
         {},
         {{1, "50"}},
         {"JournalEntry 50.00 | Layaway Deposits -50.00 | Cash Drawer 50.00"}},
        {"a payroll deduction is a journal only",
         "PAYROL",
         "Chan0007",
         {{{5, "~PAYROL"}, 1, "20", ""}},
         {},
         {{0, "20"}},
         {"JournalEntry 20.00 | Accounts Receivable -20.00 | Layaway Deposits 20.00"}},
        {"a layaway that is completed releases its deposit",
         "Layaway Complete",
         "Chan0007",
         {{{3, "~ROAL"}, 1, "50", ""}},
         {},
         {{8, "50"}},
         {"JournalEntry 50.00 | Accounts Receivable -50.00 | Layaway Deposits 50.00",
          "SalesReceipt 50.00 | ~Sales x1 50.00 Non"}},
        {"a payment on account is a payment; its one-sided journal is refused",
         "ROA",
         "Chan0007",
         {{{2, "~ROA"}, 1, "75", ""}},
         {},
         {{1, "75"}},
         {"ReceivePayment 75.00"}},
        {"a return on account goes out as an invoice",
         "ROA",
         "Chan0007",
         {{{2, "~ROA"}, 1, "-25", ""}},
         {},
         {{1, "-25"}},
         {"Invoice 25.00 | Return x1 25.00 Non"}},
        {"a sale of nothing asks for nothing",
         "",
         "",
         {{kUntaxed, 1, "10", ""}, {kUntaxed, -1, "-10", ""}},
         {},
         {{1, "0"}},
         {}},
    });
}

TEST_F(SaleConversion, specialLinesGetTheirItemsAndTaxCodes) {
    check({
        {"coupon and dollar discount",
         "",
         "",
         {{kUntaxed, 1, "50", ""}, {{8, "~SCOUPN"}, 1, "-2", ""}, {{4, "~DISCNT"}, 1, "-3", ""}},
         {},
         {{1, "45"}},
         {"SalesReceipt 45.00 | 1000025.B x1 50.00 Non | ~Sales x1 -2.00 Non | ~Sales x1 -3.00 "
          "Non"}},
        {"a paid out is balanced by its tender",
         "Paid Out",
         "",
         {{{6, "~POUT"}, 1, "-15", ""}},
         {},
         {{1, "-15"}},
         {"SalesReceipt 0.00 | ~POUT x1 -15.00 Non | ~POUT 15.00 "}},
        {"a taxed non-stock line bears the code of its rate and no quantity",
         "",
         "",
         {{{1, "~NONSTK"}, 1, "20", "1.10"}},
         {{5.5F, "20", "1.10"}},
         {{1, "21.10"}},
         {"SalesReceipt 21.10 tax 1.10 | ~NONSTK 20.00 B"}},
        {"a deleted and an unknown item are sold as non-stock",
         "",
         "",
         {{kDeleted, 1, "40", ""}, {{999, "8000001A"}, 1, "5", ""}},
         {},
         {{1, "45"}},
         {"SalesReceipt 45.00 | ~NONSTK x1 40.00 Non | ~NONSTK x1 5.00 Non"}},
        {"fractions of a quantity round, the amount stays",
         "",
         "",
         {{kUntaxed, 1.5F, "15", ""}, {kUntaxed, 0.25F, "2.50", ""}},
         {},
         {{1, "17.50"}},
         {"SalesReceipt 17.50 | 1000025.B x2 15.00 Non | 1000025.B 2.50 Non"}},
        {"the first rate is the sale's tax item, whatever the lines bear",
         "",
         "",
         {{kTaxedA, 1, "100", "8.25"}, {kTaxedB, 1, "100", "5.50"}},
         {{8.25F, "100", "8.25"}, {5.5F, "100", "5.50"}},
         {{1, "213.75"}},
         {"SalesReceipt 216.50 tax 16.50 | 1000018.A x1 100.00 A | 1000021.A x1 100.00 B"}},
        {"shipping keeps its own code",
         "",
         "",
         {{kTaxedA, 1, "100", "8.25"}, {kShipping, 1, "7.50", "0.62"}},
         {{8.25F, "107.50", "8.87"}},
         {{1, "116.37"}},
         {"SalesReceipt 116.37 tax 8.87 | 1000018.A x1 100.00 A | SHIPUPS.A x1 7.50 A"}},
        {"a service with cost brings a cost journal",
         "",
         "",
         {{kService, 2, "24", "", "4"}},
         {},
         {{1, "24"}},
         {"JournalEntry 8.00 | Inventory Asset -8.00 | Cost of Goods Sold 8.00",
          "SalesReceipt 24.00 | 9000002.A x2 24.00 Non"}},
    });
}

TEST_F(SaleConversion, anUnlistedRateIsLoggedAndTheSalePosted) {
    check({
        {"a rate that the setup lacks",
         "",
         "",
         {{kTaxedA, 1, "100", "7.77"}},
         {{7.77F, "100", "7.77"}},
         {{1, "107.77"}},
         {"SalesReceipt 100.00 | 1000018.A x1 100.00 A"}},
    });
    EXPECT_NE(
        fileText("QBLINK.LOG")
            .find("Invoice #0002001 has an unlisted tax rate of 7.77%.\r\n This item will not "
                  "import. "
                  "Please correct your setup before importing "),
        std::string::npos
    );
}

TEST_F(SaleConversion, aCustomerThatTheListLacksIsMadeForItsSale) {
    check({
        {"an unknown customer",
         "",
         "NOBODY",
         {{kUntaxed, 1, "10", ""}},
         {},
         {{1, "10"}},
         {"SalesReceipt 10.00 | 1000025.B x1 10.00 Non"}},
    });
    EXPECT_EQ(transactions("SalesReceipt").back().name, "NOBODY");
}

}  // namespace
