#include "windows/company_accounts.h"

#include "core/link_setup.h"
#include "core/run_log.h"
#include "export/record_exports.h"
#include "platform/ports/platform.h"
#include "qb/clsQBAccount.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "windows/at_exit.h"

namespace windows {

void connectAccounts(ui::Form& window) {
    platform::desktop().setBusyCursor(true);
    const AtExit normalCursor([] { platform::desktop().setBusyCursor(false); });
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
    fillAccountList(window);
    gpBRV_Trace_writing("mpCboQBAccount_populated");
    qb::querySalesReps();
}

void reconnectAccounts(ui::Form& window) {
    EndSessionCloseConnection();
    // What was known of the other file does not hold for this one.
    exporting::resetRecordExports();
    gaQBAccounts.clear();
    fillAccountList(window);
    connectAccounts(window);
}

void fillAccountList(ui::Form& window) {
    ui::ControlState& list = window.control("cboAcct");
    list.items.clear();
    for (const clsQBAccount& account : gaQBAccounts) {
        if (!account.FullName.empty()) {
            list.items.push_back(account.FullName);
        }
    }
    window.notify(list);
}

void fillAccountGrid(ui::Form& window) {
    ui::ControlState& grid = window.control("fgrdList");
    grid.rows.assign(1, {"NUV Acct", "QuickBook Acct"});
    for (const NuvAccountRow& row : goNuvAcct) {
        grid.rows.push_back({row.AcctDesc, row.QBAccount});
    }
    window.notify(grid);
}

void setRowAccount(ui::Form& window, int row, const std::string& account, const std::string& kept) {
    const std::string name = util::trim(goNuvAcct.at(static_cast<std::size_t>(row - 1)).AcctDesc);
    int gridRow = 0;
    for (NuvAccountRow& other : goNuvAcct) {
        ++gridRow;
        if (util::sameName(util::trim(other.AcctDesc), name)) {
            window.setCell("fgrdList", gridRow, 1, account);
            other.QBAccount = kept;
        }
    }
}

}  // namespace windows
