#include "export/summary_files.h"
#include "support/table_file.h"
#include "util/basic_error.h"
#include "util/conversions.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using exporting::linesOf;
using exporting::readSummary;
using exporting::SummaryCode;
using exporting::SummaryDay;

std::string rowsOf(const SummaryDay& day) {
    std::string text;
    for (const auto& row : day.rows) {
        text += row.code + "/" + row.description + "/" + row.amount.text(2) + " ";
    }
    return text;
}

TEST(SummaryFiles, keepTheRecordsThatArePosted) {
    for (const auto& [given, text, rows, hasSales, taxItem] :
         testing_support::tableRows<5>("export/summary_days.json")) {
        SCOPED_TRACE(given);
        const SummaryDay day = readSummary(text);
        EXPECT_EQ(rowsOf(day), rows);
        EXPECT_EQ(day.hasSales, hasSales == "yes");
        EXPECT_EQ(day.taxItem, taxItem);
    }
}

struct BrokenCase {
    const char* given;
    const char* text;
    const char* error;
};
constexpr BrokenCase kBroken[] = {
    {"letters in the amount",
     "0100|a|1.00\n\n0200|b|abc\n",
     "13 line 3 holds no amount that can be posted: \"0200|b|abc\""},
    {"letters behind the amount",
     "0011|Cash|12.50 CR\n",
     "13 line 1 holds no amount that can be posted: \"0011|Cash|12.50 CR\""},
    {"no amount", "0011|Cash", "13 line 1 holds no amount that can be posted: \"0011|Cash|\""},
    {"an amount that money cannot hold",
     "0011|Cash|1234567890123456.00\n",
     "6 line 1 holds no amount that can be posted: \"0011|Cash|1234567890123456.00\""},
};

/// Number and description of the error that reading a file ends with.
std::string errorOf(const char* text) {
    try {
        readSummary(text);
    } catch (const util::BasicError& error) {
        return std::to_string(error.number()) + " " + error.what();
    }
    return "none";
}

TEST(SummaryFiles, refuseARecordWithoutAnAmount) {
    for (const BrokenCase& row : kBroken) {
        EXPECT_EQ(errorOf(row.text), row.error) << row.given;
    }
}

struct CodeCase {
    const char* code;
    SummaryCode meaning;
};
constexpr CodeCase kCodes[] = {
    {"0100", SummaryCode::salesCategory},
    {"0200", SummaryCode::salesCategory},
    {"0300", SummaryCode::salesCategory},
    {"0400", SummaryCode::salesCategory},
    {"0500", SummaryCode::salesCategory},
    {"0600", SummaryCode::salesCategory},
    {"0700", SummaryCode::other},
    {"100", SummaryCode::other},
    {"0010", SummaryCode::other},
    {"0011", SummaryCode::tender},
    {"15", SummaryCode::tender},
    {"0029", SummaryCode::tender},
    {"0030", SummaryCode::other},
    {"0099", SummaryCode::costOfGoods},
    {"99", SummaryCode::other},
    {"5000", SummaryCode::secondCost},
    {"6005", SummaryCode::other},
    {"Returns", SummaryCode::other},
    {"", SummaryCode::other},
};

TEST(SummaryFiles, knowEveryRecordCode) {
    for (const CodeCase& row : kCodes) {
        EXPECT_EQ(exporting::summaryCode(row.code), row.meaning) << row.code;
    }
}

struct OrderCase {
    const char* given;
    const char* line;
    const char* order;  ///< vendor, reference and value; "none": no record
};
constexpr OrderCase kOrders[] = {
    {"a whole record", "ACME|104|1/10/2015|12.50", "ACME 104 12.5"},
    {"a return with further fields", "ACME|104|1/10/2015|-12.50|x", "ACME 104 -12.5"},
    {"a record without its amount", "ACME|104", "ACME 104 0"},
    {"letters instead of an amount", "ACME|104|1/10/2015|abc", "ACME 104 0"},
    {"one field", "ACME", "none"},
};

std::string orderOf(const char* line) {
    exporting::SummaryOrder order;
    if (!exporting::readOrder(line, order)) {
        return "none";
    }
    return order.vendor + " " + order.reference + " " + util::textOf(order.value);
}

TEST(SummaryFiles, cutTheLinesOfOrders) {
    for (const OrderCase& row : kOrders) {
        EXPECT_EQ(orderOf(row.line), row.order) << row.given;
    }
}

TEST(SummaryFiles, haveAnEmptyLineOnlyWhereTheTextHasOne) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(linesOf("a\r\n"), Lines{"a"});
    EXPECT_EQ(linesOf("\n"), Lines{""});
    EXPECT_EQ(linesOf("a\n\r\nb"), (Lines{"a", "", "b"}));
}

}  // namespace
