#include "report_tools/store_reader.h"
#include "util/text_codec.h"

#include <array>
#include <cmath>
#include <map>

/// Stand-in of the suite's report tool: the totals of one day or several, as a summary file.
namespace {

using report_tools::Row;
using report_tools::StoreReader;
using util::Money;

constexpr char kUsage[] =
    "usage: reports.exe /AUTORUN=A /OUTPUT=A /|FROMDATE=DATE|TODATE=DATE\n"
    "Writes the totals of the days to export/Summary<last day>.txt of the data folder.\n";

/// Sales by tax rate: code and name of the row. The last holds what bears no tax.
struct Category {
    const char* code;
    const char* name;
};
constexpr std::array<Category, 6> kCategories = {{
    {"0100", "Sales A"},
    {"0200", "Sales B"},
    {"0300", "Sales C"},
    {"0400", "Sales D"},
    {"0500", "Sales E"},
    {"0600", "Sales No Tax"},
}};
constexpr std::size_t kUntaxed = kCategories.size() - 1;
constexpr int kFirstTenderCode = 11;
constexpr int kSlots = 5;

/// Sales that count: neither voided nor a cash drop.
constexpr char kSales[] =
    "FROM SalesHead WHERE SaleDate >= ? AND SaleDate <= ? AND trim(coalesce(Status, '')) = '' "
    "AND trim(Description) <> 'Cash Drop'";

struct Totals {
    int sales = 0;
    std::array<Money, kCategories.size()> categories;
    std::map<std::string, Money> others;  ///< by the sale's kind, as "ROA"
    Money tax;
    std::map<int, Money> tenders;
    Money goods;
    Money services;
};

/// Place of a tax rate among the categories; a rate of no category counts with the first.
std::size_t categoryOf(double rate, const std::vector<double>& rates) {
    constexpr double kSame = 0.0005;
    for (std::size_t index = 0; index < rates.size(); ++index) {
        if (std::abs(rates[index] - rate) < kSame) {
            return std::min(index, kUntaxed - 1);
        }
    }
    return 0;
}

std::vector<double> readRates(StoreReader& store) {
    std::vector<double> rates;
    store.each(
        "SELECT TaxRate1, TaxRate2, TaxRate3, TaxRate4, TaxRate5, TaxRate6 FROM Common",
        {},
        [&](const Row& row) {
            for (int column = 0; column < 6; ++column) {
                rates.push_back(row.number(column));
            }
        }
    );
    return rates;
}

void addSale(Totals& totals, const Row& row, const std::vector<double>& rates) {
    constexpr int kFirstTax = 2;
    constexpr int kFirstTender = kFirstTax + 3 * kSlots + 1;
    Money untaxed = row.money(0);
    const std::string kind = row.text(1);
    for (int slot = 0; slot < kSlots; ++slot) {
        const Money base = row.money(kFirstTax + 3 * slot + 1);
        totals.categories.at(categoryOf(row.number(kFirstTax + 3 * slot), rates)) += base;
        totals.tax += row.money(kFirstTax + 3 * slot + 2);
        untaxed -= base;
    }
    (kind.empty() ? totals.categories.at(kUntaxed) : totals.others[kind]) += untaxed;
    const int count = static_cast<int>(row.number(kFirstTender - 1));
    for (int slot = 0; slot < std::min(count, kSlots); ++slot) {
        totals.tenders[static_cast<int>(row.number(kFirstTender + 2 * slot))] +=
            row.money(kFirstTender + 2 * slot + 1);
    }
    ++totals.sales;
}

void readSales(StoreReader& store, const std::vector<std::string>& days, Totals& totals) {
    const std::vector<double> rates = readRates(store);
    std::string columns = "SELECT SubTotal, Description";
    for (int slot = 1; slot <= kSlots; ++slot) {
        const std::string number = std::to_string(slot);
        columns += ", TaxRate" + number + ", TaxAmount" + number + ", TaxTax" + number;
    }
    columns += ", Tenders";
    for (int slot = 1; slot <= kSlots; ++slot) {
        columns += ", TendType" + std::to_string(slot) + ", TendAmount" + std::to_string(slot);
    }
    store.each(columns + " " + kSales, days, [&](const Row& row) { addSale(totals, row, rates); });
}

/// Cost of what was sold: goods that leave the stock, and the rest.
void readCosts(StoreReader& store, const std::vector<std::string>& days, Totals& totals) {
    store.each(
        std::string("SELECT l.Cost * l.Shipped, i.NonDecrement FROM SalesItem l "
                    "LEFT JOIN Inventory i ON i.RecordNum = l.InvUID "
                    "WHERE l.SaleID IN (SELECT SaleID ") +
            kSales + ")",
        days,
        [&](const Row& row) {
            (row.text(1) == "N" ? totals.goods : totals.services) += row.money(0);
        }
    );
}

std::map<int, std::string> readTenders(StoreReader& store) {
    std::map<int, std::string> names;
    store.each("SELECT TenderID, Description FROM TenderTypes", {}, [&](const Row& row) {
        names[static_cast<int>(row.number(0))] = row.text(1);
    });
    return names;
}

std::vector<std::string> linesOf(Totals& totals, const std::map<int, std::string>& tenderNames) {
    std::vector<std::string> lines;
    Money open = totals.tax;
    const auto add = [&](const std::string& code, const std::string& name, Money amount) {
        lines.push_back(code + "|" + util::fromUtf8(name) + "|" + amount.text(2));
    };
    for (std::size_t index = 0; index < kCategories.size(); ++index) {
        add(kCategories.at(index).code, kCategories.at(index).name, totals.categories.at(index));
        open += totals.categories.at(index).rounded(2);
    }
    for (const auto& [kind, amount] : totals.others) {
        add("Othe", kind, amount);
        open += amount.rounded(2);
    }
    add("0700", "Sales Tax Collected", totals.tax);
    for (const auto& [tender, amount] : totals.tenders) {
        const auto name = tenderNames.find(tender);
        add("00" + std::to_string(kFirstTenderCode + tender),
            name == tenderNames.end() ? "Tender" : name->second,
            amount);
        open -= amount.rounded(2);
    }
    add("Othe", "TaxRounding", -open);
    add("0099", "Cost of Goods", totals.goods);
    // The two round together, so that their sum is the cost of the days to the cent.
    const Money cost = (totals.goods + totals.services).rounded(2);
    add("5000", "Cost of Services", cost - totals.goods.rounded(2));
    return lines;
}

void report(StoreReader& store, const std::vector<std::string>& dates) {
    const std::vector<std::string> days = {store.day(dates.at(0)), store.day(dates.at(1))};
    Totals totals;
    readSales(store, days, totals);
    readCosts(store, days, totals);
    const bool hasSales = totals.sales > 0;
    store.writeExport(
        "Summary" + days.back() + ".txt",
        hasSales ? linesOf(totals, readTenders(store)) : std::vector<std::string>()
    );
}

}  // namespace

int main(int argc, char** argv) {
    return report_tools::runTool(
        {argv + 1, argv + argc},
        {"/AUTORUN=A /OUTPUT=A /|FROMDATE=", "|TODATE=", ""},
        kUsage,
        report
    );
}
