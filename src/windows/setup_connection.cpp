#include "core/brv_op.h"
#include "core/run_log.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_POHistory.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "export/record_exports.h"
#include "platform/ports/platform.h"
#include "qb/clsQBAccount.h"
#include "qb/smQB_Utilities.h"
#include "ui/status.h"
#include "util/conversions.h"
#include "windows/at_exit.h"
#include "windows/frmSetup.h"

/// The company file: finding it, opening it, reading its accounts.

namespace {

constexpr char kExtension[] = ".QBW";

bool endsInCompanyExtension(const std::string& file) {
    return util::upper(file).ends_with(kExtension);
}

/// The folder of a file; "C:\" for no file.
std::string startFolder(const std::string& file) {
    const std::size_t slash = file.find_last_of("\\/");
    if (!util::aboveBlank(file) || slash == std::string::npos) {
        return "C:\\";
    }
    return file.substr(0, slash);
}

}  // namespace

void frmSetup::connect() {
    platform::desktop().setBusyCursor(true);
    const windows::AtExit normalCursor([] { platform::desktop().setBusyCursor(false); });
    std::string appName;
    if (gfbOpenConnectionBeginSession(appName) == kNo) {
        return;
    }
    gpBRV_Trace_writing("gfbOpenConnectionBeginSession=TRUE");
    requestMsgSet->ClearRequests();
    gpBRV_Trace_writing("requestMsgSet.ClearRequests=TRUE");
    requestMsgSet->setOnError(platform::OnError::continueOn);
    gbQBReady = kYes;
    const LegacyBool asked = gfbAccountQuery_requested();
    gpBRV_Trace_writing("gfbAccountQuery_requested=" + util::booleanWord(asked != kNo));
    gpAccountQuery_populated();
    gpBRV_Trace_writing("gpAccountQuery_populated");
    mpCboQBAccount_populate();
    gpBRV_Trace_writing("mpCboQBAccount_populated");
    qb::querySalesReps();
}

void frmSetup::mpQBFile_reconnect() {
    ui::showStatus(name(), "Please wait while opening QuickBooks file...");
    EndSessionCloseConnection();
    // What was known of the other file does not hold for this one.
    exporting::resetRecordExports();
    gaQBAccounts.clear();
    mpCboQBAccount_populate();
    connect();
    ui::showStatus(name(), "Ready");
}

void frmSetup::onCmdFind() {
    std::string file = platform::desktop().chooseFile(
        "Select " + control("lblPath").caption, startFolder(gsQBFilePath), "QB Files (*.qbw)|*.qbw"
    );
    if (file.empty()) {
        return;
    }
    if (!endsInCompanyExtension(file)) {
        file += ".qbw";
    }
    gsQBFilePath = file;
    setText("TxtPath", file);
    mpQBFile_reconnect();
}

void frmSetup::onLeavePath() {
    const std::string file = text("TxtPath");
    if (endsInCompanyExtension(file) && file != gsQBFilePath &&
        platform::files().fileExists(file)) {
        gsQBFilePath = file;
        mpQBFile_reconnect();
    }
}

void frmSetup::onCboStore() {
    gbPOExportArmed = kYes;
    gbSalesExportArmed = kYes;
    gsStoreNumber = util::trim(text("cboStore"));
    db::bindInventory();
    db::bindSalesHead();
    db::bindSalesItem();
    db::bindPOHistory();
    mpQBFile_reconnect();  // ends the session of the store before
}
