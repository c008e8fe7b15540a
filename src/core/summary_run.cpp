#include "core/summary_run.h"

#include "config/clsDataPath.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/sm_Shell.h"
#include "core/sm_files.h"
#include "core/summary_setup.h"
#include "platform/ports/platform.h"
#include "qb/smQB_Utilities.h"
#include "util/basic_error.h"
#include "util/conversions.h"
#include "windows/FrmQuickSetUP.h"
#include "windows/FrmSummaryExport.h"
#include "windows/start_windows.h"

namespace core {

namespace {

/// Time for the accounting package and the report tools to settle between two days.
constexpr int kSettleMs = 5000;
constexpr int kTypeMismatch = 13;

void runSalesReport(const std::string& fromDate, const std::string& toDate) {
    SyncShell(
        platform::files().programFolder() +
        "\\reports.exe /AUTORUN=A /OUTPUT=A /|FROMDATE=" + fromDate + "|TODATE=" + toDate
    );
}

void runPurchaseReport(const std::string& fromDate, const std::string& toDate) {
    SyncShell(
        platform::files().programFolder() + "\\POSummaryRpt.exe |START=" + fromDate +
        " |END=" + toDate + " |STORE=" + gsStoreNumber + "|EXPORT=Y"
    );
}

/// Takes the name of a tool's file when the file is there. Kept: the name ends in a blank, and the
/// name of an earlier day stays when there is none.
/// @return false when there is no such file.
bool takeFile(std::string& fileName, const std::string& stem, const std::string& lastDate) {
    const std::string name =
        gDataPath.DataPath + "\\export\\" + stem + dayDigits(lastDate) + ".txt ";
    if (gfbFile_Exists(name) == kNo) {
        return false;
    }
    fileName = name;
    return true;
}

/// Shows the window that posts, when there is something to post.
void postFile(const std::string& fileName) {
    if (util::aboveBlank(fileName)) {
        FrmSummaryExport window;
        platform::desktop().showModal(window);
    }
}

[[noreturn]] void endRun() {
    EndSessionCloseConnection();
    platform::desktop().pendingEvents();
    gpApp_end();
}

/// Kept: purchase orders without a sales file are not posted here, other than in the daily run.
[[noreturn]] void runRange() {
    runSalesReport(gsFromDate, gsToDate);
    if (!takeFile(gsSummaryFile, "Summary", gsToDate)) {
        showMessage("No sales data exported");
    }
    if (gbPostPOTotals != kNo) {
        runPurchaseReport(gsFromDate, gsToDate);
        takeFile(gsPOSummaryFile, "POSummary", gsToDate);
    }
    postFile(gsSummaryFile);
    gpSummary_Setup_writing("D");
    endRun();
}

/// One day, `gsFromDate`, of the daily run.
void runDay() {
    runSalesReport(gsFromDate, gsFromDate);
    takeFile(gsSummaryFile, "Summary", gsFromDate);
    if (gbPostPOTotals == kNo) {
        postFile(gsSummaryFile);
        return;
    }
    runPurchaseReport(gsFromDate, gsFromDate);
    takeFile(gsPOSummaryFile, "POSummary", gsFromDate);
    // Kept: with purchase orders, their file alone decides whether the day is posted.
    postFile(gsPOSummaryFile);
}

[[noreturn]] void runDaily() {
    const auto firstDay = dateOf(gsFromDate);
    if (!firstDay) {
        throw util::BasicError::of(kTypeMismatch);
    }
    for (int offset = 0;; ++offset) {
        gsFromDate = dateText(*firstDay, offset);
        if (util::compareBinary(dayDigits(gsFromDate), dayDigits(gsToDate)) > 0) {
            endRun();
        }
        runDay();
        platform::systemClock().sleep(kSettleMs);
        // Kept: the last day of the range, so that a run broken off counts as done to its end.
        gpSummary_Setup_writing("D");
    }
}

}  // namespace

void runSummaryMode() {
    gfbSummary_Setup_reading();
    windows::closeLoadingWindow();
    {
        FrmQuickSetUP window;
        platform::desktop().showModal(window);
    }
    if (gbPostDailyTotals != kNo) {
        runDaily();
    }
    runRange();
}

}  // namespace core
