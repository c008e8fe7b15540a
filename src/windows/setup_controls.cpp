#include "windows/setup_controls.h"

#include <vector>

namespace windows {

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr unsigned kOff = ui::kDisabled;

constexpr ui::Control kControls[] = {
    {Kind::menuItem, "mnuFile", kNoIndex, "File"},
    {Kind::menuItem, "mnuUnlock", kNoIndex, "Unlock Last Post", ui::kPlain, "mnuFile"},
    {Kind::menuItem, "mnuExit", kNoIndex, "Exit", ui::kPlain, "mnuFile"},

    {Kind::label, "lblPath", kNoIndex, "Program Path"},
    {Kind::textBox, "TxtPath", kNoIndex, ""},
    {Kind::button, "cmdFind", kNoIndex, ". . ."},

    {Kind::grid, "fgrdList", kNoIndex, ""},
    {Kind::dropDown, "cboAcct", kNoIndex, "", ui::kHidden},

    {Kind::frame, "fraAcctPay", kNoIndex, ""},
    {Kind::checkBox, "CkUseAP", kNoIndex, "Use Accounts Payable", ui::kPlain, "fraAcctPay"},
    {Kind::textBox, "txtAccount", 1, "Vendor (Accounts Payable)", ui::kPlain, "fraAcctPay"},
    {Kind::textBox, "txtAccount", 2, "Tax Payee", ui::kPlain, "fraAcctPay"},

    {Kind::frame, "fraAcctRec", kNoIndex, ""},
    {Kind::label, "lblStore", kNoIndex, "Store", ui::kPlain, "fraAcctRec"},
    {Kind::dropDown, "cboStore", kNoIndex, "", ui::kPlain, "fraAcctRec"},
    {Kind::checkBox, "chkUseAR", kNoIndex, "Use Accounts Receivable", ui::kPlain, "fraAcctRec"},
    {Kind::label, "lblNet", kNoIndex, "Terms: Net      30    Days", ui::kPlain, "fraAcctRec"},
    {Kind::textBox, "txtNet", kNoIndex, "", ui::kPlain, "fraAcctRec"},

    {Kind::frame, "fraLastExport", kNoIndex, ""},
    {Kind::textBox,
     "txtLastPostedDate",
     kNoIndex,
     "Last Exported Date",
     ui::kLocked,
     "fraLastExport"},
    {Kind::textBox,
     "txtLastPostedInvoice",
     kNoIndex,
     "Last Exported Invoice",
     ui::kLocked,
     "fraLastExport"},
    {Kind::textBox,
     "txtLastPostedPO",
     kNoIndex,
     "Last Exported PO Date",
     ui::kLocked,
     "fraLastExport"},
    {Kind::textBox, "txtToDate", kNoIndex, "To Date (YYYYMMDD)", ui::kPlain, "fraLastExport"},

    {Kind::button, "cmdRun", 0, "First Time"},
    {Kind::button, "cmdRun", 1, "Daily Export"},
    {Kind::button, "cmdRun", 2, "Manual"},

    {Kind::frame, "SSFrame2", kNoIndex, "First Time", ui::kHidden},
    {Kind::checkBox, "chkExport", 5, "Sales Codes", ui::kPlain, "SSFrame2"},
    {Kind::checkBox, "chkExport", 6, "Tenders", ui::kPlain, "SSFrame2"},
    {Kind::checkBox, "chkExport", 2, "Vendors", ui::kPlain, "SSFrame2"},
    {Kind::checkBox, "chkExport", 1, "Names", ui::kPlain, "SSFrame2"},
    {Kind::checkBox, "chkExport", 0, "Inventory", ui::kPlain, "SSFrame2"},

    {Kind::frame, "SSFrame1", kNoIndex, "Daily Export"},
    {Kind::checkBox, "chkExport", 4, "PO History", ui::kPlain, "SSFrame1"},
    {Kind::checkBox, "chkExport", 3, "Sales", ui::kPlain, "SSFrame1"},
    {Kind::frame, "FraChoice", kNoIndex, "Selection Mode", ui::kPlain, "SSFrame1"},
    {Kind::optionButton, "Option1", 0, "Details", ui::kChecked, "FraChoice"},
    {Kind::optionButton, "Option1", 1, "Summary(CNC)", ui::kPlain, "FraChoice"},

    {Kind::frame, "SSFrame3", kNoIndex, "Manual", ui::kHidden},
    {Kind::checkBox, "chkPOHisManual", kNoIndex, "POHist", ui::kPlain, "SSFrame3"},
    {Kind::checkBox, "chktenderManual", kNoIndex, "Tenders", ui::kPlain, "SSFrame3"},
    {Kind::checkBox, "chkVendorManual", kNoIndex, "Vendor", ui::kPlain, "SSFrame3"},
    {Kind::checkBox, "chkInvtManual", kNoIndex, "Inventory", ui::kPlain, "SSFrame3"},
    {Kind::checkBox, "chkSalesCodeManual", kNoIndex, "SalesCode", ui::kPlain, "SSFrame3"},
    {Kind::checkBox, "chkNameManual", kNoIndex, "Names", ui::kPlain, "SSFrame3"},
    {Kind::checkBox, "chkManual", kNoIndex, "Sales", ui::kPlain, "SSFrame3"},

    // The input of a manual export stands beside the pages: it stays when another page comes up.
    {Kind::frame, "FrameSales", kNoIndex, "Sales Manual", ui::kHidden},
    {Kind::textBox, "txtDateManual", kNoIndex, "Date (YYYYMMDD)", ui::kPlain, "FrameSales"},
    {Kind::textBox, "txtInvoiceManual", kNoIndex, "Invoice", ui::kPlain, "FrameSales"},
    {Kind::frame, "FramePOHis", kNoIndex, "POHistory Manual", ui::kHidden},
    {Kind::textBox, "txtPOHisDate", kNoIndex, "Date (YYYYMMDD)", ui::kPlain, "FramePOHis"},
    {Kind::textBox, "txtPOHisPONum", kNoIndex, "PO #", ui::kPlain, "FramePOHis"},
    {Kind::frame, "FrameTender", kNoIndex, "Tender Manual", ui::kHidden},
    {Kind::textBox, "txtTenderManual", kNoIndex, "Tender ID", ui::kPlain, "FrameTender"},
    {Kind::frame, "FrameSalescode", kNoIndex, "SalesCode Manual", ui::kHidden},
    {Kind::textBox, "txtSalescodeManual", kNoIndex, "Scode", ui::kPlain, "FrameSalescode"},
    {Kind::frame, "FrameName", kNoIndex, "Names Manual", ui::kHidden},
    {Kind::textBox, "txtNameManual", kNoIndex, "ARCode", ui::kPlain, "FrameName"},
    {Kind::frame, "FrameVendor", kNoIndex, "Vendor Manual", ui::kHidden},
    {Kind::textBox, "txtVendorManual", kNoIndex, "APCode", ui::kPlain, "FrameVendor"},
    {Kind::frame, "FrameInventory", kNoIndex, "Inventory Manual", ui::kHidden},
    {Kind::textBox, "txtInventoryManual", kNoIndex, "", ui::kPlain, "FrameInventory"},

    {Kind::button, "Cmdexport", kNoIndex, "Export"},
    {Kind::button, "CmdManual", kNoIndex, "Manual Export", ui::kHidden},
    {Kind::button, "cmdStop", kNoIndex, "Stop", kOff},
    {Kind::button, "CmdInitialized", kNoIndex, "Import QB Variable"},
    {Kind::button, "CmdViewLog", kNoIndex, "View Log", kOff},
    {Kind::button, "cmdDeleteLog", kNoIndex, "Delete Log", kOff},
    {Kind::button, "cmdHelp", kNoIndex, "F1 Help"},
    {Kind::button, "cmdAcceptCancel", 0, "Save Setting"},
    {Kind::button, "cmdAcceptCancel", 1, "Exit"},
    {Kind::label, "LblStatus", kNoIndex, "Status"},
};

/// Columns of the tax fields: one control array each.
constexpr ui::Control kTaxFields[] = {
    {Kind::textBox, "txtAR_SalesAccount", 0, "Income Account", ui::kPlain, "fraAcctRec"},
    {Kind::textBox, "txtAR_Sales_TaxID", 0, "Sales Tax ID", ui::kPlain, "fraAcctRec"},
    {Kind::textBox, "txtTaxRate", 0, "Tax Rate %", ui::kLocked, "fraAcctRec"},
};

constexpr ui::Key kKeys[] = {
    {"F1", "cmdHelp"},
    {"F2", "CmdViewLog"},
    {"F7", "cmdStop"},
    {"F8", "Cmdexport"},
    {"F8", "CmdManual"},
    {"F10", "cmdAcceptCancel", 0},
    {"Esc", "cmdAcceptCancel", 1},
};

/// The table above with the tax fields row by row behind the net terms.
std::vector<ui::Control> allControls() {
    std::vector<ui::Control> controls;
    for (const ui::Control& control : kControls) {
        controls.push_back(control);
        if (std::string_view(control.name) != "txtNet") {
            continue;
        }
        for (int row = 0; row < kTaxFieldRows; ++row) {
            for (ui::Control field : kTaxFields) {
                field.index = row;
                controls.push_back(field);
            }
        }
    }
    return controls;
}

}  // namespace

std::span<const ui::Control> setupControls() {
    static const std::vector<ui::Control> controls = allControls();
    return controls;
}

std::span<const ui::Key> setupKeys() {
    return kKeys;
}

}  // namespace windows
