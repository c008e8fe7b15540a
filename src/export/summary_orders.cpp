#include "core/brv_op.h"
#include "core/run_log.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Vendors.h"
#include "export/export_run.h"
#include "export/record_exports.h"
#include "export/record_walk.h"
#include "export/sale_state.h"
#include "export/summary_export.h"
#include "export/summary_files.h"
#include "export/summary_journal.h"
#include "platform/ports/platform.h"
#include "qb/clsQBPO.h"
#include "qb/clsQBVendor.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"

namespace exporting {

namespace {

constexpr char kRoutine[] = "gfbPOSummaryFile_post";
constexpr int kReopenPauseMs = 1000;

void lookUpVendor(const std::string& code) {
    clsQBVendor vendor;
    vendor.Name = util::trim(code);
    const bool found = vendor.VendorSearchRq() != kNo;
    showSummaryStatus(found ? "Vendor Found" : "Getting vendor info failed");
}

/// Sends the vendor's row. A code that is longer than its column has none.
void exportVendorRow(const std::string& code) {
    if (util::rtrim(code).size() > decltype(db::VendorsRecord::VENDCODE)::kWidth) {
        return;
    }
    gVendors.VENDCODE = code;
    if (readEqual(db::tableVendors, db::keyVendorsVendCode)) {
        gpVendor_export();
    }
}

void fillOrder(const SummaryOrder& record) {
    clsQBPO& order = qb::purchaseOrder();
    order = clsQBPO();
    order.RefNumber = record.reference;
    order.TxnDate = record.date;
    order.DueDate = record.date;
    order.VendorName = record.vendor;
    QBPOLine line;
    line.Item = "1";
    line.Description = "Inventory";
    line.Amount = util::toCurrency(record.amount);
    line.Quantity = 1.0F;
    gaQBPOLines.assign(1, QBPOLine());
    gaQBPOLines.push_back(line);
}

/// @return false when the company file refused the order.
bool postPurchase(const SummaryOrder& record) {
    lookUpVendor(record.vendor);
    exportVendorRow(record.vendor);
    fillOrder(record);
    if (gaQBPOLines.back().Amount <= util::Money()) {
        return true;
    }
    const bool taken = qb::purchaseOrder().POHeaderAddNewReq() != kNo;
    logGatewayStatus();
    return taken;
}

bool postReturn(const SummaryOrder& record) {
    gaJournalLines.assign(1, QBJournalLine());
    const util::Money amount = util::toCurrency(record.amount);
    addJournalPair(kVendorReturnAccounts, amount, record.reference, record.vendor);
    if (gfbRequestMsgSet_reset() == kNo) {
        return false;
    }
    postSummaryJournal(record.reference);
    return true;
}

/// Runs the posting of one record. A failure is told and the next record follows.
template <class Posting>
void postGuarded(const SummaryOrder& record, const Posting& posting) {
    bool posted = false;
    if (!guardRecord(kRoutine, [&] { posted = posting(record); }) || !posted) {
        core::showMessage("export failed" + record.reference);
    }
}

/// Reads one line. A line that cannot be read is logged and counts as none.
bool readLine(const std::string& line, SummaryOrder& record) {
    bool read = false;
    return guardRecord(kRoutine, [&] { read = readOrder(line, record); }) && read;
}

void postPurchases(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        if (line.empty()) {
            core::showMessage("exiting");
            return;
        }
        SummaryOrder record;
        if (readLine(line, record) && record.value > 0) {
            postGuarded(record, postPurchase);
        }
    }
}

/// Closes the session and opens it anew, so that the journals begin on a fresh one.
bool renewSession() {
    EndSessionCloseConnection();
    platform::systemClock().sleep(kReopenPauseMs);
    return ensureSession();
}

void postReturns(const std::vector<std::string>& lines) {
    bool renewed = false;
    for (const std::string& line : lines) {
        if (line.empty()) {
            return;
        }
        SummaryOrder record;
        if (!readLine(line, record) || record.value >= 0) {
            continue;
        }
        if (!renewed && !renewSession()) {
            gpQBLink_Log_writing(
                std::string(kRoutine) + " no session: returns to vendors from " + record.reference +
                " on were not posted"
            );
            return;
        }
        renewed = true;
        postGuarded(record, postReturn);
    }
}

}  // namespace

}  // namespace exporting

LegacyBool gfbPOSummaryFile_post() {
    exporting::showSummaryStatus(
        gbPostPOTotals != kNo ? "Exporting Purchase Orders for " + gsFromDate
                              : std::string("Exporting Purchase Orders...")
    );
    std::vector<std::string> lines;
    bool read = false;
    qb::onLanguageError(
        [&] {
            lines = exporting::linesOf(exporting::summaryText(gsPOSummaryFile));
            read = true;
        },
        [](std::int32_t, const std::string& description) {
            exporting::tellUnposted(
                "The purchase orders of " + gsFromDate + " were not posted. The file " +
                util::trim(gsPOSummaryFile) + " cannot be read: " + description
            );
        }
    );
    if (!read || !exporting::ensureSession()) {
        return kNo;
    }
    exporting::postPurchases(lines);
    exporting::postReturns(lines);
    return kYes;
}
