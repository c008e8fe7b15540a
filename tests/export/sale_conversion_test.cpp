#include "support/json.h"
#include "support/link_fixture.h"

#include <vector>

namespace {

using testing_support::describe;
using testing_support::Json;

util::Money money(const Json& text) {
    return text.isNull() ? util::Money() : util::Money::fromDecimal(text.text());
}

/// The head of the sale `invoice` of a case.
db::SalesHeadRecord headOf(const Json& sale, const std::string& invoice) {
    const std::vector<Json>& taxes = sale["taxes"].items();
    const std::vector<Json>& tenders = sale["tenders"].items();
    db::SalesHeadRecord head;
    head.Invoice = invoice;
    head.ARCode = sale["customer"].text();
    head.Description = sale["description"].text();
    head.Taxed = taxes.empty() ? "N" : "Y";
    head.Taxes = static_cast<std::int16_t>(taxes.size());
    head.Tenders = static_cast<std::int16_t>(tenders.size());
    for (const Json& line : sale["lines"].items()) {
        head.SubTotal += money(line["total"]);
    }
    head.TotalSale = head.SubTotal;
    for (std::size_t slot = 0; slot < taxes.size(); ++slot) {
        (slot == 0 ? head.TaxRate1 : head.TaxRate2) =
            static_cast<float>(taxes[slot]["rate"].number());
        (slot == 0 ? head.TaxAmount1 : head.TaxAmount2) = money(taxes[slot]["base"]);
        (slot == 0 ? head.TaxTax1 : head.TaxTax2) = money(taxes[slot]["tax"]);
        head.TotalSale += money(taxes[slot]["tax"]);
    }
    for (std::size_t slot = 0; slot < tenders.size(); ++slot) {
        (slot == 0 ? head.TendType1 : head.TendType2) =
            static_cast<std::int16_t>(tenders[slot]["type"].integer());
        (slot == 0 ? head.TendAmount1 : head.TendAmount2) = money(tenders[slot]["amount"]);
    }
    return head;
}

std::vector<db::SalesItemRecord> linesOf(const Json& sale) {
    std::vector<db::SalesItemRecord> items;
    for (const Json& line : sale["lines"].items()) {
        db::SalesItemRecord item;
        item.InvUID = static_cast<std::int32_t>(line["number"].integer());
        item.SL = line["sl"].text();
        item.Shipped = static_cast<float>(line["quantity"].number());
        item.LineTotal = money(line["total"]);
        item.Cost = money(line["cost"]);
        item.Taxed = line.has("tax") ? "Y" : "N";
        item.Linetax = money(line["tax"]);
        item.Description = "As sold";
        items.push_back(item);
    }
    return items;
}

std::string invoiceOf(std::size_t sale) {
    return "000" + std::to_string(2001 + sale);
}

/// The tax codes of the shop are "A", "B", "C" and untaxed.
class SaleConversion : public testing_support::LinkFixture {
protected:
    void SetUp() override {
        makeStore(0, 1);
        // The first daily export sends the items above the special ones.
        setSetupValue("IMPORT HIST", "Last Inventory UID Added", "11");
        openSetup();
        click("CmdInitialized");
    }
    /// What the books hold of a sale.
    [[nodiscard]] std::vector<std::string> booked(const std::string& invoice) const {
        std::vector<std::string> found;
        for (const auto& transaction : transactions()) {
            if (transaction.refNumber == invoice) {
                found.push_back(describe(transaction));
            }
        }
        return found;
    }
};

TEST_F(SaleConversion, everyKindOfSaleBecomesItsTransactions) {
    const Json table = testing_support::parseJsonFile(BREVANE_TEST_DATA "/export/sales.json");
    const std::vector<Json>& sales = table.items();
    ASSERT_FALSE(sales.empty());
    for (std::size_t number = 0; number < sales.size(); ++number) {
        addSale(headOf(sales[number], invoiceOf(number)), linesOf(sales[number]));
    }
    exportChecked(3);
    for (std::size_t number = 0; number < sales.size(); ++number) {
        SCOPED_TRACE(sales[number]["given"].text());
        std::vector<std::string> expected;
        for (const Json& text : sales[number]["books"].items()) {
            expected.push_back(text.text());
        }
        EXPECT_EQ(booked(invoiceOf(number)), expected);
    }
    std::size_t made = 0;
    for (const auto& receipt : transactions("SalesReceipt")) {
        made += receipt.name == "NOBODY" ? 1U : 0U;
    }
    EXPECT_EQ(made, 1U) << "the customer that the list lacks";
    EXPECT_EQ(
        logged(
            "Invoice #" + invoiceOf(sales.size() - 1) +
            " has an unlisted tax rate of 7.77%.\r\n This item will not import. "
            "Please correct your setup before importing "
        ),
        1U
    );
}

}  // namespace
