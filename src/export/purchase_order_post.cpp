#include "export/purchase_order_post.h"

#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_POHeader.h"
#include "db/nuvDBSM_POHistory.h"
#include "db/nuvDBSM_Vendors.h"
#include "export/export_run.h"
#include "export/record_exports.h"
#include "export/record_walk.h"
#include "export/sale_conversion.h"
#include "qb/clsQBPO.h"
#include "qb/posted_transactions.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

#include <algorithm>

namespace exporting {

namespace {

constexpr char kNonStock[] = "~NONSTK";
constexpr char kDefaultVendor[] = "Default";
constexpr char kKind[] = "PurchaseOrder";

/// Reads the head of the order in the buffer. A number that is longer than the head's column has
/// none.
bool readHead(const std::string& number) {
    if (number.size() > decltype(db::POHeaderRecord::PO)::kWidth) {
        return false;
    }
    gPOHeader.PO = number;
    return readEqual(db::tablePOHeader, db::keyPOHeaderPO);
}

void setDates(clsQBPO& order, bool hasHead) {
    const std::string received = gPOHistory.DateReceived.str();
    order.TxnDate = storeDate(hasHead ? gPOHeader.ORDERDATE.str() : received);
    order.DueDate = storeDate(received);
    const std::string expected = hasHead ? storeDate(gPOHeader.ETADATE.str()) : std::string();
    // Only a text that is a date changes its form.
    order.ExpectedDate = storedDate(expected) == expected ? std::string() : expected;
}

/// Sends the vendor of the receipt; the vendor "Default" is made when the store has no row of it.
std::string exportVendor() {
    std::string code = gPOHistory.VendorCode.trimmed();
    if (code.empty()) {
        code = kDefaultVendor;
    }
    gVendors.VENDCODE = code;
    if (readEqual(db::tableVendors, db::keyVendorsVendCode)) {
        gpVendor_export();
    } else if (code == kDefaultVendor) {
        ensureVendor(code);
    }
    return code;
}

/// Display form of the receipt's item; the non-stock item for one that the store has not.
std::string exportItem() {
    gInventory.RecordNum = gPOHistory.InvUID;
    if (!readEqual(db::tableInventory, db::keyInventoryRecordNum)) {
        return kNonStock;
    }
    std::string name = util::rtrim(gfsItem_name(gInventory.SL.str()));
    gpItemCost_export();
    return name;
}

}  // namespace

bool isPostableReceipt() {
    const auto status = gPOHistory.Status.view();
    return status == "R" || status == "U";
}

std::string receiptKey(std::int32_t number) {
    constexpr std::size_t kWidth = 10;
    const std::string digits = util::textOf(static_cast<std::int64_t>(std::max(number, 0)));
    return std::string(kWidth - digits.size(), '0') + digits;
}

PurchaseOrderPost::PurchaseOrderPost(RunRecord* record) : record_(record) {
    gaQBPOLines.assign(1, QBPOLine());
}

void PurchaseOrderPost::begin() {
    number_ = gPOHistory.PONumber.str();
    firstReceipt_ = receiptKey(gPOHistory.UniqueID);
    if (record_ != nullptr) {
        record_->reach(firstReceipt_);
    }
    gaQBPOLines.assign(1, QBPOLine());
    clsQBPO& order = qb::purchaseOrder();
    order = clsQBPO();
    order.RefNumber = util::trim(number_);
    setDates(order, readHead(order.RefNumber));
    order.VendorName = exportVendor();
    showStatus(gPOHistory.DateReceived.str() + " " + number_ + " " + gPOHistory.VendorCode.str());
}

void PurchaseOrderPost::addLine() {
    QBPOLine line;
    line.Item = exportItem();
    line.Amount = util::times(gPOHistory.UnitCost, gPOHistory.UnitQty).abs().rounded(2);
    line.Quantity = gPOHistory.UnitQty;
    gaQBPOLines.push_back(line);
}

/// A number may have several orders, one for each day on which goods came in, or more: as many stay
/// back as the company file has.
bool PurchaseOrderPost::isSentBefore() {
    if (record_ == nullptr || !record_->mayBePosted(firstReceipt_)) {
        return false;
    }
    const clsQBPO& order = qb::purchaseOrder();
    const std::string day = storedDate(order.DueDate);
    const auto posted = qb::postedTransactions(kKind, order.RefNumber);
    const auto found = std::count_if(posted.begin(), posted.end(), [&](const auto& transaction) {
        return day.empty() || transaction.DueDate == day;
    });
    std::ptrdiff_t& kept = keptBack_[order.RefNumber + " " + day];
    if (found <= kept) {
        return false;
    }
    ++kept;
    logPostedAlready(kKind, order.RefNumber);
    return true;
}

void PurchaseOrderPost::post() {
    if (gaQBPOLines.size() <= 1) {
        return;
    }
    // An error of the question is this order's own; the receipt that comes next loses nothing.
    guardRecord(std::string(kKind) + " " + qb::purchaseOrder().RefNumber, [&] {
        if (!isSentBefore()) {
            qb::purchaseOrder().POHeaderAddNewReq();
            logGatewayStatus();
        }
    });
    gaQBPOLines.assign(1, QBPOLine());
}

}  // namespace exporting
