#include "core/brv_op.h"
#include "core/run_log.h"
#include "windows/expected_controls.h"
#include "windows/setup_controls.h"
#include "windows/setup_fixture.h"
#include "windows/start_windows.h"

namespace {

using testing_support::SetupTest;

class SetupWindow : public SetupTest {};

}  // namespace

TEST_F(SetupWindow, holdsItsControlsInTheirStartState) {
    frmSetup window;
    testing_support::expectControls(window);
}

TEST_F(SetupWindow, opensOnTheDailyPageAndTakesTheStartWindowsAway) {
    frmBRVSplash splash;
    FrmLoading loading;
    gbMultiStore = kYes;
    open();
    EXPECT_TRUE(splash.isClosed());
    EXPECT_TRUE(loading.isClosed());
    EXPECT_TRUE(visible("SSFrame1"));
    EXPECT_EQ(setup->control("lblStore").caption, "");
    EXPECT_EQ(gbMultiStore, kNo);
    EXPECT_FALSE(desktop.busy);

    // Coming forward once more does not turn the page.
    press("cmdRun", 2);
    setup->raise("frmSetup", ui::Signal::activate);
    EXPECT_TRUE(visible("SSFrame3"));
}

TEST_F(SetupWindow, showsOnePageForEachPageButton) {
    struct PageCase {
        int button;
        const char* page;
        const char* others[2];
    };
    constexpr PageCase kPages[] = {
        {0, "SSFrame2", {"SSFrame1", "SSFrame3"}},
        {1, "SSFrame1", {"SSFrame2", "SSFrame3"}},
        {2, "SSFrame3", {"SSFrame1", "SSFrame2"}},
    };
    open();
    check("chkExport", true, 1);
    for (const PageCase& row : kPages) {
        SCOPED_TRACE(row.page);
        press("cmdRun", row.button);
        EXPECT_TRUE(visible(row.page));
        EXPECT_FALSE(visible(row.others[0]));
        EXPECT_FALSE(visible(row.others[1]));
        EXPECT_EQ(checkedExports(), "1");
    }
}

TEST_F(SetupWindow, excludesTheListExportsFromADailyExport) {
    struct ClickCase {
        const char* what;
        std::vector<int> clicked;
        const char* checked;
    };
    const ClickCase kClicks[] = {
        {"lists go together", {0, 1, 2, 5, 6}, "01256"},
        {"Sales takes the lists away", {1, 6, 3}, "3"},
        {"so does PO History", {0, 5, 4}, "4"},
        {"a list clicked while Sales is on goes at once", {3, 1}, "3"},
        {"both daily exports go together", {3, 4}, "34"},
    };
    open();
    for (const ClickCase& row : kClicks) {
        SCOPED_TRACE(row.what);
        for (int index = 0; index < 7; ++index) {
            setup->setOn("chkExport", false, index);
        }
        for (const int index : row.clicked) {
            check("chkExport", true, index);
        }
        EXPECT_EQ(checkedExports(), row.checked);
        EXPECT_TRUE(visible("Cmdexport"));
    }
}

TEST_F(SetupWindow, showsTheInputOfTheOneManualExportThatIsOn) {
    struct ManualCase {
        const char* box;
        const char* frame;
        const char* checked;
    };
    constexpr ManualCase kBoxes[] = {
        {"chkInvtManual", "FrameInventory", "0"},
        {"chkNameManual", "FrameName", "1"},
        {"chkVendorManual", "FrameVendor", "2"},
        {"chkManual", "FrameSales", "3"},
        {"chkPOHisManual", "FramePOHis", "4"},
        {"chkSalesCodeManual", "FrameSalescode", "5"},
        {"chktenderManual", "FrameTender", "6"},
    };
    open();
    check("chkExport", true, 2);
    for (const ManualCase& on : kBoxes) {
        SCOPED_TRACE(on.box);
        check(on.box);
        EXPECT_EQ(checkedExports(), on.checked);
        EXPECT_TRUE(visible("CmdManual"));
        EXPECT_FALSE(visible("Cmdexport"));
        for (const ManualCase& row : kBoxes) {
            EXPECT_EQ(visible(row.frame), &row == &on) << row.frame;
            EXPECT_EQ(setup->isOn(row.box), &row == &on) << row.box;
        }
    }
    check("chktenderManual", false);
    EXPECT_EQ(checkedExports(), "");
    EXPECT_FALSE(visible("FrameTender"));
    EXPECT_FALSE(visible("CmdManual"));
    EXPECT_TRUE(visible("Cmdexport"));

    // A daily export chosen beside a manual one brings the other button back, and no more.
    check("chkNameManual");
    check("chkExport", true, 3);
    EXPECT_EQ(checkedExports(), "3");
    EXPECT_TRUE(visible("Cmdexport"));
    EXPECT_FALSE(visible("CmdManual"));
    EXPECT_TRUE(visible("FrameName"));
}

TEST_F(SetupWindow, showsAndDeletesTheRunLog) {
    open();
    EXPECT_FALSE(enabled("CmdViewLog"));
    press("CmdViewLog");
    press("cmdDeleteLog");
    const std::string name = folder() + "\\QBLINK.LOG";
    EXPECT_EQ(boxes(), name + " Not Exist. / " + name + " Not Exist.");

    gpQBLink_Log_writing("a line");
    press("cmdStop");
    EXPECT_EQ(gbStopRequested, kYes);
    EXPECT_TRUE(enabled("CmdViewLog"));
    EXPECT_TRUE(enabled("cmdDeleteLog"));
    press("CmdViewLog");
    EXPECT_EQ(desktop.openedDocuments, std::vector<std::string>{name});
    press("cmdDeleteLog");
    EXPECT_EQ(boxes(), "Delete QBLINK.LOG successful");
    EXPECT_FALSE(enabled("CmdViewLog"));
    EXPECT_FALSE(enabled("cmdDeleteLog"));
    EXPECT_EQ(fileText("QBLINK.LOG"), "");
}
