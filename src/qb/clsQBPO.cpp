#include "qb/clsQBPO.h"

#include "core/brv_op.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "util/conversions.h"

std::vector<QBPOLine> gaQBPOLines;
std::unique_ptr<clsQBPO> goQBPO;

namespace {

using qb::fixed;
using qb::Form;
using qb::request;
using qb::send;
using qb::When;

constexpr char kSearchLiteral[] = " POSearchRq ";  // Kept: the leading blank.
constexpr char kAddLiteral[] = "POHeaderAddNewReq ";
constexpr qb::Search kSearch =
    qb::refNumberSearch("PurchaseOrderQuery", platform::ResponseType::purchaseOrderQuery);
/// Language errors below this number cost an order the one field that they came from.
constexpr std::int32_t kFirstFatalError = 15;

constexpr auto kOrder = request(
    "PurchaseOrderAdd",
    send("DueDate", &clsQBPO::DueDate, When::aboveBlank, Form::date),
    send("ExpectedDate", &clsQBPO::ExpectedDate, When::aboveBlank, Form::date),
    send("TxnDate", &clsQBPO::TxnDate, When::trimmed, Form::date),
    send("Memo", &clsQBPO::Memo, When::aboveBlank),
    send("RefNumber", &clsQBPO::RefNumber),
    send("ShipAddress/Addr1", &clsQBPO::ShipAddr1),
    send("ShipAddress/Addr2", &clsQBPO::ShipAddr2),
    send("ShipAddress/Addr3", &clsQBPO::ShipAddr3),
    send("ShipAddress/Addr4", &clsQBPO::ShipAddr4),
    send("ShipAddress/City", &clsQBPO::ShipCity),
    send("ShipAddress/PostalCode", &clsQBPO::ShipPostalCode),
    send("ShipAddress/State", &clsQBPO::ShipState),
    send("ShipMethodRef/FullName", &clsQBPO::ShipMethod, When::aboveBlank),
    send("ShipToEntityRef/FullName", &clsQBPO::ShipToEntity, When::aboveBlank),
    send("TermsRef/FullName", &clsQBPO::Terms, When::aboveBlank),
    send("VendorAddress/Addr1", &clsQBPO::VendorAddr1),
    send("VendorAddress/Addr2", &clsQBPO::VendorAddr2),
    send("VendorAddress/Addr3", &clsQBPO::VendorAddr3),
    send("VendorAddress/City", &clsQBPO::VendorCity),
    send("VendorAddress/PostalCode", &clsQBPO::VendorPostalCode),
    send("VendorAddress/State", &clsQBPO::VendorState),
    send("VendorMsg", &clsQBPO::VendorMsg),
    send("VendorRef/FullName", &clsQBPO::VendorName, When::aboveBlank)
);

constexpr auto kOrderLine = request(
    "PurchaseOrderLineAdd",
    send("Amount", &QBPOLine::Amount),
    send("CustomerRef/FullName", &QBPOLine::CustomerName, When::aboveBlank),
    send("Desc", &QBPOLine::Description),
    send("ItemRef/FullName", &QBPOLine::Item),
    send("Quantity", &QBPOLine::Quantity)
);

constexpr auto kReceipt = request(
    "ItemReceiptAdd",
    send("VendorRef/FullName", &clsQBPO::VendorName),
    send("TxnDate", &clsQBPO::TxnDate, When::trimmed, Form::date),
    send("RefNumber", &clsQBPO::RefNumber),
    send("Memo", &clsQBPO::Memo)
);

constexpr auto kReceiptLine = request(
    "ItemLineAdd",
    send("ItemRef/FullName", &QBPOLine::Item),
    send("Desc", &QBPOLine::Description),
    send("Quantity", &QBPOLine::Quantity),
    send("Amount", &QBPOLine::Amount),
    send("CustomerRef/FullName", &QBPOLine::CustomerName, When::aboveBlank)
);

constexpr auto kOrderDel = request(
    "TxnDel", fixed<clsQBPO>("TxnDelType", "PurchaseOrder"), send("TxnID", &clsQBPO::TxnID)
);

constexpr qb::Take<clsQBPO> kOrderRet[] = {
    {"EditSequence", &clsQBPO::EditSequence},
    {"DueDate", &clsQBPO::DueDate},
    {"Memo", &clsQBPO::Memo},
    {"VendorRef/FullName", &clsQBPO::VendorName},
    {"VendorAddress/Addr1", &clsQBPO::VendorAddr1},
    {"VendorAddress/Addr2", &clsQBPO::VendorAddr2},
    {"VendorAddress/Addr3", &clsQBPO::VendorAddr3},
    {"VendorAddress/City", &clsQBPO::VendorCity},
    {"VendorAddress/State", &clsQBPO::VendorState},
    {"VendorAddress/PostalCode", &clsQBPO::VendorPostalCode},
    {"VendorAddress/Country", &clsQBPO::VendorCountry},
};

/// An error from which on nothing is sent any more.
void tellFatal(const clsQBPO& order, std::int32_t number, const std::string& description) {
    qb::tellError(kAddLiteral, order.RefNumber, number, description);
    core::showMessage(gsQBStatusMessage);
}

}  // namespace

