#include "db/record_fields.h"
#include "util/basic_error.h"

#include <gtest/gtest.h>

namespace {

struct AlikeCase {
    const char* given;
    util::Value present;
    util::Value wanted;
    bool isAlike;
};

TEST(Fields, readAlikeWhateverTheKindOfNumber) {
    const std::int64_t beyondMoney = 9'000'000'000'000'000'000;
    const auto half = util::Money::fromRaw(5000);
    const AlikeCase cases[] = {
        {"no value and zero", util::Value(), std::int64_t{0}, true},
        {"no value and blanks", util::Value(), std::string("   "), true},
        {"money and a number", half, 0.5, true},
        {"money that differs by its last place", half, util::Money::fromRaw(5001), false},
        {"a single and the double nearest to its text", 0.1F, 0.1, true},
        {"whole numbers beyond every amount", beyondMoney, beyondMoney + 1, false},
        {"moments that differ by a second", util::DateTime{1, 1}, util::DateTime{1, 2}, false},
        {"texts in other letters", std::string("a"), std::string("A"), false},
    };
    for (const auto& [given, present, wanted, isAlike] : cases) {
        SCOPED_TRACE(given);
        EXPECT_EQ(db::readsAlike(present, wanted), isAlike);
        EXPECT_EQ(db::readsAlike(wanted, present), isAlike);
    }
}

struct FromCase {
    const char* given;
    util::Value value;
    const char* text;
    std::int32_t whole;
    const char* money;
};

TEST(Fields, takeValuesOfEveryKind) {
    const FromCase cases[] = {
        {"no value", util::Value(), "", 0, "0.0000"},
        {"a text with a number at its start", std::string("12 pcs"), "12 pcs", 12, "0.0000"},
        {"an amount as text", std::string(" 2.50"), " 2.50", 2, "2.5000"},
        {"a half goes to the even number", 2.5, "2.5", 2, "2.5000"},
        {"a single", 1.75F, "1.75", 2, "1.7500"},
        {"an amount", util::Money::fromRaw(-15000), "-1.5", -2, "-1.5000"},
        {"a whole number", std::int64_t{-7}, "-7", -7, "-7.0000"},
        {"a moment", util::DateTime{45322, 3661}, "20240131 01:01:01", 0, "0.0000"},
    };
    for (const auto& [given, value, text, whole, money] : cases) {
        SCOPED_TRACE(given);
        EXPECT_EQ(db::statementText(value), text);
        EXPECT_EQ(db::longFrom(value), whole);
        EXPECT_EQ(db::smallFrom(value), whole);
        EXPECT_EQ(db::moneyFrom(value).text(4), money);
    }
    EXPECT_EQ(db::wholeFrom(std::int64_t{9'000'000'000}), 9'000'000'000);
    EXPECT_EQ(db::momentFrom(std::string("1/31/2024")), (util::DateTime{45322, 0}));
    EXPECT_EQ(db::momentFrom(std::string("20240131")), std::nullopt);
    EXPECT_EQ(db::momentFrom(std::int64_t{45322}), std::nullopt);
}

TEST(Fields, refuseNumbersThatDoNotFit) {
    EXPECT_THROW(static_cast<void>(db::smallFrom(std::int64_t{70000})), util::BasicError);
    EXPECT_THROW(static_cast<void>(db::longFrom(3e9)), util::BasicError);
    EXPECT_THROW(
        static_cast<void>(db::moneyFrom(std::int64_t{1'000'000'000'000'000})), util::BasicError
    );
}

}  // namespace
