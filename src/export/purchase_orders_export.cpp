#include "export/purchase_orders_export.h"

#include "core/brv_op.h"
#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_POHistory.h"
#include "export/export_run.h"
#include "export/purchase_order_post.h"
#include "export/record_walk.h"
#include "platform/ports/platform.h"
#include "ui/form.h"
#include "util/conversions.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char kSetup[] = "frmSetup";
constexpr char kNothingFound[] = "no PO's found to export";
constexpr char kCancelled[] = "Exporting PO Cancelled";
constexpr char kNoDate[] = "00000000";
constexpr std::size_t kDateWidth = 8;

bool openTables() {
    constexpr std::int16_t kTables[] = {
        db::tablePOHistory, db::tablePOHeader, db::tableVendors, db::tableInventory};
    return std::all_of(std::begin(kTables), std::end(kTables), [](std::int16_t table) {
        return gfbDB_OpenTable(table) != kNo;
    });
}

std::string historyTable() {
    return DBTableDescriptors[db::tablePOHistory].TableName;
}

/// Eight digits of a date in display or stored form; zeros for anything else.
std::string dateMark(const std::string& text) {
    const std::string stored = exporting::storedDate(util::trim(text));
    const bool isDate =
        stored.size() == kDateWidth && stored.find_first_not_of("0123456789") == std::string::npos;
    return isDate ? stored : kNoDate;
}

bool findAfterMark() {
    gPOHistory.UniqueID = gnLastPOUID;
    return exporting::readEqual(db::tablePOHistory, db::keyPOHistoryUniqueID) &&
           gfiDB_Operation(db::tablePOHistory, db::opGetNext, db::keyPOHistoryUniqueID) != kNo;
}

/// The first run begins with the lowest number among the receipts from the date mark on.
bool findFromDate() {
    const std::string date = dateMark(gsLastPODate);
    gPOHistory.DateReceived = date;
    gPOHistory.VendorCode = "";
    gPOHistory.PONumber = "";
    gPOHistory.Status = "R";
    gPOHistory.InvUID = 0;
    if (gfiDB_Operation(db::tablePOHistory, db::opGreaterEqual, db::keyPOHistoryStatus) == kNo) {
        return false;
    }
    return exporting::firstOfStatement(
        db::tablePOHistory,
        "SELECT TOP 1 * FROM " + historyTable() + " WHERE Status >= 'R' AND DateReceived >= '" +
            date + "' ORDER BY UniqueID"
    )();
}

/// Where an order begins: at each change of the receipts' number, or at the first receipt only (of
/// one number, in whatever case it was typed).
enum class OrderStart : std::uint8_t { eachNumber, once };

/// The receipts of a walk, on their way into orders.
class ReceiptWalk {
public:
    explicit ReceiptWalk(OrderStart start)
        : start_(start),
          order_(start == OrderStart::once ? nullptr : &exporting::ordersRecord()) {}
    void visit() {
        if (!exporting::isPostableReceipt()) {
            return;
        }
        if (beginsOrder()) {
            order_.post();
            hasBegun_ = true;
            order_.begin();
        }
        exporting::PurchaseOrderPost::addLine();
        lastNumber_ = gPOHistory.UniqueID;
    }
    void finish() { order_.post(); }
    /// Number of the last receipt exported; 0 when there was none.
    [[nodiscard]] std::int32_t lastNumber() const { return lastNumber_; }

private:
    [[nodiscard]] bool beginsOrder() const {
        return start_ == OrderStart::once ? !hasBegun_ : !order_.isOf(gPOHistory.PONumber.str());
    }

    OrderStart start_;
    bool hasBegun_ = false;
    exporting::PurchaseOrderPost order_;
    std::int32_t lastNumber_ = 0;
};

