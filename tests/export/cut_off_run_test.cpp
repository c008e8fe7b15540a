#include "core/brv_op.h"
#include "platform/ports/platform.h"
#include "qb/smQB_Utilities.h"
#include "support/link_fixture.h"

#include <filesystem>
#include <set>

namespace {

using testing_support::FaultPoint;
using testing_support::LinkFixture;

constexpr int kSales = 3;
constexpr int kItems = 0;

/// The same shop is exported in one go, then in runs that are cut off: the books must hold the same
/// documents.
class CutOffRun : public LinkFixture {
protected:
    void makeShop() {
        makeStore(120, 2);
        addPaymentByTwoTenders();
        openSetup();
        click("CmdInitialized");
        exportChecked(kItems);
        setup->setOn("chkExport", false, kItems);
        endSession();
        std::filesystem::copy_file(companyFile(), kept("company.qbw"));
        std::filesystem::copy_file(folder() + "/QBLINK.NUV", kept("QBLINK.NUV"));
    }
    /// A customer pays 30.00 on account, part in cash, part by cheque.
    void addPaymentByTwoTenders() {
        db::SalesHeadRecord head;
        head.Invoice = "0009000";
        head.SaleDate = "20150107";
        head.ARCode = "PAYER";
        head.Description = "ROA ";
        head.Tenders = 2;
        head.TendType1 = 1;
        head.TendAmount1 = util::Money::fromWhole(10);
        head.TendType2 = 2;
        head.TendAmount2 = util::Money::fromWhole(20);
        head.SubTotal = util::Money::fromWhole(30);
        head.TotalSale = head.SubTotal;
        db::SalesItemRecord line;
        line.InvUID = 1;
        line.SL = "~NONSTK";
        line.Shipped = 1;
        line.LineTotal = head.TotalSale;
        addSale(head, {line});
    }
    /// Puts books and position back to the morning, and starts the program.
    void begin() {
        endSession();
        constexpr auto kReplace = std::filesystem::copy_options::overwrite_existing;
        std::filesystem::copy_file(kept("company.qbw"), companyFile(), kReplace);
        std::filesystem::copy_file(kept("QBLINK.NUV"), folder() + "/QBLINK.NUV", kReplace);
        restart();
    }
    void exportSales() {
        setup->setOn("chkExport", false, kSales);
        exportChecked(kSales);
    }
    /// A run that ends with the program at the `n`-th document of a kind.
    void exportUntil(int n, FaultPoint point, const std::string& document) {
        faults->endProgramAt(n, point, document);
        EXPECT_THROW(exportSales(), platform::ProgramEnd) << "the shop has no such document";
        endSession();
    }
    std::multiset<std::string> booked() {
        std::multiset<std::string> documents;
        for (const auto& transaction : transactions()) {
            documents.insert(transaction.type + " " + transaction.refNumber);
        }
        return documents;
    }

private:
    static void endSession() {
        if (gbQBReady != kNo) {
            EndSessionCloseConnection();
        }
    }
    [[nodiscard]] std::string kept(const std::string& name) const {
        return folder() + "/kept-" + name;
    }
};

TEST_F(CutOffRun, isTakenUpWithoutLossOrDouble) {
    makeShop();
    begin();
    exportSales();
    const std::multiset<std::string> whole = booked();
    ASSERT_FALSE(std::filesystem::exists(folder() + "/QBLINK.RNS"));

    struct Cut {
        int n;
        FaultPoint point;
        const char* document;
    };
    constexpr Cut kCuts[] = {
        {1, FaultPoint::before, "<JournalEntryAdd>"},
        {1, FaultPoint::after, "<JournalEntryAdd>"},
        {3, FaultPoint::after, "<JournalEntryAdd>"},
        {1, FaultPoint::after, "<ReceivePaymentAdd>"},
        {2, FaultPoint::after, "<ReceivePaymentAdd>"},
        {5, FaultPoint::after, "<InvoiceAdd>"},
        {1, FaultPoint::after, "<CreditMemoAdd>"},
        {60, FaultPoint::before, "<SalesReceiptAdd>"},
        {60, FaultPoint::after, "<SalesReceiptAdd>"},
    };
    for (const Cut& cut : kCuts) {
        SCOPED_TRACE(std::string(cut.document) + " " + std::to_string(cut.n));
        begin();
        exportUntil(cut.n, cut.point, cut.document);
        EXPECT_TRUE(std::filesystem::exists(folder() + "/QBLINK.RNS"));
        restart();
        exportSales();
        EXPECT_EQ(booked(), whole);
        EXPECT_FALSE(std::filesystem::exists(folder() + "/QBLINK.RNS"));
    }

    // Cut off twice, the second time earlier, and stopped in between: what the first run had sent
    // stays known.
    begin();
    exportUntil(80, FaultPoint::after, "<SalesReceiptAdd>");
    restart();
    exportUntil(2, FaultPoint::before, "<SalesReceiptQuery");
    restart();
    desktop.onYield[desktop.yields + 40] = [this] { click("cmdStop"); };
    exportSales();
    EXPECT_EQ(status(), "Exporting Sales Cancelled");
    EXPECT_TRUE(std::filesystem::exists(folder() + "/QBLINK.RNS"));
    exportSales();
    EXPECT_EQ(booked(), whole);
}

TEST_F(CutOffRun, aSecondRunAfterStopAsksBeforeItSendsAgain) {
    makeShop();
    begin();
    exportSales();
    const std::multiset<std::string> whole = booked();

    begin();
    desktop.onYield[desktop.yields + 150] = [this] { click("cmdStop"); };
    exportSales();
    ASSERT_EQ(status(), "Exporting Sales Cancelled");
    exportSales();  // from the old position, in the same run of the program
    EXPECT_EQ(booked(), whole);
}

TEST_F(CutOffRun, doesNotBeginWhileAnotherProgramExports) {
    makeShop();
    begin();
    const auto before = booked();
    std::unique_ptr<platform::FileLock> other = platform::files().lock(gsDataPath + "\\QBLINK.LCK");
    exportSales();
    EXPECT_EQ(
        desktop.boxes.back().text,
        "Another program is exporting from this data folder. Nothing was sent."
    );
    EXPECT_EQ(booked(), before);
    EXPECT_EQ(setupValue("IMPORT HIST", "Last Invoices Posted"), "");

    other.reset();
    exportSales();
    EXPECT_GT(booked().size(), before.size());
}

TEST_F(CutOffRun, booksThatWerePutBackAreFilledAgain) {
    makeShop();
    begin();
    exportSales();
    const std::multiset<std::string> whole = booked();

    // Given: the books are put back to the morning after a run was cut off
    begin();
    exportUntil(60, FaultPoint::after, "<SalesReceiptAdd>");
    begin();
    exportSales();
    EXPECT_EQ(booked(), whole);
}

}  // namespace
