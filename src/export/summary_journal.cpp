#include "export/summary_journal.h"

#include "core/brv_op.h"
#include "core/run_log.h"
#include "core/sm_files.h"
#include "export/export_run.h"
#include "export/sale_state.h"
#include "platform/ports/platform.h"
#include "qb/wire_values.h"
#include "ui/status.h"
#include "util/conversions.h"

namespace exporting {

void addJournalPair(
    const JournalPair& accounts,
    util::Money amount,
    const std::string& memo,
    const std::string& entity
) {
    for (const bool isDebit : {true, false}) {
        QBJournalLine& line = addJournalLine(amount);
        line.Side = isDebit ? kDebitSide : kCreditSide;
        line.Account = isDebit ? accounts.debit : accounts.credit;
        line.Amount = amount.abs();
        line.Entity = entity;
        line.Memo = memo;
    }
}

void postSummaryJournal(const std::string& refNumber) {
    const std::string date = util::format(gsFromDate, "Short Date", qb::dateOrder());
    gpJournalEntry_add(gaJournalLines, date, refNumber, "");
    logGatewayStatus();
}

void showSummaryStatus(const std::string& text) {
    ui::showStatus("FrmSummaryExport", text);
}

std::string summaryText(const std::string& fileName) {
    return gfbFile_Exists(fileName) == kNo ? std::string() : platform::files().read(fileName);
}

void tellUnposted(const std::string& text) {
    gpQBLink_Log_writing(text);
    core::showMessage(text);
}

}  // namespace exporting
