#include "windows/FrmQuickSetUP.h"

#include "config/clsINI_Services.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "core/summary_setup.h"
#include "export/list_exports.h"
#include "platform/ports/platform.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "windows/account_table.h"
#include "windows/company_accounts.h"
#include "windows/log_commands.h"

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr char kGrid[] = "fgrdList";
constexpr char kList[] = "cboAcct";
constexpr char kFileDialog[] = "CommonDialog1";
constexpr char kCompanyFiles[] = "QB Files (*.qbw)|*.qbw|All Files (*.*)|*.*";
constexpr int kAccountColumn = 1;

constexpr ui::Control kControls[] = {
    {Kind::label, "Label5", kNoIndex, "Quick Books Summary Export"},
    {Kind::label, "Label2", kNoIndex, "Export Date:"},
    {Kind::datePicker, "DTPicker1", 0, ""},
    {Kind::datePicker, "DTPicker1", 1, ""},
    {Kind::label, "LblExported", kNoIndex, "Last Date Posted: "},
    {Kind::textBox, "TxtPath", kNoIndex, "", ui::kLocked},
    {Kind::grid, kGrid, kNoIndex, ""},
    {Kind::dropDown, kList, kNoIndex, "", ui::kHidden},
    {Kind::button, "cmdAccept", kNoIndex, "Accept"},
    {Kind::button, "cmdExit", kNoIndex, "Esc/Exit"},
    {Kind::button, "MyButton1", kNoIndex, "Export Vendors"},
    {Kind::button, "CmdViewLog", kNoIndex, "View Log", ui::kDisabled},
    {Kind::button, "cmdDeleteLog", kNoIndex, "Delete Log", ui::kDisabled},
    {Kind::label, "LblStatus", kNoIndex, "Status"},
    {Kind::fileDialog, kFileDialog, kNoIndex, "Open", ui::kHidden},
};

constexpr ui::Key kKeys[] = {
    {"F2", "CmdViewLog"},
    {"Esc", "cmdExit"},
};

/// The day before the first day to post; nothing when there is no first day.
std::string lastDayText() {
    const auto firstDay = core::dateOf(gsFromDate);
    return firstDay ? core::dateText(*firstDay, -1) : std::string();
}

bool isToday(const std::string& text) {
    const auto date = core::dateOf(text);
    return date && date->day == platform::systemClock().now().day;
}

bool confirmToday() {
    const auto answer = platform::desktop().messageBox(
        "WARNING:Posting data for today must be done after close of business.\r\n"
        "Posting a partial day will result in inaccurate daily totals\r\n"
        " Post data for Today?",
        "Please Confirm Date",
        platform::BoxButtons::yesNo,
        platform::BoxIcon::information
    );
    return answer == platform::BoxAnswer::yes;
}

}  // namespace

FrmQuickSetUP::FrmQuickSetUP() : Form("FrmQuickSetUP", "Setup For Summary Export", kControls) {}

std::span<const ui::Key> FrmQuickSetUP::keys() const {
    return kKeys;
}

bool FrmQuickSetUP::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<FrmQuickSetUP> kHandlers[] = {
        {"FrmQuickSetUP", Signal::load, &FrmQuickSetUP::onLoad},
        {"FrmQuickSetUP", Signal::unload, &FrmQuickSetUP::onUnload},
        {"DTPicker1", Signal::change, &FrmQuickSetUP::onPickDate},
        {"TxtPath", Signal::click, &FrmQuickSetUP::onPath},
        {kGrid, Signal::click, &FrmQuickSetUP::onGridClick},
        {kList, Signal::select, &FrmQuickSetUP::onPickAccount},
        {kList, Signal::leave, &FrmQuickSetUP::onPickAccount},
        {"cmdAccept", Signal::click, &FrmQuickSetUP::onAccept},
        {"cmdExit", Signal::click, &FrmQuickSetUP::onExit},
        {"MyButton1", Signal::click, &FrmQuickSetUP::onExportVendors},
        {"CmdViewLog", Signal::click, &FrmQuickSetUP::perform<windows::viewLog>},
        {"cmdDeleteLog", Signal::click, &FrmQuickSetUP::onDeleteLog},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); },
        [](std::int32_t, const std::string& description) { core::showMessage(description); }
    );
    return handled;
}