void storeMarks(std::int32_t lastNumber) {
    if (lastNumber != 0) {
        gnLastPOUID = lastNumber;
    }
    gsLastPODate = dateMark(ui::formText(kSetup, "txtLastPostedPO"));
    if (core::openLinkSetup()) {
        core::storeMark("Last Purchase Order Posted", gsLastPODate);
        core::storeMark(
            "Last Purchase Order UID", util::textOf(static_cast<std::int64_t>(gnLastPOUID))
        );
        exporting::ordersRecord().end(exporting::receiptKey(gnLastPOUID));
    }
}

exporting::WalkEnd walkReceipts(
    const char* name,
    const std::function<bool()>& first,
    const std::function<bool()>& next,
    ReceiptWalk& receipts
) {
    const exporting::RecordWalk walk = {
        name,
        first,
        next,
        [&] { receipts.visit(); },
        // The order shows itself when it begins; Stop gets in at each receipt.
        [] { platform::desktop().pendingEvents(); },
        kCancelled,
        {},
        [&] { receipts.finish(); },
    };
    return exporting::walkRecords(walk);
}

std::string manualStatement(const std::string& number, const std::string& date) {
    std::string statement = "SELECT * FROM " + historyTable() + " WHERE PONumber = '" +
                            gfsDB_QuoteKey(number, kYes) + "' AND (Status = 'R' OR Status = 'U')";
    if (!date.empty()) {
        statement += " AND DateReceived = '" + gfsDB_QuoteKey(date, kYes) + "'";
    }
    return statement + " ORDER BY UniqueID";
}

}  // namespace

void gpPurchaseOrders_export() {
    if (gbPOExportArmed == kNo) {
        core::showMessage("You Already run once, Please exit the program if you want to run again");
        return;
    }
    if (!exporting::ensureSession() || !openTables()) {
        return;
    }
    const exporting::ExportLock lock;
    if (!lock.isHeld()) {
        return;
    }
    exporting::guardRecord("gpPurchaseOrders_export", [] {
        const double mark = util::val(core::storedMark("Last Purchase Order UID"));
        exporting::ordersRecord().begin(exporting::receiptKey(util::toLong(mark)));
    });
    exporting::normaliseDateField("txtToDate");
    ReceiptWalk receipts(OrderStart::eachNumber);
    const exporting::WalkEnd end = walkReceipts(
        "gpPurchaseOrders_export",
        gnLastPOUID > 0 ? findAfterMark : findFromDate,
        exporting::nextByKey(db::tablePOHistory, db::keyPOHistoryUniqueID),
        receipts
    );
    if (end == exporting::WalkEnd::empty) {
        core::showMessage(kNothingFound);
        return;
    }
    if (end == exporting::WalkEnd::failed) {
        return;
    }
    storeMarks(receipts.lastNumber());
    if (end == exporting::WalkEnd::done) {
        exporting::showStatus("Done PO export");
        gbPOExportArmed = kNo;
    }
}

void gpPurchaseOrdersManual_export() {
    if (!exporting::ensureSession() || !openTables()) {
        return;
    }
    const exporting::ExportLock lock;
    if (!lock.isHeld()) {
        return;
    }
    const std::string number = util::trim(ui::formText(kSetup, "txtPOHisPONum"));
    const std::string date = util::trim(ui::formText(kSetup, "txtPOHisDate"));
    ReceiptWalk receipts(OrderStart::once);
    const exporting::WalkEnd end = walkReceipts(
        "gpPurchaseOrdersManual_export",
        exporting::firstOfStatement(db::tablePOHistory, manualStatement(number, date)),
        exporting::nextOfStatement(db::tablePOHistory),
        receipts
    );
    if (end == exporting::WalkEnd::empty) {
        exporting::reportMissing("POHistory = " + number);
        core::showMessage("No PO's found to export");
    } else if (end == exporting::WalkEnd::done) {
        // Kept: the text after a run with a date is misspelt.
        exporting::showStatus(date.empty() ? "Done PO Manual Export" : "Done PO Nanual Export");
    }
}
