#include "windows/frmSetup.h"

#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/sm_help_ops.h"
#include "platform/ports/platform.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "windows/log_commands.h"
#include "windows/setup_controls.h"
#include "windows/start_windows.h"

namespace {

constexpr int kDailyPage = 1;
constexpr int kSaveButton = 0;

/// Frames of the pages "First Time", "Daily Export" and "Manual".
constexpr const char* kPages[] = {"SSFrame2", "SSFrame1", "SSFrame3"};

/// The close box; the Exit button ends the program before it comes to this.
void endSession() {
    if (gbQBReady != kNo) {
        EndSessionCloseConnection();
    }
}

}  // namespace

frmSetup::frmSetup() : Form("frmSetup", core::kApplicationTitle, windows::setupControls()) {}

std::span<const ui::Key> frmSetup::keys() const {
    return windows::setupKeys();
}

bool frmSetup::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<frmSetup> kHandlers[] = {
        {"frmSetup", Signal::load, &frmSetup::onLoad},
        {"frmSetup", Signal::activate, &frmSetup::onActivate},
        {"frmSetup", Signal::unload, &frmSetup::perform<endSession>},
        {"cmdRun", Signal::click, &frmSetup::onCmdRun},
        {"chkExport", Signal::click, &frmSetup::onChkExport},
        {"chkInvtManual", Signal::click, &frmSetup::onManualBox<windows::exportInventory>},
        {"chkNameManual", Signal::click, &frmSetup::onManualBox<windows::exportNames>},
        {"chkVendorManual", Signal::click, &frmSetup::onManualBox<windows::exportVendors>},
        {"chkManual", Signal::click, &frmSetup::onManualBox<windows::exportSales>},
        {"chkPOHisManual", Signal::click, &frmSetup::onManualBox<windows::exportPOHistory>},
        {"chkSalesCodeManual", Signal::click, &frmSetup::onManualBox<windows::exportSalesCodes>},
        {"chktenderManual", Signal::click, &frmSetup::onManualBox<windows::exportTenders>},
        {"Cmdexport", Signal::click, &frmSetup::onCmdexport},
        {"CmdManual", Signal::click, &frmSetup::onCmdManual},
        {"cmdStop", Signal::click, &frmSetup::onCmdStop},
        {"CmdInitialized", Signal::click, &frmSetup::onCmdInitialized},
        {"CmdViewLog", Signal::click, &frmSetup::perform<windows::viewLog>},
        {"cmdDeleteLog", Signal::click, &frmSetup::onCmdDeleteLog},
        {"cmdHelp", Signal::click, &frmSetup::perform<gpHelp_guides_open>},
        {"cmdFind", Signal::click, &frmSetup::onCmdFind},
        {"TxtPath", Signal::leave, &frmSetup::onLeavePath},
        {"cboStore", Signal::select, &frmSetup::onCboStore},
        {"fgrdList", Signal::click, &frmSetup::onGridClick},
        {"txtAR_SalesAccount", Signal::enter, &frmSetup::onSalesAccount},
        {"txtAR_SalesAccount", Signal::click, &frmSetup::onSalesAccount},
        {"txtAccount", Signal::enter, &frmSetup::onAccount},
        {"txtAccount", Signal::click, &frmSetup::onAccount},
        {"cboAcct", Signal::select, &frmSetup::mpAccountPick_commit},
        {"cboAcct", Signal::leave, &frmSetup::mpAccountPick_commit},
        {"txtLastPostedInvoice", Signal::leave, &frmSetup::onLeaveInvoice},
        {"txtLastPostedDate", Signal::leave, &frmSetup::onLeaveInvoiceDate},
        {"txtLastPostedPO", Signal::leave, &frmSetup::onLeavePurchaseDate},
        {"cmdAcceptCancel", Signal::click, &frmSetup::onCmdAcceptCancel},
        {"mnuUnlock", Signal::click, &frmSetup::onMnuUnlock},
        {"mnuExit", Signal::click, &frmSetup::onMnuExit},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); },
        [](std::int32_t, const std::string& description) { core::showMessage(description); }
    );
    return handled;
}

void frmSetup::onLoad() {
    setText("lblStore", "");
    gbMultiStore = kNo;
    windows::setLogButtons(*this);
    mpDefaults_QuickBooks_set();
    if (util::trim(gsQBFilePath).empty()) {
        core::showMessage("Please enter QuickBooks file to open.");
    }
    if (util::aboveBlank(gsQBFilePath)) {
        connect();
    }
    hidePickList();
    windows::closeStartWindows();
}

void frmSetup::onActivate() {
    if (!activated_) {
        activated_ = true;
        showPage(kDailyPage);
    }
}

void frmSetup::onCmdRun() {
    showPage(raisedIndex());
}

void frmSetup::showPage(int page) {
    int number = 0;
    for (const char* frame : kPages) {
        setVisible(frame, number == page);
        ++number;
    }
}

void frmSetup::onCmdAcceptCancel() {
    if (raisedIndex() != kSaveButton) {
        onMnuExit();
        return;
    }
    setEnabled("cmdAcceptCancel", false, kSaveButton);
    mfbAccounts_Setup_writing();
}

void frmSetup::onMnuExit() {
    EndSessionCloseConnection();
    close();
    gpApp_end();
}

void frmSetup::onMnuUnlock() {
    for (const char* field : {"txtLastPostedDate", "txtLastPostedInvoice", "txtLastPostedPO"}) {
        setLocked(field, false);
    }
}

void frmSetup::onCmdStop() {
    gbStopRequested = kYes;
    platform::desktop().pendingEvents();
    windows::setLogButtons(*this);
}

void frmSetup::onCmdDeleteLog() {
    windows::deleteLog(*this);
}
