#include "windows/FrmSummaryExport.h"

#include "core/brv_op.h"
#include "core/summary_setup.h"
#include "export/summary_export.h"
#include "platform/ports/platform.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "windows/frmSMFILE_PATH.h"

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr ui::Control kControls[] = {
    {Kind::label, "Label1", kNoIndex, "Quick Books Location:"},
    {Kind::textBox, "TxtPath", kNoIndex, "", ui::kLocked},
    {Kind::label, "LblStatus", kNoIndex, "Status"},
    {Kind::button, "Cmdexport", kNoIndex, "Exit"},
};

constexpr ui::Key kKeys[] = {{"Esc", "Cmdexport"}};

}  // namespace

FrmSummaryExport::FrmSummaryExport()
    : Form("FrmSummaryExport", "Exporting to Quickbooks", kControls) {}

std::span<const ui::Key> FrmSummaryExport::keys() const {
    return kKeys;
}

bool FrmSummaryExport::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<FrmSummaryExport> kHandlers[] = {
        {"FrmSummaryExport", Signal::load, &FrmSummaryExport::onLoad},
        {"FrmSummaryExport", Signal::activate, &FrmSummaryExport::onActivate},
        {"Cmdexport", Signal::click, &FrmSummaryExport::onExit},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); },
        [](std::int32_t, const std::string& description) { core::showMessage(description); }
    );
    return handled;
}

void FrmSummaryExport::onLoad() {
    if (gsQBFilePath.empty()) {
        choosePath();
    }
    setText("TxtPath", gsQBFilePath);
}

void FrmSummaryExport::choosePath() {
    gsQBFilePath = windows::chooseCompanyFile(control("Label1").caption, "C:\\").value_or("");
    gpSummary_Setup_writing("P");
}

void FrmSummaryExport::onActivate() {
    if (activated_) {
        return;
    }
    activated_ = true;
    std::string appName;
    if (gbQBReady == kNo && gfbOpenConnectionBeginSession(appName) != kNo) {
        gbQBReady = kYes;
    }
    if (gfbSummaryFile_post() == kNo) {
        return;  // the last text of the posting says why
    }
    gpSummary_Setup_writing("D");
    setVisible("TxtPath", false);
    setVisible("Label1", false);
    setCaption("LblStatus", "Export Complete");
}

void FrmSummaryExport::onExit() {
    close();
}
