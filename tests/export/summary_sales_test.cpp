#include "config/clsDataPath.h"
#include "db/nuvDBSM_Common.h"
#include "export/summary_fixture.h"
#include "support/expected_file.h"

namespace {

using testing_support::FaultPoint;
using Texts = std::vector<std::string>;

struct LimitCase {
    const char* given;
    std::string text;
    LegacyBool result;
    const char* box;     ///< part of the only box; empty: none
    std::size_t posted;  ///< entries in the books
};

/// Totals need no table of the store.
class SummarySales : public SummaryFixture {
protected:
    SummarySales() { gDataPath.DataPath = folder(); }

    void expectPosted(const LimitCase& row, std::size_t before) const {
        EXPECT_EQ(books().size() - before, row.posted);
        EXPECT_EQ(desktop.boxes.empty(), std::string_view(row.box).empty()) << lastBox();
        EXPECT_NE(lastBox().find(row.box), std::string::npos) << lastBox();
    }
};

constexpr char kDay[] = "0100|Sales A|100.00\r\n"
                        "0200|Sales B|-20.00\r\n"
                        "0600|Sales No Tax|0.00\r\n"
                        "Othe|Sales Tax Collected|7.00\r\n"
                        "0800|Sales Tax A|7.00\r\n"
                        "0011|Cash|92.00\r\n"
                        "0015|Refund|-5.00\r\n"
                        "0099|Cost of Goods|12.50\r\n"
                        "5000|Cost of Services|2.50\r\n"
                        "0300|Sales C|1.00\r\n";

TEST_F(SummarySales, postADayAsOneReceiptAndOneJournalEntry) {
    EXPECT_EQ(postTotals(kDay), kYes);
    EXPECT_EQ(
        books(),
        (Texts{
            "SalesReceipt 0.00 | 0100 100.00 Non | Returns -20.00 Non | 0600 0.00 Non | "
            "Othe 7.00  | 0011 92.00  | 6005 5.00 ",
            "JournalEntry 40.00 | Negative Tenders 5.00 | Undeposited Funds -5.00 | Returns 20.00 "
            "| Merchandise Sales -20.00 | Cost of Goods Sold 15.00 | Inventory Asset -15.00"})
    );
    testing_support::expectFile(
        "export/summary_day.xml", sent("SalesReceiptAddRq") + sent("JournalEntryAddRq")
    );
    EXPECT_EQ(
        progress(),
        (Texts{
            "Reading Import File...",
            "Create sales receipt Header...",
            "Create sales receipt Line...",
            "Exporting sales receipt...",
            "Creating Journal COGS...",
            "Exporting Journal COGS...",
            "Journal COGS...memo set",
            "Exporting Journal set type 0",
            "Exporting Journal set type 1",
            "Exporting Journal set type 0",
            "Exporting Journal set type 1",
            "Exporting Journal set type 0",
            "Exporting Journal set type 1"})
    );
    EXPECT_TRUE(desktop.boxes.empty()) << lastBox();
    EXPECT_EQ(fileText("QBLINK.LOG"), "");
    EXPECT_EQ(postTotals(kDay), kYes);
    EXPECT_EQ(books().size(), 4U) << "nothing guards against a second posting";
}

struct LineCase {
    const char* given;
    const char* text;
    Texts books;
};

TEST_F(SummarySales, treatEveryKindOfRecord) {
    const LineCase cases[] = {
        {"redeemed amounts change their sign",
         "0100|Sales A|10.00\nOthe|Points Redeemed|4.00\nOthe|redeemed|-1.00\n",
         {"SalesReceipt 7.00 | 0100 10.00 Non | Othe -4.00  | Othe 1.00 "}},
        {"tips lose their sign in any letter case, but not as a part of a text",
         "0100|Sales A|10.00\nOthe|Tips|-4.00\nOthe|TIPS|2.00\nOthe|Tips paid|-3.00\n",
         {"SalesReceipt 13.00 | 0100 10.00 Non | Othe 4.00  | Othe 2.00  | Othe -3.00 "}},
        {"the untaxed category is untaxed whatever its description",
         "0600|Food|10.00\n0100|Clothes|2.00\n",
         {"SalesReceipt 12.00 | 0600 10.00 Non | 0100 2.00 "}},
        {"a day without sales sends its tenders and no journal",
         "0100|Sales A|0.00\n0011|Cash|-6.00\n0012|Check|6.00\n0099|Cost|3.00\n",
         {"SalesReceipt 0.00 | 6005 6.00  | 0012 6.00 "}},
        {"categories without an amount stand on the receipt, other records do not",
         "0100|Sales A|1.00\n0200|Sales B|0.00\n0011|Cash|0.00\n",
         {"SalesReceipt 1.00 | 0100 1.00 Non | 0200 0.00 Non"}},
        {"cost of goods without a second cost",
         "0100|Sales A|1.00\n0099|Cost|-12.50\n0011|Cash|1.00\n5000|Cost|2.50\n",
         {"SalesReceipt 1.00 | 0100 1.00 Non",
          "JournalEntry 12.50 | Cost of Goods Sold 12.50 | Inventory Asset -12.50"}},
        {"a returned category has lost the code that made it untaxed",
         "0100|Sales A|10.00\n0600|Food|-2.00\n",
         {"SalesReceipt 8.00 | 0100 10.00 Non | Returns -2.00 ",
          "JournalEntry 2.00 | Returns 2.00 | Merchandise Sales -2.00"}},
        {"a negative tender counts without its sign, redeemed or not",
         "0100|Sales A|10.00\n0015|Points Redeemed|-4.00\n",
         {"SalesReceipt 14.00 | 0100 10.00 Non | 6005 4.00 ",
          "JournalEntry 4.00 | Negative Tenders 4.00 | Undeposited Funds -4.00"}},
        {"a cost of nothing in the last line",
         "0100|Sales A|1.00\n0099|Cost|0.00\n",
         {"SalesReceipt 1.00 | 0100 1.00 Non"}},
    };
    std::size_t before = 0;
    for (const LineCase& row : cases) {
        SCOPED_TRACE(row.given);
        EXPECT_EQ(postTotals(row.text), kYes);
        const Texts all = books();
        EXPECT_EQ(Texts(all.begin() + static_cast<std::ptrdiff_t>(before), all.end()), row.books);
        before = all.size();
    }
}

std::string repeated(int times, const std::string& line) {
    std::string text = "0100|Sales A|100.00\n";
    for (int count = 0; count < times; ++count) {
        text += line;
    }
    return text;
}

TEST_F(SummarySales, postAllOfADayOrNothing) {
    const LimitCase cases[] = {
        {"five negative tenders", repeated(5, "0015|Refund|-1.00\n"), kYes, "", 2},
        {"a sixth one",
         repeated(6, "0015|Refund|-1.00\n"),
         kNo,
         "it holds more than 5 negative tenders",
         0},
        {"six returns", repeated(6, "0200|Sales B|-1.00\n"), kYes, "", 2},
        {"a seventh one",
         repeated(7, "0200|Sales B|-1.00\n"),
         kNo,
         "it holds more than 6 returns",
         0},
        {"a tender too many behind the cost is no tender",
         repeated(5, "0015|Refund|-1.00\n") + "0099|Cost|1.00\n0015|Refund|-1.00\n",
         kYes,
         "",
         2},
        {"letters in an amount",
         "0100|Sales A|1.00\n0011|Cash|1,0O\n",
         kNo,
         "line 2 holds no amount that can be posted: \"0011|Cash|1,0O\"",
         0},
        {"no records", "nothing\r\n", kYes, "nothing found to export on sales receipt", 0},
    };
    for (const LimitCase& row : cases) {
        SCOPED_TRACE(row.given);
        const std::size_t before = books().size();
        desktop.boxes.clear();
        EXPECT_EQ(postTotals(row.text), row.result);
        expectPosted(row, before);
    }
}

TEST_F(SummarySales, goOnToTheOrdersWithoutAFile) {
    setOrders("ACME|104|1/10/2015|12.50\n");
    gsSummaryFile = folder() + "\\export\\Summary20150110.txt ";
    EXPECT_EQ(gfbSummaryFile_post(), kYes);
    EXPECT_EQ(desktop.boxes.front().text, "nothing found to export on sales receipt");
    EXPECT_EQ(progress().back(), "Getting vendor info failed");
}

TEST_F(SummarySales, leaveTheOrdersOfADayThatWasGivenUp) {
    setOrders("ACME|104|1/10/2015|12.50\n");
    EXPECT_EQ(postTotals("0100|Sales A|x\n"), kNo);
    EXPECT_EQ(sent("VendorQueryRq"), "");
    EXPECT_TRUE(fileText("QBLINK.LOG").ends_with(lastBox() + "\r\n")) << "the box is logged";
}

TEST_F(SummarySales, logAReceiptThatIsRefusedAndPostTheJournal) {
    EXPECT_EQ(postTotals("0100|Sales A|1.00\n7777|Unknown|1.00\n0099|Cost|3.00\n"), kYes);
    EXPECT_EQ(
        books(), (Texts{"JournalEntry 3.00 | Cost of Goods Sold 3.00 | Inventory Asset -3.00"})
    );
    EXPECT_NE(fileText("QBLINK.LOG").find("SalesAddNewReq 150110 "), std::string::npos);
}

TEST_F(SummarySales, logAJournalThatFails) {
    faults->failAt(
        1, FaultPoint::before, platform::PlatformError(-2147417851, "gone"), "<JournalEntryAddRq"
    );
    EXPECT_EQ(postTotals(kDay), kYes);
    EXPECT_EQ(books().size(), 1U);
    EXPECT_NE(fileText("QBLINK.LOG").find("gpJournalEntry_add 150110 "), std::string::npos);
}

TEST_F(SummarySales, endWithoutTheJournalWhenTheConnectionIsLost) {
    // Given: the exchange that makes the request set behind the receipt fails
    ASSERT_EQ(postTotals("0011|Cash|1.00\nOthe|Other|1.00\n"), kYes);
    const int exchanges = faults->exchanges;
    ASSERT_EQ(postTotals("0011|Cash|1.00\nOthe|Other|1.00\n"), kYes);
    const int perReceipt = faults->exchanges - exchanges;
    faults->failAt(
        perReceipt + 1, FaultPoint::before, platform::PlatformError(-2147417851, "gone")
    );

    // When, Then
    EXPECT_EQ(postTotals(kDay), kNo);
    EXPECT_EQ(books("SalesReceipt").size(), 3U);
    EXPECT_TRUE(books("JournalEntry").empty());
    EXPECT_EQ(lastBox(), "The journal entry 150110 was not posted. Error: -2147417851 gone");
    EXPECT_EQ(progress().back(), "Creating Journal COGS...");
}

TEST_F(SummarySales, postNothingWithoutASession) {
    faults->refuseBegin(platform::PlatformError(-2147220472, "no file"), 1000);
    desktop.operatorThere = false;
    EXPECT_EQ(postTotals(kDay), kNo);
    EXPECT_TRUE(books().empty());
}

TEST_F(SummarySales, readTheDayInTheStoresOrder) {
    gCommon.USEurope = "E";
    gsFromDate = "2/1/2015";
    EXPECT_EQ(postTotals("0100|Sales A|1.00\n"), kYes);
    const auto receipt = transactions().front();
    EXPECT_EQ(receipt.refNumber + " " + receipt.date, "150102 2015-01-02");
}

TEST_F(SummarySales, postALongDay) {
    std::string text;
    for (int line = 0; line < 100000; ++line) {
        text += line % 100 == 0 ? "0100|Sales A|0.01\n" : "0012|Check|0.00\n";
    }
    EXPECT_EQ(postTotals(text), kYes);
    EXPECT_EQ(transactions().front().total.text(2), "10.00");
}

}  // namespace
