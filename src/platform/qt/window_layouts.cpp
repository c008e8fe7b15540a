#include "platform/qt/layout.h"
#include "util/conversions.h"

#include <algorithm>

/// The layouts of the link's windows: a new window is one table more.
namespace platform::layout {

namespace {

constexpr Line kSetup[] = {
    {"", "[file]"},
    {"", "[body]+"},
    {"", "[work]"},
    {"", "[commands]"},
    {"", "[status]"},

    {"file", "lblPath TxtPath* cmdFind"},

    {"body", "[accounts]*+ [taxes]*"},
    {"accounts", "fgrdList*+"},
    {"taxes", "fraAcctRec+"},
    {"taxes", "fraAcctPay"},
    {"fraAcctRec", "[terms]"},
    {"fraAcctRec", "[taxRows]"},
    {"terms", "chkUseAR ... lblNet~txtNet> ... lblStore cboStore?!"},
    {"taxRows", "^txtAR_SalesAccount(0)* ^txtAR_Sales_TaxID(0) ^txtTaxRate(0)>"},
    {"taxRows", "txtAR_SalesAccount(*)!* txtAR_Sales_TaxID(*)! txtTaxRate(*)!>"},
    {"fraAcctPay", "CkUseAP:2"},
    {"fraAcctPay", "txtAccount(1)*"},
    {"fraAcctPay", "txtAccount(2)*"},

    {"work", "[exports]*+ fraLastExport"},
    {"exports", "[pages]:2"},
    {"exports",
     "SSFrame2/SSFrame1/SSFrame3*+ "
     "FrameSales/FramePOHis/FrameTender/FrameSalescode/FrameName/FrameVendor/"
     "FrameInventory+"},
    {"pages", "cmdRun(0) cmdRun(1) cmdRun(2) ..."},
    {"SSFrame2", "chkExport(5) chkExport(6) ..."},
    {"SSFrame2", "chkExport(2) chkExport(1)"},
    {"SSFrame2", "chkExport(0)"},
    {"SSFrame1", "[daily] FraChoice ..."},
    {"daily", "chkExport(4)"},
    {"daily", "chkExport(3)"},
    {"FraChoice", "Option1(0)"},
    {"FraChoice", "Option1(1)"},
    {"SSFrame3", "chkPOHisManual chktenderManual chkVendorManual ..."},
    {"SSFrame3", "chkInvtManual chkSalesCodeManual chkNameManual"},
    {"SSFrame3", "chkManual"},
    {"FrameSales", "txtDateManual"},
    {"FrameSales", "txtInvoiceManual"},
    {"FramePOHis", "txtPOHisDate"},
    {"FramePOHis", "txtPOHisPONum"},
    {"FrameTender", "txtTenderManual"},
    {"FrameSalescode", "txtSalescodeManual"},
    {"FrameName", "txtNameManual"},
    {"FrameVendor", "txtVendorManual"},
    {"FrameInventory", "txtInventoryManual"},
    {"fraLastExport", "txtLastPostedDate>"},
    {"fraLastExport", "txtLastPostedInvoice>"},
    {"fraLastExport", "txtLastPostedPO>"},
    {"fraLastExport", "txtToDate>"},

    {"commands",
     "Cmdexport/CmdManual cmdStop ... CmdInitialized CmdViewLog cmdDeleteLog cmdHelp ... "
     "cmdAcceptCancel(0) cmdAcceptCancel(1)"},
    {"status", "LblStatus*"},
};
constexpr Title kSetupTitles[] = {
    {"accounts", "Accounts"},
    {"exports", "Export"},
    {"fraAcctRec", "Accounts receivable and taxes"},
    {"fraAcctPay", "Accounts payable"},
    {"fraLastExport", "Last export"},
};

constexpr Spoken kSetupNames[] = {
    {"cmdFind", ui::kNoIndex, "Browse for the company file"},
    {"fgrdList", ui::kNoIndex, "Accounts"},
    {"cboAcct", ui::kNoIndex, "QuickBooks account"},
    {"cboStore", ui::kNoIndex, "Store"},
    {"txtInventoryManual", ui::kNoIndex, "Item"},
};

constexpr Line kLoading[] = {{"", "lblLoading"}};

constexpr Line kQuickSetup[] = {
    {"", "Label5#"},
    {"", "[days]"},
    {"", "[file]"},
    {"", "[accounts]+"},
    {"", "[commands]"},
    {"", "[status]"},
    {"days", "Label2 DTPicker1(0)! DTPicker1(1)! ... LblExported"},
    {"file", "TxtPath*!"},
    {"accounts", "fgrdList*+"},
    {"commands", "MyButton1 CmdViewLog cmdDeleteLog ... cmdAccept cmdExit"},
    {"status", "LblStatus*"},
};
constexpr Title kQuickSetupTitles[] = {
    {"days", "Days to post"},
    {"file", "Company file"},
    {"accounts", "Accounts"},
};

constexpr Spoken kQuickSetupNames[] = {
    {"DTPicker1", 0, "First day to export"},
    {"DTPicker1", 1, "Last day to export"},
    {"TxtPath", ui::kNoIndex, "Company file"},
    {"fgrdList", ui::kNoIndex, "Accounts"},
    {"cboAcct", ui::kNoIndex, "QuickBooks account"},
};

constexpr Line kSummaryExport[] = {
    {"", "Label1 TxtPath*"},
    {"", "[status]:2"},
    {"", "[commands]:2"},
    {"status", "LblStatus*"},
    {"commands", "... Cmdexport"},
};

constexpr Line kSelDate[] = {
    {"", "Label1#:4"},
    {"", "Label2 DTPicker1(0)! DTPicker1(1)! ..."},
    {"", "Label4 TxtInvoice:2"},
    {"", "[commands]:4"},
    {"commands", "... cmdAccept cmdExit"},
};

constexpr Spoken kSelDateNames[] = {
    {"DTPicker1", 0, "First day"},
    {"DTPicker1", 1, "Last day"},
};

constexpr Line kDataPath[] = {
    {"", "Frame1*+"},
    {"", "[commands]"},
    {"Frame1", "lblEdit(2) [station]:2"},
    {"Frame1", "lblEdit(0) txtEdit(0)* cmdBrowse"},
    {"Frame1", "lblEdit(1) txtEdit(1)* cmdBrowsePath"},
    {"Frame1", ". [switches]:2"},
    {"station", "cboEdit! ..."},
    {"switches", "chkNetwork ckTest ..."},
    {"commands", "cmdHelp ... cmdOkCancel(0) cmdOkCancel(1)"},
};
constexpr Title kDataPathTitles[] = {{"Frame1", "Station and data"}};

constexpr Spoken kDataPathNames[] = {
    {"cboEdit", ui::kNoIndex, "Station"},
    {"cmdBrowse", ui::kNoIndex, "Browse for the station path"},
    {"cmdBrowsePath", ui::kNoIndex, "Browse for the data path"},
};

constexpr Line kFilePath[] = {
    {"", "lblPath TxtPath:3"},
    {"", "drvBrowse dirBrowse*"},
    {"", "txtFileSpec fileBrowse*"},
    {"", ". . . lblToolTip*"},
    {"", "[commands]:4"},
    {"commands", "cmdHelp cmdValidate cmdClear ... cmdOkCancel(0) cmdOkCancel(1)"},
};

constexpr Spoken kFilePathNames[] = {
    {"drvBrowse", ui::kNoIndex, "Drive"},
    {"dirBrowse", ui::kNoIndex, "Folder"},
    {"txtFileSpec", ui::kNoIndex, "Mask"},
    {"fileBrowse", ui::kNoIndex, "File"},
};

constexpr Line kSafe[] = {
    {"", "Label1"},
    {"", "[commands]"},
    {"commands", "... CmdRetry CmdLocal cmdExit"},
};

constexpr Line kLogin[] = {
    {"", "txtUserID*"},
    {"", "txtPassword*"},
    {"", "[commands]:2"},
    {"commands", "cmdHelp ... cmdOkCancel(0) cmdOkCancel(1)"},
};

constexpr Line kPasswordEnter[] = {
    {"", "txtNewPassword*"},
    {"", "txtRepeatPassword*"},
    {"", "[commands]:2"},
    {"commands", "... cmdOkCancel(0) cmdOkCancel(1)"},
};

constexpr Line kConfiguration[] = {
    {"", "[kinds]"},
    {"", "[folder]"},
    {"", "fraSample/fraEmbedded/fraServer+"},
    {"", "[commands]"},
    {"", "[status]"},
    {"kinds", "optStore(0)"},
    {"kinds", "optStore(1)"},
    {"kinds", "optStore(2)"},
    {"folder", "txtFolder* cmdBrowse"},
    {"fraSample", "lblSample"},
    {"fraEmbedded", "cboCatalog*"},
    {"fraServer", "txtServer* txtPort"},
    {"fraServer", "txtCatalog* txtDriver"},
    {"fraServer", "txtUser* txtPassword"},
    {"commands", "cmdHelp cmdTest ... cmdOkCancel(0) cmdOkCancel(1)"},
    {"status", "LblStatus*"},
};
constexpr Title kConfigurationTitles[] = {
    {"kinds", "Where are the tables of the store?"},
    {"folder", "Folder of the link's files"},
};

constexpr Window kWindows[] = {
    {"frmSetup", Style::main, 160, 55, kSetup, kSetupTitles, kSetupNames},
    {"frmBRVSplash", Style::splash, 0, 0, {}, {}},
    {"FrmLoading", Style::loading, 0, 0, kLoading, {}},
    {"FrmQuickSetUP", Style::main, 96, 48, kQuickSetup, kQuickSetupTitles, kQuickSetupNames},
    {"FrmSummaryExport", Style::main, 90, 0, kSummaryExport, {}},
    {"FrmSelDate", Style::dialog, 0, 0, kSelDate, {}, kSelDateNames},
    {"frmSM_DATAPATH2", Style::dialog, 80, 0, kDataPath, kDataPathTitles, kDataPathNames},
    {"frmSMFILE_PATH", Style::dialog, 90, 0, kFilePath, {}, kFilePathNames},
    {"SafeDialog", Style::dialog, 0, 0, kSafe, {}},
    {"frmSM_USER_LOGIN", Style::dialog, 52, 0, kLogin, {}},
    {"frmPasswordEnter", Style::dialog, 52, 0, kPasswordEnter, {}},
    {"frmDataConfiguration", Style::main, 104, 0, kConfiguration, kConfigurationTitles},
};

}  // namespace

const Window* find(std::string_view form) {
    const auto* const found =
        std::find_if(std::begin(kWindows), std::end(kWindows), [&](const Window& window) {
            return util::sameName(window.form, form);
        });
    return found == std::end(kWindows) ? nullptr : found;
}

}  // namespace platform::layout