LegacyBool clsQBPO::POSearchRq() {
    if (RefNumber.empty()) {
        return kNo;
    }
    return qb::handled(kSearchLiteral, RefNumber, [&] {
        if (requestMsgSet == nullptr) {
            throw util::BasicError::of(91);
        }
        platform::QBElement& query = requestMsgSet->append(kSearch.request);
        query.at("IncludeLineItems").setText(qb::wireBoolean(true));
        query.at("IncludeLinkedTxns").setText(qb::wireBoolean(true));
        qb::fillFilter(query, kSearch, RefNumber);
        if (gfbRequests_do() == kNo) {
            return false;
        }
        if (POSearchRet_count() == kNo) {
            core::showMessage("No Record Match.");
            return false;
        }
        POInfoRet_get(0);
        return true;
    });
}

LegacyBool clsQBPO::POSearchRet_count() {
    gpQBStatus_clear();
    gfbResponse_get();
    if (response == nullptr) {
        throw util::BasicError::of(91);
    }
    gsQBStatusCode = std::to_string(response->StatusCode);
    gsQBStatusMessage = response->StatusMessage;
    gsQBStatusSeverity = response->StatusSeverity;
    if (response->StatusCode == 0) {
        found_.keep(response);
        gnQBReturnedCount = found_.count();
        return kYes;
    }
    gsQBStatusMessage = response->StatusCode == 1
                            ? "No items were returned by QuickBooks."
                            : "Error occured.  Status Code = " + gsQBStatusCode +
                                  ", Status Message = " + gsQBStatusMessage +
                                  ", Status Severity = " + gsQBStatusSeverity;
    return kNo;
}

void clsQBPO::POKeyRet_get() {
    const platform::QBElement& order = found_.at(0);
    if (order.has("RefNumber")) {
        RefNumber = order.find("RefNumber").text();
    }
}

void clsQBPO::POInfoRet_get(int index) {
    qb::read(found_.at(index), *this, kOrderRet, qb::Absent::empties);
    if (!DueDate.empty()) {
        DueDate = util::shortDate(qb::dateOf(DueDate), qb::dateOrder());
    }
}

LegacyBool clsQBPO::POHeaderAddNewReq() {
    LegacyBool result = kNo;
    const auto tell = [&](std::int32_t number, const std::string& description) {
        tellFatal(*this, number, description);
    };
    const auto skipping = [&](const auto& step) {
        try {
            step();
        } catch (const util::BasicError& error) {
            if (error.number() >= kFirstFatalError) {
                throw;
            }
            qb::tellError(kAddLiteral, RefNumber, error.number(), error.what());
        }
    };
    qb::onLanguageError(
        [&] {
            if (gfbRequestMsgSet_reset() == kNo) {
                return;
            }
            const bool done = qb::sendRequest(kOrder.name, [&](platform::QBElement& body) {
                qb::fill(body, *this, kOrder, skipping);
                qb::appendLines(body, kOrderLine, gaQBPOLines, qb::everyLine<QBPOLine>, skipping);
            });
            qb::prefixStatus(kAddLiteral, RefNumber);
            result = legacyBool(done);
        },
        tell
    );
    return result;
}

LegacyBool clsQBPO::PODeleteReq() {
    return qb::handled("PODeleteReq ", RefNumber, [&] {
        return qb::sendRequest(kOrderDel.name, [&](platform::QBElement& body) {
            qb::fill(body, *this, kOrderDel);
        });
    });
}

LegacyBool clsQBPO::POItemReceivedAddRq() {
    return qb::runCycle(
        kReceipt.name,
        {"", "POItemReceivedAddRq "},
        RefNumber,
        [&](platform::QBElement& body) {
            qb::fill(body, *this, kReceipt);
            qb::appendLines(body, kReceiptLine, gaQBPOLines, qb::everyLine<QBPOLine>);
        }
    );
}

namespace qb {

clsQBPO& purchaseOrder() {
    if (goQBPO == nullptr) {
        goQBPO = std::make_unique<clsQBPO>();
    }
    return *goQBPO;
}

}  // namespace qb
