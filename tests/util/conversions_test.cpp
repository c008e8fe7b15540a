#include "support/table_file.h"
#include "util/conversions.h"
#include "util/value.h"

#include <functional>
#include <map>

#include <gtest/gtest.h>

// Every case of the conversion vectors runs through one table: operation -> how we carry it out.

namespace {

using testing_support::Json;
using util::DateTime;
using util::Money;

constexpr int kCurrentYear = 2031;

std::string timeText(std::int32_t seconds) {
    return util::format(DateTime{0, seconds}, "hh:mm:ss");
}

std::string isoDate(DateTime date) {
    return util::format(date, "yyyy-mm-dd");
}

/// "2024-12-05 14:05:00"
DateTime momentOf(const std::string& text) {
    return util::dateFromText(text).value();
}

std::string numberText(double value) {
    return util::textOf(value);
}

std::string expectedNumber(const Json& value) {
    if (value.kind() == Json::Kind::boolean) {
        return util::booleanWord(value.truth());
    }
    return numberText(value.number());
}

double doubleOf(const Json& example) {
    const std::string type = example["type"].text();
    const std::string value = example["value"].text();
    if (type == "single") {
        return static_cast<double>(std::stof(value));
    }
    return type == "currency" ? Money::fromDecimal(value).toDouble() : std::stod(value);
}

/// Texts as values of each type.
const std::map<std::string, std::function<util::Value(const std::string&)>> kValues = {
    {"text", [](const std::string& text) { return text; }},
    {"double", [](const std::string& text) { return std::stod(text); }},
    {"single", [](const std::string& text) { return std::stof(text); }},
    {"currency", [](const std::string& text) { return Money::fromDecimal(text); }},
    {"integer", [](const std::string& text) { return std::int64_t{std::stoi(text)}; }},
    {"long", [](const std::string& text) { return std::int64_t{std::stol(text)}; }},
    {"date", momentOf},
};

/// A value in a pattern, or in its general form without one.
struct Written {
    const std::string* pattern = nullptr;

    template <typename Held>
    std::string operator()(const Held& held) const {
        if constexpr (std::is_same_v<Held, std::monostate>) {
            return "no value";
        } else if constexpr (std::is_same_v<Held, std::string>) {
            return util::format(held, *pattern);
        } else {
            return pattern == nullptr ? util::textOf(held) : util::format(held, *pattern);
        }
    }
};

std::string written(const Json& example, const std::string* pattern) {
    if (example["type"].text() == "boolean") {
        return util::booleanWord(util::toBoolean(example["value"].text()));
    }
    return std::visit(
        Written{pattern}, kValues.at(example["type"].text())(example["value"].bytes())
    );
}

bool isText(const Json& example) {
    return example["type"].text() == "text";
}

struct Operation {
    std::function<std::string(const Json&)> run;
    std::function<std::string(const Json&)> expected;  ///< from the result
};

std::string textResult(const Json& result) {
    return result["text"].bytes();
}

std::string numberResult(const Json& result) {
    return expectedNumber(result["value"]);
}

std::string dateResult(const Json& result) {
    std::string date = result["date"].text();
    if (date.starts_with("current")) {
        date.replace(0, 7, std::to_string(kCurrentYear));
    }
    return date + " " + result["time"].text();
}

std::string runDate(const Json& example) {
    const auto date =
        util::dateFromText(example["text"].bytes(), util::DateOrder::monthFirst, kCurrentYear);
    if (!date) {
        throw util::BasicError::of(13);
    }
    return isoDate(*date) + " " + timeText(date->seconds);
}

const std::map<std::string, Operation> kOperations = {
    {"date_from_text", {runDate, dateResult}},
    {"date_add_days",
     {[](const Json& example) {
          DateTime date = util::dateFromText(example["text"].text()).value();
          date.day += static_cast<std::int32_t>(example["days"].integer());
          return util::shortDate(date);
      },
      textResult}},
    {"format",
     {[](const Json& example) { return written(example, &example["pattern"].text()); },
      textResult}},
    {"text_of", {[](const Json& example) { return written(example, nullptr); }, textResult}},
    {"to_integer",
     {[](const Json& example) {
          return numberText(
              isText(example) ? util::toInteger(example["value"].text())
                              : util::toInteger(doubleOf(example))
          );
      },
      numberResult}},
    {"to_long",
     {[](const Json& example) {
          return numberText(
              isText(example) ? util::toLong(example["value"].text())
                              : util::toLong(doubleOf(example))
          );
      },
      numberResult}},
    {"to_double",
     {[](const Json& example) { return numberText(util::toDouble(example["value"].text())); },
      numberResult}},
    {"to_boolean",
     {[](const Json& example) {
          return util::booleanWord(util::toBoolean(example["value"].text()));
      },
      numberResult}},
    {"to_currency",
     {[](const Json& example) {
          return (isText(example) ? util::toCurrency(example["value"].text())
                                  : util::toCurrency(doubleOf(example)))
              .text(4);
      },
      [](const Json& result) { return result["value"].text(); }}},
    {"currency_times",
     {[](const Json& example) {
          return util::times(Money::fromDecimal(example["currency"].text()), doubleOf(example))
              .text(4);
      },
      [](const Json& result) { return result["value"].text(); }}},
    {"currency_plus",
     {[](const Json& example) {
          const Money amount = Money::fromDecimal(example["currency"].text());
          return (example["type"].text() == "currency"
                      ? amount + Money::fromDecimal(example["value"].text())
                      : Money::fromDouble(amount.toDouble() + doubleOf(example)))
              .text(4);
      },
      [](const Json& result) { return result["value"].text(); }}},
    {"is_numeric",
     {[](const Json& example) {
          return util::booleanWord(util::isNumeric(example["text"].bytes()));
      },
      numberResult}},
    {"val",
     {[](const Json& example) { return numberText(util::val(example["text"].bytes())); },
      numberResult}},
    {"compare_binary",
     {[](const Json& example) {
          return std::to_string(
              util::compareBinary(example["left"].bytes(), example["right"].bytes())
          );
      },
      [](const Json& result) { return result["order"].text(); }}},
    {"trim", {[](const Json& example) { return util::trim(example["text"].bytes()); }, textResult}},
    {"ltrim",
     {[](const Json& example) { return util::ltrim(example["text"].bytes()); }, textResult}},
    {"rtrim",
     {[](const Json& example) { return util::rtrim(example["text"].bytes()); }, textResult}},
};

std::string outcomeOf(const Operation& operation, const Json& example) {
    try {
        return operation.run(example);
    } catch (const util::BasicError& error) {
        return "error " + std::to_string(error.number());
    }
}

}  // namespace

