#include "util/basic_error.h"
#include "util/money.h"

#include <limits>

#include <gtest/gtest.h>

using util::Money;

namespace {

const Money kHighest = Money::fromRaw(std::numeric_limits<std::int64_t>::max());
const Money kLowest = Money::fromRaw(std::numeric_limits<std::int64_t>::min());

}  // namespace

TEST(Money, readsDecimalTextExactly) {
    struct Case {
        const char* text;
        std::int64_t raw;
    };
    constexpr Case kCases[] = {
        {"-12.5", -125000},
        {"  7  ", 70000},
        {"", 0},
        {"   ", 0},
        {".5", 5000},
        {"5.", 50000},
        {"+0.0001", 1},
        {"0.00005", 0},  // half goes to the even neighbour
        {"0.00015", 2},
        {"0.00005000001", 1},  // more than half
        {"-0.00015", -2},
        {"922337203685477.5807", std::numeric_limits<std::int64_t>::max()},
        {"-922337203685477.5808", std::numeric_limits<std::int64_t>::min()},
    };
    for (const auto& [text, raw] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Money::fromDecimal(text).raw(), raw);
    }
}

TEST(Money, refusesTextThatIsNoAmount) {
    struct Case {
        const char* text;
        int error;
    };
    constexpr Case kCases[] = {
        {"abc", 13},
        {"-", 13},
        {".", 13},
        {"1,000", 13},
        {"1e3", 13},
        {"1.2.3", 13},
        {"922337203685477.5808", 6},
        {"922337203685477.58075", 6},
        {"99999999999999999999999", 6},
        {"1844674407370955.16155", 6},  // rounds beyond 64 bits
    };
    for (const auto& [text, number] : kCases) {
        SCOPED_TRACE(text);
        try {
            Money::fromDecimal(text);
            ADD_FAILURE() << "accepted";
        } catch (const util::BasicError& error) {
            EXPECT_EQ(error.number(), number);
        }
    }
}

TEST(Money, roundsHalfAwayFromZero) {
    struct Case {
        const char* amount;
        int digits;
        const char* text;
        const char* rounded;
    };
    constexpr Case kCases[] = {
        {"1.005", 2, "1.01", "1.0100"},
        {"-1.005", 2, "-1.01", "-1.0100"},
        {"-0.0049", 2, "0.00", "0.0000"},
        {"0.05", 1, "0.1", "0.1000"},
        {"12.5", 0, "13", "13.0000"},
        {"12.3456", 4, "12.3456", "12.3456"},
    };
    for (const auto& [amount, digits, text, rounded] : kCases) {
        SCOPED_TRACE(amount);
        EXPECT_EQ(Money::fromDecimal(amount).text(digits), text);
        EXPECT_EQ(Money::fromDecimal(amount).rounded(digits).text(4), rounded);
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