void FrmQuickSetUP::onLoad() {
    days_.show();
    windows::setLogButtons(*this);
    buildGrid();
    setCaption("LblExported", control("LblExported").caption + lastDayText());
    if (util::trim(gsQBFilePath).empty()) {
        choosePath();
    } else {
        connect();
        setText("TxtPath", gsQBFilePath);
    }
}

void FrmQuickSetUP::onUnload() {
    platform::desktop().setBusyCursor(false);
    if (!accepted_) {
        onExit();
    }
}

void FrmQuickSetUP::onPickDate() {
    days_.normalise();
}

void FrmQuickSetUP::buildGrid() {
    windows::buildAccountTable();
    core::openSummarySettings();
    for (NuvAccountRow& row : goNuvAcct) {
        row.QBAccount = gIni.getvalue(core::kSummarySection, util::trim(row.AcctDesc), "");
    }
    const auto highest = static_cast<std::int64_t>(goNuvAcct.size()) - 1;
    gpBRV_Trace_writing("UBound(goNuvAcct)=" + util::textOf(highest));
    for (const NuvAccountRow& row : goNuvAcct) {
        gpBRV_Trace_writing("Line = " + row.AcctDesc + "\t" + row.QBAccount);
    }
    windows::fillAccountGrid(*this);
    gpBRV_Trace_writing("Done");
}

void FrmQuickSetUP::connect() {
    gpBRV_Trace_writing("Attempting gfbOpenConnectionBeginSession=TRUE");
    if (gbQBReady != kNo) {
        windows::reconnectAccounts(*this);
    } else {
        windows::connectAccounts(*this);
    }
}

void FrmQuickSetUP::onPath() {
    choosePath();
}

void FrmQuickSetUP::choosePath() {
    const std::string file =
        platform::desktop().chooseFile(control(kFileDialog).caption, gsQBFilePath, kCompanyFiles);
    if (file.empty()) {
        return;
    }
    setText(kFileDialog, file);
    gsQBFilePath = file;
    setText("TxtPath", file);
    core::openSummarySettings();
    gIni.WriteData(core::kSummarySection, "QUICKBOOKS path", file);
    connect();
}

/// Kept: without accounts the first click only offers names to pick from, so that the mapping can
/// be made without a session; the next one opens the list.
void FrmQuickSetUP::onGridClick() {
    if (raisedRow() < 1 || raisedColumn() != kAccountColumn) {
        return;
    }
    ui::ControlState& list = control(kList);
    if (list.items.empty()) {
        list.items = {"other1", "other2", "other3"};
        notify(list);
        return;
    }
    onPickAccount();  // of the row before, when the list still stands there
    pickRow_ = raisedRow();
    setText(kList, control(kGrid).rows.at(static_cast<std::size_t>(pickRow_)).at(kAccountColumn));
    setVisible(kList, true);
    setFocus(kList);
}

void FrmQuickSetUP::onPickAccount() {
    const ui::ControlState& list = control(kList);
    if (!list.visible) {
        return;
    }
    const std::string picked = list.text;
    windows::setRowAccount(*this, pickRow_, picked, picked);
    setVisible(kList, false);
}

void FrmQuickSetUP::onAccept() {
    days_.accept();
    // Kept: the last day counts as posted from here on, also when the question is answered No.
    gpSummary_Setup_writing("D");
    if (isToday(gsToDate) && !confirmToday()) {
        return;
    }
    gpSummary_Setup_writing("P");
    lastSale_ = windows::lastPostedSale();
    accepted_ = true;
    close();
}

void FrmQuickSetUP::onExit() {
    core::openSummarySettings();
    for (const NuvAccountRow& row : goNuvAcct) {
        gIni.WriteData(core::kSummarySection, util::trim(row.AcctDesc), row.QBAccount);
    }
    EndSessionCloseConnection();
    close();
    gpApp_end();
}

void FrmQuickSetUP::onExportVendors() {
    gpVendors_export(name());
    windows::setLogButtons(*this);
}

void FrmQuickSetUP::onDeleteLog() {
    windows::deleteLog(*this);
}