TEST(Conversions, giveTheObservedResults) {
    const Json cases = testing_support::parseJsonFile(BREVANE_TEST_DATA "/conversions.json");
    EXPECT_EQ(cases.items().size(), 564U);
    for (const Json& example : cases.items()) {
        SCOPED_TRACE(example["id"].text());
        const Operation& operation = kOperations.at(example["op"].text());
        const Json& result = example["result"];
        const std::string expected =
            result.has("error") ? "error " + result["error"].text() : operation.expected(result);
        EXPECT_EQ(outcomeOf(operation, example), expected);
    }
}

TEST(Conversions, takeTheDayFirstInADayFirstStore) {
    for (const auto& [given, text, expected] :
         testing_support::tableRows<3>("util/day_first_dates.json")) {
        SCOPED_TRACE(given);
        const auto date = util::dateFromText(text, util::DateOrder::dayFirst, kCurrentYear);
        EXPECT_EQ(date ? isoDate(*date) : "", expected);
    }
    EXPECT_EQ(
        util::format("5/1/2024", "Short Date", util::DateOrder::dayFirst, kCurrentYear), "5/1/2024"
    );
}

TEST(Conversions, failOnNumbersBeyondEveryRange) {
    EXPECT_EQ(util::toCurrency("-922337203685477.5808").text(4), "-922337203685477.5808");
    for (const char* const text : {"1e400", "1e99999999999", "922337203685477.58075", "1e300"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW(util::toCurrency(text), util::BasicError);
    }
    EXPECT_THROW(util::val("1e400"), util::BasicError);
    EXPECT_THROW(util::toDouble("1e99999999999"), util::BasicError);
    EXPECT_EQ(util::toDouble("1e-99999999999"), 0);
    EXPECT_EQ(util::format("1e400", "0.00"), "1e400");
}

TEST(Conversions, countDaysInFrontOfDayZeroWithTimesThatStillGoForward) {
    EXPECT_EQ(util::format("-1.25", "yyyymmdd hh:mm"), "18991229 06:00");
}

TEST(Conversions, takeNoHalfOfAPair) {
    EXPECT_TRUE(util::isNumeric("(5)"));
    EXPECT_FALSE(util::isNumeric("(5"));
    EXPECT_FALSE(util::isNumeric("5)"));
}
