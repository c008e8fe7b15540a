#include "support/table_file.h"
#include "util/nuv_formats.h"
#include "util/sm_date_time.h"
#include "util/sm_paths.h"

#include <gtest/gtest.h>

TEST(Formats, padsInvoiceNumbersToSevenCharacters) {
    for (const auto& [text, padded] : testing_support::tableRows<2>("util/padded_numbers.json")) {
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
    for (const auto& [given, value, digits, expected] :
         testing_support::tableRows<4>("util/rounded_numbers.json")) {
        SCOPED_TRACE(given);
        EXPECT_DOUBLE_EQ(gfdRound(std::stod(value), std::stoi(digits)), std::stod(expected));
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
