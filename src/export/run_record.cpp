#include "export/run_record.h"

#include "config/clsDataPath.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "export/export_run.h"
#include "platform/ports/platform.h"
#include "qb/posted_transactions.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

#include <algorithm>

namespace exporting {

namespace {

constexpr char kLineEnd[] = "\r\n";

std::string fullName(const std::string& fileName) {
    return gDataPath.DataPath + "\\" + fileName;
}

/// The last whole line: what a write that was cut off left behind it does not count, its documents
/// did not go out.
std::string lastLine(const std::string& text) {
    const std::size_t end = text.rfind(kLineEnd);
    if (end == std::string::npos) {
        return "";
    }
    const std::size_t before = end == 0 ? std::string::npos : text.rfind(kLineEnd, end - 1);
    const std::size_t start = before == std::string::npos ? 0 : before + sizeof kLineEnd - 1;
    return text.substr(start, end - start);
}

}  // namespace

void RunRecord::begin(const std::string& storedMark) {
    reached_ = storedMark;
    failed_ = false;
    guardRecord(fileName_, [&] {
        const std::string name = fullName(fileName_);
        if (platform::files().fileExists(name)) {
            reached_ = std::max(reached_, lastLine(platform::files().read(name)));
        }
    });
}

void RunRecord::reach(const std::string& key) {
    if (mayBePosted(key) || failed_) {
        return;  // the notes of the run that was cut off go farther
    }
    failed_ = !guardRecord(fileName_, [&] {
        platform::files().append(fullName(fileName_), key + kLineEnd);
    });
}

void RunRecord::end(const std::string& storedMark) {
    const std::string name = fullName(fileName_);
    if (reached_ <= storedMark && platform::files().fileExists(name)) {
        guardRecord(fileName_, [&] { platform::files().remove(name); });
    }
}

RunRecord& salesRecord() {
    static RunRecord record("QBLINK.RNS");
    return record;
}

void beginSalesRecord() {
    const std::string mark = util::trim(core::storedMark("Last Invoices Posted"));
    salesRecord().begin(mark.empty() ? mark : gfsNumber_pad7(mark));
}

RunRecord& ordersRecord() {
    static RunRecord record("QBLINK.RNP");
    return record;
}

void logPostedAlready(const std::string& kind, const std::string& refNumber) {
    gpQBLink_Log_writing(kind + " " + refNumber + " is in QuickBooks already");
}

bool isPostedAlready(const std::string& kind, const std::string& refNumber) {
    const bool isPosted = !qb::postedTransactions(kind, refNumber).empty();
    if (isPosted) {
        logPostedAlready(kind, refNumber);
    }
    return isPosted;
}

void resetRunRecords() {
    salesRecord().reset();
    ordersRecord().reset();
}

}  // namespace exporting
