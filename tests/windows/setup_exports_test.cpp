#include "core/brv_op.h"
#include "core/link_setup.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "windows/export_engines.h"
#include "windows/setup_fixture.h"

namespace {

/// Engines that write down their runs stand in place of the exports.
class SetupExports : public testing_support::SetupTest {
protected:
    SetupExports() : kept_(windows::exportEngines()) {
        for (windows::ExportEngine& engine : windows::exportEngines()) {
            engine.automatic = [this, &engine] { record(engine.name); };
            engine.manual = [this, &engine] { record(std::string("one of ") + engine.name); };
        }
    }
    ~SetupExports() override { windows::exportEngines() = kept_; }

    /// Without record marks: nothing counts as new.
    void open() {
        SetupTest::open();
        gnLastInventoryUID = 0;
        gnLastNameUID = 0;
    }
    void record(const std::string& what) {
        runs += (runs.empty() ? "" : ", ") + what;
        if (onRun) {
            onRun();
        }
    }
    void engine(windows::ExportIndex index, std::function<void()> run) {
        windows::exportEngines().at(static_cast<std::size_t>(index)).automatic = std::move(run);
    }

    std::string runs;
    std::function<void()> onRun;

private:
    windows::ExportEngines kept_;
};

}  // namespace

TEST_F(SetupExports, runsWhatIsCheckedInTheOrderOfTheNumbers) {
    open();
    for (const int index : {6, 5, 2, 1, 0}) {
        check("chkExport", true, index);
    }
    press("Cmdexport");
    EXPECT_EQ(runs, "Inventory, Names, Vendors, Sales Codes, Tenders");
    runs.clear();
    check("chkExport", true, 4);
    check("chkExport", true, 3);
    press("Cmdexport");
    EXPECT_EQ(runs, "Sales, PO History");
    EXPECT_EQ(boxes(), "");
}

TEST_F(SetupExports, guardsARunByItsButtons) {
    open();
    check("chkExport", true, 4);
    bool inRun = false;
    onRun = [&] {
        inRun = true;
        EXPECT_FALSE(enabled("Cmdexport"));
        EXPECT_TRUE(enabled("cmdStop"));
        EXPECT_EQ(gbExportInProgress, kYes);
        EXPECT_EQ(gbStopRequested, kNo);
    };
    EXPECT_FALSE(enabled("cmdStop"));
    gbStopRequested = kYes;
    press("Cmdexport");
    EXPECT_TRUE(inRun);
    EXPECT_TRUE(enabled("Cmdexport"));
    EXPECT_FALSE(enabled("cmdStop"));
    EXPECT_FALSE(enabled("cmdAcceptCancel", 0));
    EXPECT_EQ(gbExportInProgress, kNo);
}

TEST_F(SetupExports, stopsOneExportAndGoesOnWithTheNext) {
    open();
    check("chkExport", true, 3);
    check("chkExport", true, 4);
    std::string seen;
    onRun = [&] {
        seen += gbStopRequested == kNo ? "go " : "stop ";
        press("cmdStop");
    };
    press("Cmdexport");
    EXPECT_EQ(seen, "go go ");

    // The manual exports of one click share their Stop.
    seen.clear();
    setup->setOn("chkExport", true, 1);
    press("CmdManual");
    EXPECT_EQ(seen, "go stop stop ");
}

TEST_F(SetupExports, asksForAChoiceWhenNothingIsChecked) {
    open();
    press("Cmdexport");
    EXPECT_EQ(boxes(), "Please select item to export ");
    press("CmdManual");
    EXPECT_EQ(boxes(), "Please select item to export!!!");
    EXPECT_EQ(runs, "");
    EXPECT_TRUE(enabled("CmdManual"));
}

TEST_F(SetupExports, raisesTheSummaryFlagForGood) {
    open();
    check("chkExport", true, 3);
    press("Cmdexport");
    EXPECT_EQ(gbSalesSummaryMode, kNo);
    setup->setOn("Option1", true, 1);
    press("Cmdexport");
    setup->setOn("Option1", false, 1);
    press("Cmdexport");
    EXPECT_EQ(gbSalesSummaryMode, kYes);
}

