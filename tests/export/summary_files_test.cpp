#include "export/summary_files.h"
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

struct DayCase {
    const char* given;
    const char* text;
    const char* rows;
    bool hasSales;
    const char* taxItem;
};
constexpr DayCase kDays[] = {
    {"a file without a line", "", "", false, ""},
    {"lines without a separator are no records", "Totals\n\n0100\n", "", false, ""},
    {"CR and LF, LF, CR and no end at all",
     "0100|a|1.00\r\n0200|b|2.00\n0300|c|3.00\r0400|d|4.00",
     "0100/a/1.00 0200/b/2.00 0300/c/3.00 0400/d/4.00 ",
     true,
     ""},
    {"further fields do not count", "0100|a|1.00|x|y\n", "0100/a/1.00 ", true, ""},
    {"fields are not trimmed", " 0100| a |1.00\n", " 0100/ a /1.00 ", false, ""},
    {"a day with sales keeps its zeros",
     "0100|a|1.00\n0011|Cash|0.00\n",
     "0100/a/1.00 0011/Cash/0.00 ",
     true,
     ""},
    {"a day without sales keeps its amounts only",
     "0100|a|0.00\n0011|Cash|3.00\n0012|Check|0\n",
     "0011/Cash/3.00 ",
     false,
     ""},
    {"a zero in other words is an amount", "0100|a|0\n", "0100/a/0.00 ", true, ""},
    {"a negative category is a day with sales", "0500|a|-1.00\n", "0500/a/-1.00 ", true, ""},
    {"the last category without an amount counts once there were sales",
     "0600|a|0.00\n0100|b|1.00\n0600|c|0.00\n",
     "0100/b/1.00 0600/c/0.00 ",
     true,
     ""},
    {"the last category's description is not looked at before that",
     "0600|Sales N|0.00\n0100|b|1.00\n",
     "0100/b/1.00 ",
     true,
     ""},
    {"tax collected counts behind sales only",
     "0700|Sales Tax Collected|1.00\n0100|a|1.00\n0700|Sales Tax Collected A|2.00\n",
     "0100/a/1.00 0700/Sales Tax Collected A/2.00 ",
     true,
     ""},
    {"other taxes are dropped, amount or not",
     "0700|Sales Tax A|1.00\n0700|Sales Tax\n0100|a|1.00\n",
     "0100/a/1.00 ",
     true,
     ""},
    {"letter case counts", "0700|sales tax A|1.00\n", "0700/sales tax A/1.00 ", false, ""},
    {"a rounding without amount is dropped",
     "0800|TaxRounding|0\n0800|TaxRounding|\n0800|TaxRounding|-0.01\n",
     "0800/TaxRounding/-0.01 ",
     false,
     ""},
    {"a category of seven characters names the tax item",
     "0100|Sales B|1.00\n0200|Sales C|1.00\n",
     "0100/Sales B/1.00 0200/Sales C/1.00 ",
     true,
     "B"},
    {"six and eight characters name none",
     "0100|Sale B|1.00\n0200|Sales BB|1.00\n",
     "0100/Sale B/1.00 0200/Sales BB/1.00 ",
     true,
     ""},
    {"untaxed sales name the untaxed item, blanks around them or not",
     "0600| Sales No Tax |1.00\n0100|Sales B|1.00\n",
     "0600/ Sales No Tax /1.00 0100/Sales B/1.00 ",
     true,
     "Non"},
    {"the code Othe names no tax item, the code Other does",
     "Othe|Sales A|1.00\nOther|Sales B|1.00\n",
     "Othe/Sales A/1.00 Other/Sales B/1.00 ",
     false,
     "B"},
    {"a record that is left out for its zero names it all the same",
     "0100|Sales B|0.00\n0011|Cash|1.00\n",
     "0011/Cash/1.00 ",
     false,
     "B"},
};

void expectDay(const DayCase& row) {
    const SummaryDay day = readSummary(row.text);
    EXPECT_EQ(rowsOf(day), row.rows);
    EXPECT_EQ(day.hasSales, row.hasSales);
    EXPECT_EQ(day.taxItem, row.taxItem);
}

TEST(SummaryFiles, keepTheRecordsThatArePosted) {
    for (const DayCase& row : kDays) {
        SCOPED_TRACE(row.given);
        expectDay(row);
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
