#include "core/brv_op.h"
#include "core/link_setup.h"
#include "db/nuvDBSM_Common.h"
#include "export/export_run.h"
#include "export/posting_items.h"
#include "ui/status.h"
#include "util/conversions.h"
#include "util/sm_date_time.h"
#include "windows/at_exit.h"
#include "windows/frmSetup.h"
#include "windows/log_commands.h"

#include <algorithm>
#include <iterator>

/// The choice of exports, and the buttons that run them.

namespace {

using windows::ExportEngine;
using windows::ExportIndex;

constexpr char kBoxes[] = "chkExport";
constexpr int kSaveButton = 0;
constexpr int kSummarySelection = 1;
constexpr const char* kExportButtons[] = {"Cmdexport", "CmdManual"};
constexpr char kImportButton[] = "CmdInitialized";

/// Boxes that a daily export excludes.
constexpr ExportIndex kListExports[] = {
    windows::exportInventory,
    windows::exportNames,
    windows::exportVendors,
    windows::exportSalesCodes,
    windows::exportTenders,
};

struct ManualRow {
    ExportIndex index;
    const char* box;
    const char* frame;  ///< holds the input of this export
};
constexpr ManualRow kManualRows[] = {
    {windows::exportInventory, "chkInvtManual", "FrameInventory"},
    {windows::exportNames, "chkNameManual", "FrameName"},
    {windows::exportVendors, "chkVendorManual", "FrameVendor"},
    {windows::exportSales, "chkManual", "FrameSales"},
    {windows::exportPOHistory, "chkPOHisManual", "FramePOHis"},
    {windows::exportSalesCodes, "chkSalesCodeManual", "FrameSalescode"},
    {windows::exportTenders, "chktenderManual", "FrameTender"},
};

}  // namespace

void frmSetup::onChkExport() {
    if (!isOn(kBoxes, windows::exportSales) && !isOn(kBoxes, windows::exportPOHistory)) {
        return;
    }
    // Kept: whichever box was clicked, a daily export takes the list exports away.
    for (const ExportIndex index : kListExports) {
        setOn(kBoxes, false, index);
    }
    setVisible("CmdManual", false);
    setVisible("Cmdexport", true);
}

template <ExportIndex Index>
void frmSetup::onManualBox() {
    manualBoxClicked(Index);
}
template void frmSetup::onManualBox<windows::exportInventory>();
template void frmSetup::onManualBox<windows::exportNames>();
template void frmSetup::onManualBox<windows::exportVendors>();
template void frmSetup::onManualBox<windows::exportSales>();
template void frmSetup::onManualBox<windows::exportPOHistory>();
template void frmSetup::onManualBox<windows::exportSalesCodes>();
template void frmSetup::onManualBox<windows::exportTenders>();

void frmSetup::manualBoxClicked(ExportIndex index) {
    const ManualRow& clicked = kManualRows[index];
    if (isOn(clicked.box)) {
        setVisible("Cmdexport", false);
        setVisible("CmdManual", true);
        for (const ManualRow& row : kManualRows) {
            const bool isClicked = row.index == index;
            setVisible(row.frame, isClicked);
            setOn(kBoxes, isClicked, row.index);
            setOn(row.box, isClicked);
        }
        return;
    }
    const auto isOnRow = [&](const ManualRow& row) { return isOn(row.box); };
    if (std::none_of(std::begin(kManualRows), std::end(kManualRows), isOnRow)) {
        setVisible("Cmdexport", true);
        setVisible("CmdManual", false);
        setOn(kBoxes, false, index);
        setVisible(clicked.frame, false);
    }
}

/// Takes the buttons that start something away while a run lasts: pending events are served, and a
/// second start must not get in.
void frmSetup::beginRun() {
    importDone_ = !control(kImportButton).enabled;
    setEnabled(kImportButton, false);
    for (const char* button : kExportButtons) {
        setEnabled(button, false);
    }
    gbStopRequested = kNo;
    setEnabled("cmdStop", true);
}

void frmSetup::endRun() {
    setEnabled("cmdStop", false);
    for (const char* button : kExportButtons) {
        setEnabled(button, true);
    }
    setEnabled(kImportButton, !importDone_);
    gbExportInProgress = kNo;
    windows::setLogButtons(*this);
}

void frmSetup::runAutomatic(const ExportEngine& engine) {
    if (engine.index == windows::exportSales) {
        if (!newRecords_.post()) {
            return;
        }
        if (isOn("Option1", kSummarySelection)) {
            gbSalesSummaryMode = kYes;
        }
    }
    if (engine.index == windows::exportPOHistory) {
        gbExportInProgress = kYes;
    }
    windows::runEngine(engine, engine.automatic);
}

void frmSetup::onCmdexport() {
    bool any = false;
    {
        beginRun();
        const windows::AtExit end([this] { endRun(); });
        // Kept: never enabled again. The older marks in the fields must not overwrite those that
        // the export writes.
        setEnabled("cmdAcceptCancel", false, kSaveButton);
        newRecords_.find();
        for (const ExportEngine& engine : windows::exportEngines()) {
            gbStopRequested = kNo;
            if (isOn(kBoxes, engine.index)) {
                any = true;
                runAutomatic(engine);
            }
        }
    }
    if (!any) {
        core::showMessage("Please select item to export ");
    }
}

/// Takes invoice and date of a manual sales export as its start. @return false for a date that is
/// none (told in a box).
bool frmSetup::takeManualSale() {
    gsLastInvoice = util::format(util::trim(text("txtInvoiceManual")), "0000000");
    const std::string& typed = text("txtDateManual");
    if (typed.empty()) {
        return true;
    }
    const std::string shown = gfsDate_display(typed, gCommon.USEurope.str());
    if (exporting::storedDate(shown) == shown) {
        core::showMessage("Invaild date. please reenter in 'yyyymmdd' format'");
        return false;
    }
    gsLastInvoiceDate = shown;
    return true;
}

void frmSetup::onCmdManual() {
    bool any = false;
    {
        beginRun();
        const windows::AtExit end([this, invoice = gsLastInvoice, date = gsLastInvoiceDate] {
            gsLastInvoice = invoice;  // the marks of the automatic export
            gsLastInvoiceDate = date;
            endRun();
        });
        if (isOn("chkManual") && !takeManualSale()) {
            return;
        }
        for (const ExportEngine& engine : windows::exportEngines()) {
            if (isOn(kBoxes, engine.index)) {
                any = true;
                windows::runEngine(engine, engine.manual);
            }
        }
    }
    if (!any) {
        core::showMessage("Please select item to export!!!");
    }
}

void frmSetup::onCmdInitialized() {
    setEnabled(kImportButton, false);
    ui::showStatus(name(), "Setup and import QB variable...Please Wait");
    {
        const auto enableExports = [this](bool enabled) {
            for (const char* button : kExportButtons) {
                setEnabled(button, enabled);
            }
        };
        enableExports(false);
        const windows::AtExit enable([&] { enableExports(true); });
        gpPostingItems_setup();
        ui::showStatus(name(), "QB is ready to import now");
    }
    ui::showStatus(name(), "Ready");
}