TEST_F(SetupExports, startsAManualSaleAtWhatWasTyped) {
    struct ManualCase {
        const char* invoice;
        const char* date;
        const char* startInvoice;
        const char* startDate;
        bool runs;
    };
    constexpr ManualCase kCases[] = {
        {" 42 ", "20150131", "0000042", "01/31/2015", true},
        {"42", "", "0000042", "20150101", true},
        {"42", "01/31/2015", "", "", false},
        {"42", "99999999", "", "", false},
        {"42", " ", "", "", false},
    };
    open();
    check("chkManual");
    for (const ManualCase& row : kCases) {
        SCOPED_TRACE(row.date);
        gsLastInvoice = "0000007";
        gsLastInvoiceDate = "20150101";
        runs.clear();
        onRun = [&] {
            EXPECT_EQ(gsLastInvoice, row.startInvoice);
            EXPECT_EQ(gsLastInvoiceDate, row.startDate);
        };
        setup->setText("txtInvoiceManual", row.invoice);
        setup->setText("txtDateManual", row.date);
        press("CmdManual");
        EXPECT_EQ(runs, row.runs ? "one of Sales" : "");
        EXPECT_EQ(boxes(), row.runs ? "" : "Invaild date. please reenter in 'yyyymmdd' format'");
        EXPECT_EQ(gsLastInvoice, "0000007");
        EXPECT_EQ(gsLastInvoiceDate, "20150101");
        EXPECT_TRUE(enabled("CmdManual"));
    }
}

TEST_F(SetupExports, tellsAnErrorAndGivesTheButtonsBack) {
    open();
    engine(windows::exportSales, [] { throw platform::PlatformError(-3, "the server is gone"); });
    check("chkExport", true, 3);
    press("Cmdexport");
    EXPECT_EQ(boxes(), "the server is gone");
    EXPECT_TRUE(enabled("Cmdexport"));
    EXPECT_FALSE(enabled("cmdStop"));
}

TEST_F(SetupExports, saysSoWhenAnEngineIsMissing) {
    open();
    engine(windows::exportNames, {});
    check("chkExport", true, 1);
    press("Cmdexport");
    EXPECT_EQ(status(), "The export of Names is not in this version of the link yet.");
    EXPECT_EQ(boxes(), "");
}

TEST_F(SetupExports, sendsNewItemsAndCustomersBeforeTheSales) {
    open();
    gnLastInventoryUID = 20;
    gnLastNameUID = 1;
    std::string sent;
    faults->documents.clear();
    engine(windows::exportSales, [&] {
        for (const std::string& document : faults->documents) {
            sent += document.find("<CustomerAdd>") != std::string::npos ? "customer " : "";
            sent += document.find("<ItemInventoryAdd>") != std::string::npos ? "item " : "";
        }
    });
    check("chkExport", true, 3);
    press("Cmdexport");
    EXPECT_TRUE(sent.starts_with("item ")) << sent;
    EXPECT_TRUE(sent.ends_with("customer ")) << sent;
    EXPECT_GT(gnLastInventoryUID, 20);
    EXPECT_GT(gnLastNameUID, 1);
    EXPECT_EQ(
        setupValue("IMPORT HIST", "Last Inventory UID Added"),
        util::textOf(std::int64_t{gnLastInventoryUID})
    );
    EXPECT_EQ(
        setupValue("IMPORT HIST", "Last Name UID Added"), util::textOf(std::int64_t{gnLastNameUID})
    );
}

TEST_F(SetupExports, leavesAMarkAloneThatANumberDoesNotFit) {
    open();
    execute("UPDATE Names SET NameID = 40000 WHERE NameID = 2");
    gnLastNameUID = 1;
    check("chkExport", true, 3);
    press("Cmdexport");
    EXPECT_EQ(gnLastNameUID, 1);
    EXPECT_EQ(setupValue("IMPORT HIST", "Last Name UID Added"), "");
    EXPECT_NE(
        fileText("QBLINK.LOG").find("Last Name UID Added: record 40000 is above 32767"),
        std::string::npos
    );
}

TEST_F(SetupExports, walksNothingWithoutASession) {
    open();
    EndSessionCloseConnection();
    gnLastInventoryUID = 1;
    faults->refuseBegin(platform::PlatformError(-5, "refused"), 1);
    desktop.operatorThere = false;
    check("chkExport", true, 3);
    press("Cmdexport");
    EXPECT_EQ(runs, "");
    EXPECT_EQ(gnLastInventoryUID, 1);
}

TEST_F(SetupExports, importsThePostingItemsOnce) {
    open();
    check("chkExport", true, 3);
    press("CmdInitialized");
    EXPECT_EQ(status(), "Ready");
    EXPECT_FALSE(enabled("CmdInitialized"));
    EXPECT_TRUE(enabled("Cmdexport"));
    EXPECT_TRUE(enabled("CmdManual"));
}
