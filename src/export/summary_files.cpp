#include "export/summary_files.h"

#include "util/basic_error.h"
#include "util/conversions.h"

#include <algorithm>
#include <iterator>

namespace exporting {

namespace {

constexpr char kNoAmount[] = "0.00";
constexpr char kLastCategory[] = "0600";
constexpr char kOtherCode[] = "Othe";
constexpr std::size_t kTaxItemLength = 7;
constexpr std::size_t kUntaxedLength = 12;
constexpr double kBelowTenders = 10;
constexpr double kAboveTenders = 30;

struct CodeRow {
    std::string_view code;
    SummaryCode meaning;
};
constexpr CodeRow kCodes[] = {
    {"0100", SummaryCode::salesCategory},
    {"0200", SummaryCode::salesCategory},
    {"0300", SummaryCode::salesCategory},
    {"0400", SummaryCode::salesCategory},
    {"0500", SummaryCode::salesCategory},
    {kLastCategory, SummaryCode::salesCategory},
    {"0099", SummaryCode::costOfGoods},
    {"5000", SummaryCode::secondCost},
};

/// Which records a description lets through.
enum class Keep : std::uint8_t { always, onDaysWithSales, unlessZero, never };

struct DescriptionRow {
    std::string_view start;
    Keep keep;
};
/// The first row that fits decides.
constexpr DescriptionRow kDescriptions[] = {
    {"Sales Tax Collected", Keep::onDaysWithSales},
    {"Sales Tax", Keep::never},
    {"TaxRounding", Keep::unlessZero},
};

/// One line of the sales file, cut into its fields.
struct Record {
    std::string code;
    std::string description;
    std::string amount;  ///< empty when the line ends before it
};

const DescriptionRow* ruleFor(std::string_view description) {
    const auto* const row =
        std::find_if(std::begin(kDescriptions), std::end(kDescriptions), [&](const auto& rule) {
            return description.starts_with(rule.start);
        });
    return row == std::end(kDescriptions) ? nullptr : row;
}

bool isKept(Keep keep, const Record& record, const SummaryDay& day) {
    switch (keep) {
    case Keep::onDaysWithSales:
        return day.hasSales;
    case Keep::unlessZero:
        return util::val(record.amount) != 0;
    case Keep::never:
        return false;
    case Keep::always:
        break;
    }
    return true;
}

/// Takes the tax item of the day from a description while none is known.
void takeTaxItem(const std::string& description, SummaryDay& day) {
    if (day.taxItem.empty() && namesTaxItem(description)) {
        day.taxItem = description.back();
    }
    const std::string trimmed = util::trim(description);
    if (day.taxItem.empty() && trimmed.size() == kUntaxedLength && trimmed.ends_with("No Tax")) {
        day.taxItem = "Non";
    }
}

void addRecord(const Record& record, SummaryDay& day) {
    const bool isCategory = summaryCode(record.code) == SummaryCode::salesCategory;
    day.hasSales = day.hasSales || (isCategory && record.amount != kNoAmount);
    if (record.code == kLastCategory && !day.hasSales && record.amount == kNoAmount) {
        return;
    }
    const DescriptionRow* const rule = ruleFor(record.description);
    if (!isKept(rule == nullptr ? Keep::always : rule->keep, record, day)) {
        return;
    }
    day.rows.push_back({record.code, record.description, util::toCurrency(record.amount)});
    // Kept: a code is compared as a whole, so that "Other" may well name the tax item.
    if (rule == nullptr && record.code != kOtherCode) {
        takeTaxItem(record.description, day);
    }
}

Record cut(const std::string& line) {
    std::vector<std::string> fields = util::split(line, '|');
    fields.resize(std::max<std::size_t>(fields.size(), 3));
    return {fields[0], fields[1], fields[2]};
}

}  // namespace

SummaryCode summaryCode(const std::string& code) {
    const auto* const row =
        std::find_if(std::begin(kCodes), std::end(kCodes), [&](const auto& known) {
            return known.code == code;
        });
    if (row != std::end(kCodes)) {
        return row->meaning;
    }
    const double value = util::val(code);
    const bool isTender = value > kBelowTenders && value < kAboveTenders;
    return isTender ? SummaryCode::tender : SummaryCode::other;
}

bool namesTaxItem(std::string_view description) {
    return description.size() == kTaxItemLength && description.starts_with("Sale");
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
        text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
    }
    return lines;
}

SummaryDay readSummary(std::string_view text) {
    SummaryDay day;
    std::size_t number = 0;
    for (const std::string& line : linesOf(text)) {
        ++number;
        if (line.find('|') == std::string::npos) {
            continue;
        }
        const Record record = cut(line);
        try {
            addRecord(record, day);
        } catch (const util::BasicError& error) {
            throw util::BasicError(
                error.number(),
                "line " + std::to_string(number) + " holds no amount that can be posted: \"" +
                    record.code + "|" + record.description + "|" + record.amount + "\""
            );
        }
    }
    if (!day.hasSales) {
        std::erase_if(day.rows, [](const SummaryRow& row) { return row.amount.isZero(); });
    }
    return day;
}

bool readOrder(std::string_view line, SummaryOrder& order) {
    std::vector<std::string> fields = util::split(line, '|');
    if (fields.size() < 2) {
        return false;
    }
    fields.resize(std::max<std::size_t>(fields.size(), 4));
    order = {fields[0], fields[1], fields[2], fields[3], util::val(fields[3])};
    return true;
}

}  // namespace exporting
