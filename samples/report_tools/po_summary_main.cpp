#include "report_tools/store_reader.h"
#include "util/text_codec.h"

#include <map>
#include <tuple>

/// Stand-in of the suite's purchase report: what was received and returned, as a summary file.
namespace {

using report_tools::Row;
using report_tools::StoreReader;
using util::Money;

constexpr char kUsage[] =
    "usage: POSummaryRpt.exe |START=DATE |END=DATE |STORE=NUMBER|EXPORT=Y\n"
    "Writes purchases and returns of the days to export/POSummary<last day>.txt of the data "
    "folder.\n";

/// Vendor, order number, day, and whether it is a return.
using Group = std::tuple<std::string, std::string, std::string, bool>;

std::string digitsOf(const std::string& text) {
    std::string digits;
    for (const char character : text) {
        if (character >= '0' && character <= '9') {
            digits += character;
        }
    }
    return digits.empty() ? "0" : digits;
}

void report(StoreReader& store, const std::vector<std::string>& values) {
    const std::string firstDay = store.day(values.at(0));
    const std::string lastDay = store.day(values.at(1));
    std::map<Group, Money> sums;
    store.each(
        "SELECT VendorCode, PONumber, DateReceived, Status, UnitQty * UnitCost FROM POHistory "
        "WHERE DateReceived >= ? AND DateReceived <= ? AND trim(Status) IN ('R', 'U')",
        {firstDay, lastDay},
        [&](const Row& row) {
            const bool isReturn = row.text(3) == "U";
            const Money amount = isReturn ? -row.money(4) : row.money(4);
            sums[{row.text(0), digitsOf(row.text(1)), row.text(2), isReturn}] += amount;
        }
    );
    std::vector<std::string> lines;
    for (const auto& [group, amount] : sums) {
        const auto& [vendor, order, day, isReturn] = group;
        lines.push_back(
            util::fromUtf8(vendor) + "|" + order + "|" + store.shortText(day) + "|" + amount.text(2)
        );
    }
    store.writeExport("POSummary" + lastDay + ".txt", lines);
}

}  // namespace

int main(int argc, char** argv) {
    return report_tools::runTool(
        {argv + 1, argv + argc}, {"|START=", " |END=", " |STORE=", "|EXPORT=Y"}, kUsage, report
    );
}
