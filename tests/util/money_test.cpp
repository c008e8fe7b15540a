#include "support/table_file.h"
#include "util/basic_error.h"
#include "util/money.h"

#include <limits>

#include <gtest/gtest.h>

using testing_support::tableRows;
using util::Money;

namespace {

const Money kHighest = Money::fromRaw(std::numeric_limits<std::int64_t>::max());
const Money kLowest = Money::fromRaw(std::numeric_limits<std::int64_t>::min());

}  // namespace

TEST(Money, readsDecimalTextExactly) {
    for (const auto& [given, text, raw] : tableRows<3>("util/amounts.json")) {
        SCOPED_TRACE(given);
        EXPECT_EQ(std::to_string(Money::fromDecimal(text).raw()), raw);
    }
}

TEST(Money, refusesTextThatIsNoAmount) {
    for (const auto& [given, text, number] : tableRows<3>("util/refused_amounts.json")) {
        SCOPED_TRACE(given);
        try {
            Money::fromDecimal(text);
            ADD_FAILURE() << "accepted";
        } catch (const util::BasicError& error) {
            EXPECT_EQ(std::to_string(error.number()), number);
        }
    }
}

TEST(Money, roundsHalfAwayFromZero) {
    for (const auto& [amount, digits, text, rounded] : tableRows<4>("util/rounded_amounts.json")) {
        SCOPED_TRACE(amount);
        EXPECT_EQ(Money::fromDecimal(amount).text(std::stoi(digits)), text);
        EXPECT_EQ(Money::fromDecimal(amount).rounded(std::stoi(digits)).text(4), rounded);
    }
}

TEST(Money, failsInsteadOfWrapping) {
    const Money least = Money::fromRaw(1);
    EXPECT_THROW(kHighest + least, util::BasicError);
    EXPECT_THROW(kLowest - least, util::BasicError);
    EXPECT_THROW(least - kLowest, util::BasicError);
    EXPECT_THROW(-kLowest, util::BasicError);
    EXPECT_THROW(static_cast<void>(kLowest.abs()), util::BasicError);
    EXPECT_THROW(static_cast<void>(kHighest.rounded(0)), util::BasicError);
    EXPECT_THROW(Money::fromWhole(922337203685478), util::BasicError);
    EXPECT_THROW(Money::fromDouble(std::numeric_limits<double>::quiet_NaN()), util::BasicError);
    EXPECT_EQ(kHighest.text(0), "922337203685478");
    EXPECT_EQ((kHighest - kHighest).raw(), 0);
    EXPECT_EQ((kLowest + kHighest).raw(), -1);
}
