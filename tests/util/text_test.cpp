#include "util/conversions.h"

#include <gtest/gtest.h>

TEST(Text, trimsBlanksOnly) {
    EXPECT_EQ(util::trim("  a b  "), "a b");
    EXPECT_EQ(util::trim("\ta\t"), "\ta\t");
    EXPECT_EQ(util::ltrim("  a  "), "a  ");
    EXPECT_EQ(util::rtrim("Cash                "), "Cash");
    EXPECT_EQ(util::trim("    "), "");
}

TEST(Text, knowsWhatIsAboveABlank) {
    EXPECT_FALSE(util::aboveBlank(""));
    EXPECT_FALSE(util::aboveBlank(" "));
    EXPECT_FALSE(util::aboveBlank(std::string_view("\0", 1)));
    EXPECT_TRUE(util::aboveBlank("  "));
    EXPECT_TRUE(util::aboveBlank("A"));
    EXPECT_EQ(util::compareBinary("2.0", "06.0"), 1);
    EXPECT_EQ(util::compareBinary("SE", "se"), -1);
}

TEST(Text, splitsKeepingEmptyPiecesAndComparesNamesWithoutCase) {
    EXPECT_EQ(util::split("a||b|", '|'), (std::vector<std::string>{"a", "", "b", ""}));
    EXPECT_EQ(util::split("", '|'), (std::vector<std::string>{""}));
    EXPECT_TRUE(util::sameName("SaleDate", "SALEDATE"));
    EXPECT_FALSE(util::sameName("Sale", "SaleDate"));
    EXPECT_EQ(util::upper("caf\xE9 \xF7 \xDF \x9A\xFF"), "CAF\xC9 \xF7 \xDF \x8A\x9F");
    EXPECT_EQ(util::lower("CAF\xC9 \xD7 \xDF \x8A\x9F"), "caf\xE9 \xD7 \xDF \x9A\xFF");
}
