#include "util/fixed_text.h"

#include <gtest/gtest.h>

TEST(FixedText, padsAndCutsToItsWidth) {
    util::FixedText<8> field("~ROA");
    EXPECT_EQ(field.str(), "~ROA    ");
    EXPECT_EQ(field.trimmed(), "~ROA");
    field = "Layaway Complete";
    EXPECT_EQ(field.str(), "Layaway ");
    field = std::string();
    EXPECT_EQ(field.str(), "        ");
    EXPECT_EQ(field.trimmed(), "");
}

TEST(FixedText, tellsAFreshFieldFromABlankOne) {
    util::FixedText<3> field;
    EXPECT_TRUE(field.isUnset());
    field = "";
    EXPECT_FALSE(field.isUnset());
}
