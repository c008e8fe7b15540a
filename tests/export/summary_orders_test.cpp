#include "export/summary_fixture.h"
#include "support/expected_file.h"

namespace {

using testing_support::FaultPoint;
using Texts = std::vector<std::string>;

class SummaryOrders : public SummaryFixture {
protected:
    SummaryOrders() {
        std::filesystem::rename(companyFile(), companyFile() + ".kept");
        makeStore(0, 1);
        std::filesystem::rename(companyFile() + ".kept", companyFile());
        gbPostPOTotals = kYes;
    }

    std::size_t count(const char* text) const {
        const Texts shown = desktop.boxTexts();
        return static_cast<std::size_t>(std::count(shown.begin(), shown.end(), text));
    }
    /// A box holds `text`; an empty one: there was no box.
    void expectBox(const std::string& text) const {
        std::string all;
        for (const std::string& shown : desktop.boxTexts()) {
            all += shown + "\n";
        }
        EXPECT_TRUE(text.empty() ? all.empty() : all.find(text) != std::string::npos) << all;
    }
    void expectBooks(const std::string& orders, const std::string& journals) const {
        EXPECT_EQ(references("PurchaseOrder"), orders);
        EXPECT_EQ(references("JournalEntry"), journals);
    }
    /// References of the entries of one type.
    std::string references(const char* type) const {
        std::string text;
        for (const auto& transaction : transactions(type)) {
            text += transaction.refNumber + " ";
        }
        return text;
    }
};

constexpr char kOrders[] = "ACME|104|1/10/2015|125.50\r\n"
                           "ACME|105|1/9/2015|0.00\r\n"
                           "BRULE|106|1/10/2015|-12.00\r\n"
                           "BRULE|107|1/10/2015|80.00\r\n"
                           "ACME|108|1/10/2015|-3.50\r\n";

TEST_F(SummaryOrders, postPurchasesAsOrdersAndReturnsAsJournals) {
    EXPECT_EQ(postOrders(kOrders), kYes);
    EXPECT_EQ(
        books(),
        (Texts{
            "PurchaseOrder 125.50 | 1 x1 125.50 ",
            "PurchaseOrder 80.00 | 1 x1 80.00 ",
            "JournalEntry 12.00 | Accounts Payable 12.00 | Inventory Asset -12.00",
            "JournalEntry 3.50 | Accounts Payable 3.50 | Inventory Asset -3.50"})
    );
    testing_support::expectFile(
        "export/summary_orders.xml", sent("PurchaseOrderAddRq") + sent("JournalEntryAddRq")
    );
    EXPECT_EQ(progress().front(), "Exporting Purchase Orders for 1/10/2015");
    const std::vector<std::string>& shown = progress();
    EXPECT_EQ(
        Texts(shown.end() - 3, shown.end()),
        (Texts{
            "Journal COGS...memo set",
            "Exporting Journal set type 0",
            "Exporting Journal set type 1"})
    );
    EXPECT_EQ(pauses(), (std::vector<int>{1000})) << "the session is renewed once";
    EXPECT_TRUE(companyfile::CompanyFile::open(companyFile()).check().empty());
}

TEST_F(SummaryOrders, showTheirPlainTextWithoutTheSwitchAndPauseForReturnsOnly) {
    gbPostPOTotals = kNo;
    EXPECT_EQ(postOrders("ACME|104|1/10/2015|1.00\nACME|105|1/10/2015|1.00\n"), kYes);
    EXPECT_EQ(
        progress(),
        (Texts{"Exporting Purchase Orders...", "Getting vendor info failed", "Vendor Found"})
    );
    EXPECT_TRUE(pauses().empty());
}

struct FileCase {
    const char* given;
    const char* text;
    const char* orders;    ///< references in the books
    const char* journals;  ///< references in the books
    const char* box;       ///< one that is shown; empty: none at all
};

TEST_F(SummaryOrders, takeFilesAsTheyCome) {
    constexpr FileCase kCases[] = {
        {"no line", "", "", "", ""},
        {"no line end at the end", "ACME|1|1/10/2015|1.00", "1 ", "", ""},
        {"an empty line ends both passes, the first with a word",
         "ACME|2|1/10/2015|1.00\n\nACME|3|1/10/2015|1.00\nACME|4|1/10/2015|-1.00\n",
         "2 ",
         "",
         "exiting"},
        {"lines without an amount are no orders",
         "ACME\nACME|5\nACME|6|1/10/2015|abc\n",
         "",
         "",
         ""},
        {"letters behind an amount fail, the next order follows",
         "ACME|7|1/10/2015|1x\nACME|8|1/10/2015|-1x\nACME|9|1/10/2015|1\n",
         "9 ",
         "",
         "export failed8"},
        {"a purchase of less than money counts is none", "ACME|10|1/10/2015|0.00001\n", "", "", ""},
        {"a vendor that nobody knows fails",
         "NOBODY|11|1/10/2015|1.00\nACME|12|1/10/2015|1.00\n",
         "12 ",
         "",
         "export failed11"},
        {"a code that is longer than any vendor's fails",
         "ACME                    X|13|1/10/2015|1.00\n",
         "",
         "",
         "export failed13"},
        {"a date that is none goes out without", "ACME|14|soon|1.00\n", "14 ", "", ""},
        {"a return to a vendor that the company file lacks is told, the next one follows",
         "NOBODY|15|1/10/2015|-1.00\nACME|16|1/10/2015|-1.00\n",
         "",
         "16 ",
         "Getting Request"},
    };
    postOrders("ACME|0|1/10/2015|1.00\n");
    std::string orders = "0 ";
    std::string journals;
    for (const FileCase& row : kCases) {
        SCOPED_TRACE(row.given);
        desktop.boxes.clear();
        EXPECT_EQ(postOrders(row.text), kYes);
        orders += row.orders;
        journals += row.journals;
        expectBooks(orders, journals);
        expectBox(row.box);
    }
}

TEST_F(SummaryOrders, readALongFile) {
    std::string text;
    for (int line = 0; line < 100000; ++line) {
        text += line % 50000 == 49999 ? "ACME|1|1/10/2015|1.00\n" : "ACME|2|1/10/2015|0.00\n";
    }
    EXPECT_EQ(postOrders(text), kYes);
    expectBooks("1 1 ", "");
}

TEST_F(SummaryOrders, goOnAfterALostConnection) {
    faults->failAt(
        1, FaultPoint::before, platform::PlatformError(-2147417851, "gone"), "<PurchaseOrderAddRq"
    );
    EXPECT_EQ(postOrders("ACME|104|1/10/2015|1.00\nACME|105|1/10/2015|1.00\n"), kYes);
    EXPECT_EQ(references("PurchaseOrder"), "105 ");
    EXPECT_EQ(count("export failed104"), 1U);
    EXPECT_NE(fileText("QBLINK.LOG").find("POHeaderAddNewReq 104 "), std::string::npos);
}

TEST_F(SummaryOrders, logTheReturnsThatNoSessionIsLeftFor) {
    // Given: the session stands, and cannot be opened again
    ASSERT_EQ(postOrders("ACME|104|1/10/2015|1.00\n"), kYes);
    faults->refuseBegin(platform::PlatformError(-2147220472, "no file"), 1000);
    desktop.operatorThere = false;

    // When, Then
    EXPECT_EQ(postOrders("ACME|105|1/10/2015|1.00\nACME|106|1/10/2015|-1.00\n"), kYes);
    EXPECT_EQ(references("PurchaseOrder"), "104 105 ");
    EXPECT_EQ(references("JournalEntry"), "");
    EXPECT_NE(fileText("QBLINK.LOG").find("from 106 on were not posted"), std::string::npos);
}

}  // namespace
