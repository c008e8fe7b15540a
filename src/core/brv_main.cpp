#include "core/brv_main.h"

#include "config/clsDataPath.h"
#include "config/nuvDataPath_Ops.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "core/summary_run.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Common.h"
#include "export/record_exports.h"
#include "export/run_record.h"
#include "export/sale_state.h"
#include "platform/ports/platform.h"
#include "qb/smQB_Utilities.h"
#include "security/sm_Encryption_Ops.h"
#include "util/conversions.h"
#include "windows/frmSM_DATAPATH2.h"
#include "windows/frmSetup.h"
#include "windows/start_windows.h"

#include <exception>

namespace {

constexpr char kSummaryMode[] = "SE";

/// The operator's main window, to its end.
void runSetupMode() {
    frmSetup window;
    platform::desktop().showModal(window);
    platform::desktop().pendingEvents();
    gpApp_end();
}

void start() {
    gbPOExportArmed = kYes;
    gbSalesExportArmed = kYes;
    frmBRVSplash splash;
    FrmLoading loading;
    platform::desktop().showModeless(splash);
    platform::desktop().pendingEvents();
    platform::desktop().showModeless(loading);

    windows::offerDataPathWindow();
    security::installPasswordCipher();
    LegacyBool ready = gfbNUV_DataPath_open(kYes, 0, "");
    gsDataPath = gDataPath.DataPath;
    const std::string programFolder = platform::files().programFolder();
    if (ready != kNo) {
        ready = db_fbInterface_open();
    }
    gsHelpFile = programFolder + "\\BRV.chm";
    if (ready == kNo) {
        gpApp_end();  // what failed has said so itself
    }
    const LegacyBool opened = db_fbAllTables_open();
    core::startTrace("db_fbAllTables_open=" + util::booleanWord(opened != kNo));
    // A failed open stands in the trace only: the table's first use fails in its own way.
    if (gCommon.Accounting.view() == kSummaryMode) {
        core::runSummaryMode();
    }
    runSetupMode();
}

void showStartFailure(const std::string& description) {
    platform::desktop().messageBox(
        description, "Error Startup Main", platform::BoxButtons::ok, platform::BoxIcon::exclamation
    );
}

}  // namespace

void gpMain_start() {
    try {
        start();
    } catch (const platform::PlatformError& error) {
        showStartFailure(error.description());
    } catch (const std::exception& error) {
        showStartFailure(error.what());
    }
}

namespace core {

void resetLink() {
    resetOp();
    resetLinkSetup();
    config::resetConfig();
    db::resetEngine();
    qb::resetGateway();
    exporting::resetSaleState();
    exporting::resetRunRecords();
    exporting::resetRecordExports();
}

}  // namespace core
