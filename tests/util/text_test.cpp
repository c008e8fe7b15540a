#include "util/conversions.h"

#include <gtest/gtest.h>

TEST(Text, knowsWhatIsAboveABlank) {
    EXPECT_FALSE(util::aboveBlank(""));
    EXPECT_FALSE(util::aboveBlank(" "));
    EXPECT_FALSE(util::aboveBlank(std::string_view("\0", 1)));
    EXPECT_TRUE(util::aboveBlank("  "));
    EXPECT_TRUE(util::aboveBlank("A"));
}

TEST(Text, splitsKeepingEmptyPiecesAndComparesNamesWithoutCase) {
    EXPECT_EQ(util::split("a||b|", '|'), (std::vector<std::string>{"a", "", "b", ""}));
    EXPECT_EQ(util::split("", '|'), (std::vector<std::string>{""}));
    EXPECT_TRUE(util::sameName("SaleDate", "SALEDATE"));
    EXPECT_FALSE(util::sameName("Sale", "SaleDate"));
    EXPECT_EQ(util::upper("caf\xE9 \xF7 \xDF \x9A\xFF"), "CAF\xC9 \xF7 \xDF \x8A\x9F");
    EXPECT_EQ(util::lower("CAF\xC9 \xD7 \xDF \x8A\x9F"), "caf\xE9 \xD7 \xDF \x9A\xFF");
}
