#include "util/nuv_formats.h"
#include "util/sm_date_time.h"
#include "util/sm_paths.h"

#include <gtest/gtest.h>

TEST(Formats, padsInvoiceNumbersToSevenCharacters) {
    struct Case {
        const char* text;
        const char* padded;
    };
    constexpr Case kCases[] = {
        {"1234", "0001234"},
        {"12a", "0000012"},
        {"12345678", "2345678"},
        {"", "0000000"},
        {"abc", "0000000"},
        {" 42 ", "0000042"},
        {"13.5", "0000014"},
        {"1e20", "0000000"},
    };
    for (const auto& [text, padded] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(gfsNumber_pad7(text), padded);
    }
}

TEST(Formats, turnItemCodesIntoTheirDisplayFormAndBack) {
    EXPECT_EQ(gfsItem_name("12345678"), "1234567.8");
    EXPECT_EQ(gfsItem_name("~NONSTK "), "~NONSTK ");
    EXPECT_EQ(gfsItem_name("  ~POUT"), "  ~POUT");
    EXPECT_EQ(gfsItem_name("100     "), "100    . ");
    EXPECT_EQ(gfsItem_name(""), ".");
    EXPECT_EQ(gfsItem_key("1234567.8"), "12345678");
    EXPECT_EQ(gfsItem_key(gfsItem_name("100    A")), "100    A");
    EXPECT_EQ(gfsItem_key(""), "");
}

TEST(Formats, roundHalfAwayFromZeroByA32BitFraction) {
    struct Case {
        const char* given;
        double value;
        int digits;
        double expected;
    };
    constexpr Case kCases[] = {
        {"a half goes up", 2.5, 0, 3},
        {"a negative half goes down", -2.5, 0, -3},
        {"a double just below a half", 1.005, 2, 1.01},
        {"less than a half", 2.49, 0, 2},
        {"nearly a whole", 0.99999999999, 0, 1},
        {"nothing to round", 12.25, 2, 12.25},
        {"tens", 15, -1, 20},
    };
    for (const auto& [given, value, digits, expected] : kCases) {
        SCOPED_TRACE(given);
        EXPECT_DOUBLE_EQ(gfdRound(value, digits), expected);
    }
}

TEST(Dates, areShownByTheStoresConvention) {
    EXPECT_EQ(gfsDate_display("20240131", "A"), "01/31/2024");
    EXPECT_EQ(gfsDate_display("20240131", "E"), "31/01/2024");
    EXPECT_EQ(gfsDate_display("        ", "E"), "  ");
    EXPECT_EQ(gfsDate_display("", ""), "  ");
    EXPECT_EQ(gfsDate_display("2024", "A"), "//2024");
    EXPECT_EQ(gfsDate_stored(util::DateTime{45322, 100}), "20240131");
    EXPECT_EQ(gfsDate_stored("31/1/2024", util::DateOrder::dayFirst, 2024), "20240131");
    EXPECT_EQ(gfsDate_stored("20240131", util::DateOrder::monthFirst, 2024), "20240131");
}

TEST(Paths, loseSlashParentAndExtension) {
    EXPECT_EQ(gfsPath_noSlash("C:\\KV\\"), "C:\\KV");
    EXPECT_EQ(gfsPath_noSlash("C:\\KV\\\\"), "C:\\KV\\");
    EXPECT_EQ(gfsPath_noSlash(""), "");
    EXPECT_EQ(gfsPath_parent("C:\\KV\\Data\\"), "C:\\KV");
    EXPECT_EQ(gfsPath_parent("C:\\KV\\Data", kYes), "C:");
    EXPECT_EQ(gfsPath_parent("C:\\"), "");
    EXPECT_EQ(gfsPath_parent("Data"), "");
    EXPECT_EQ(gfsFile_extension_set("shop.QBW", ".qbw"), "shop.qbw");
    EXPECT_EQ(gfsFile_extension_set("shop.qbw", ".qbw"), "shop.qbw");
    EXPECT_EQ(gfsFile_extension_set("shop", ".qbw"), "shop.qbw");
    EXPECT_EQ(gfsFile_extension_set("a.b", ".qbw"), ".qbw");
    EXPECT_EQ(gfsFile_extension_set("", ".qbw"), ".qbw");
}
