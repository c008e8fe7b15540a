#pragma once

#include "ui/form.h"
#include "util/legacy_bool.h"
#include "windows/export_engines.h"
#include "windows/new_records.h"

#include <string>

/// The main window of Setup mode: the mapping of accounts, the company file, the last-posted marks,
/// and the buttons that start exports. Its handlers are the last to see an error: they tell it in a
/// message box and the window stays.
class frmSetup : public ui::Form {
public:
    frmSetup();
    [[nodiscard]] std::span<const ui::Key> keys() const override;

    // NOLINTBEGIN(readability-identifier-naming): fixed names

    /// Builds `goNuvAcct` and the tax identifiers from the tender table; accounts start empty.
    static void mpNuvAccount_populate();
    /// Fills the window from the store's settings and `QBLINK.NUV`. An error of one step is traced,
    /// and the next step follows.
    void mpDefaults_QuickBooks_set();
    /// Writes `QBLINK.NUV` anew from the window's controls. The two record marks of the list
    /// exports are not among them and disappear.
    /// @return kYes when every value was written. A failure is told as "Unable To Save Setup".
    LegacyBool mfbAccounts_Setup_writing();
    /// Fills `cboAcct` with the full names of the accounts, in the order of the company file.
    void mpCboQBAccount_populate();
    /// Lays `cboAcct` over a field with the account that stands there, or commits the pick when the
    /// list is open already.
    /// @param name   "fgrdList", "txtAR_SalesAccount" or "txtAccount".
    /// @param index  place in the control array.
    /// @param row    grid row; 0 for a field.
    void mpAccountPick_show(const std::string& name, int index, int row);
    /// Puts the text of the open list where the pick was begun, in the grid into all rows of that
    /// name, and hides the list.
    void mpAccountPick_commit();
    /// Ends the session, opens the company file `gsQBFilePath` and fills the account list anew.
    void mpQBFile_reconnect();

    // NOLINTEND(readability-identifier-naming)

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    /// A handler or step that needs nothing of the window.
    template <void (*Run)()>
    void perform() {
        Run();
    }

    // life of the window (frmSetup.cpp)
    void onLoad();
    void onActivate();
    void onCmdRun();
    void showPage(int page);
    void onCmdAcceptCancel();
    void onMnuExit();
    void onMnuUnlock();
    void onCmdStop();
    void onCmdDeleteLog();

    // accounts and defaults (setup_mapping.cpp, setup_defaults.cpp)
    void fillGrid();
    void fillTaxRows();
    void showPurchaseMark();
    void fillFields();
    void showSalesMarks();
    void hidePickList();
    [[nodiscard]] std::string accountAt(const std::string& name, int index, int row);
    void onGridClick();
    void onSalesAccount();
    void onAccount();

    // marks (setup_marks.cpp)
    void onLeaveInvoice();
    void onLeaveInvoiceDate();
    void onLeavePurchaseDate();
    void refuseMark(const char* field, const char* text);

    // company file (setup_connection.cpp)
    void connect();
    void onCmdFind();
    void onLeavePath();
    void onCboStore();

    // exports (setup_exports.cpp)
    void onChkExport();
    template <windows::ExportIndex Index>
    void onManualBox();
    void manualBoxClicked(windows::ExportIndex index);
    void onCmdexport();
    void onCmdManual();
    void onCmdInitialized();
    void beginRun();
    void endRun();
    void runAutomatic(const windows::ExportEngine& engine);
    bool takeManualSale();

    bool activated_ = false;
    windows::NewRecords newRecords_;
    bool importDone_ = false;  ///< `CmdInitialized` was used up when the run began
    std::string pickControl_;  ///< control that the open list belongs to
    int pickIndex_ = ui::kNoIndex;
    int pickRow_ = 0;
};
