#include "qb/clsQBVendor.h"

#include "core/brv_op.h"
#include "qb/clsQBPO.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "util/conversions.h"

namespace {

using qb::fixed;
using qb::Form;
using qb::request;
using qb::send;
using qb::When;

constexpr char kSearchLiteral[] = "VendorSearchRq ";
constexpr qb::Search kSearch = qb::nameSearch("VendorQuery", platform::ResponseType::vendorQuery);

constexpr qb::Take<clsQBVendor> kVendorRet[] = {
    {"ListID", &clsQBVendor::ListID},
    {"EditSequence", &clsQBVendor::EditSequence},
    {"NameOnCheck", &clsQBVendor::NameOnCheck},
    {"LastName", &clsQBVendor::LastName},
    {"CompanyName", &clsQBVendor::CompanyName},
    {"VendorAddress/Addr1", &clsQBVendor::Addr1},
    {"VendorAddress/Addr2", &clsQBVendor::Addr2},
    {"VendorAddress/Addr3", &clsQBVendor::Addr3},
    {"VendorAddress/City", &clsQBVendor::City},
    {"VendorAddress/State", &clsQBVendor::State},
    {"VendorAddress/PostalCode", &clsQBVendor::PostalCode},
    {"Balance", &clsQBVendor::Balance},
    {"Phone", &clsQBVendor::Phone},
    {"Fax", &clsQBVendor::Fax},
    {"Email", &clsQBVendor::Email},
    {"TermsRef/FullName", &clsQBVendor::TermsName},
};

/// What an add and a change have in common.
constexpr auto kVendorFields = request(
    "",
    send("AccountNumber", &clsQBVendor::AccountNumber),
    send("AltContact", &clsQBVendor::AltContact),
    send("AltPhone", &clsQBVendor::AltPhone),
    send("Contact", &clsQBVendor::Contact),
    send("CompanyName", &clsQBVendor::CompanyName),
    send("CreditLimit", &clsQBVendor::CreditLimit),
    send("Email", &clsQBVendor::Email),
    send("Fax", &clsQBVendor::Fax),
    send("FirstName", &clsQBVendor::FirstName),
    send("IsVendorEligibleFor1099", &clsQBVendor::IsVendorEligibleFor1099),
    send("LastName", &clsQBVendor::LastName),
    send("MiddleName", &clsQBVendor::MiddleName),
    send("Name", &clsQBVendor::Name),
    send("NameOnCheck", &clsQBVendor::NameOnCheck),
    send("Notes", &clsQBVendor::Notes),
    send("Phone", &clsQBVendor::Phone),
    send("Salutation", &clsQBVendor::Salutation),
    send("TermsRef/FullName", &clsQBVendor::TermsName, When::trimmed),
    send("VendorAddress/Addr1", &clsQBVendor::Addr1),
    send("VendorAddress/Addr2", &clsQBVendor::Addr2),
    send("VendorAddress/Addr3", &clsQBVendor::Addr3),
    send("VendorAddress/City", &clsQBVendor::City),
    send("VendorAddress/State", &clsQBVendor::State),
    send("VendorAddress/PostalCode", &clsQBVendor::PostalCode),
    send("VendorTaxIdent", &clsQBVendor::VendorTaxIdent)
);

constexpr auto kVendorAdd = request(
    "VendorAdd",
    send("OpenBalance", &clsQBVendor::OpenBalance),
    send("OpenBalanceDate", &clsQBVendor::OpenBalanceDate)
);

constexpr auto kVendorMod = request(
    "VendorMod",
    send("ListID", &clsQBVendor::ListID),
    send("EditSequence", &clsQBVendor::EditSequence)
);

constexpr auto kVendorDel = request(
    "ListDel", fixed<clsQBVendor>("ListDelType", "Vendor"), send("ListID", &clsQBVendor::ListID)
);

std::string creditAmount(const clsQBPO& order) {
    static_cast<void>(order);
    if (gaQBPOLines.size() < 2) {
        throw util::BasicError::of(9);
    }
    return qb::wireAmount(gaQBPOLines[1].Amount.abs());
}

/// The credit's one line is always for the fixed item "1".
constexpr auto kVendorCredit = request(
    "VendorCreditAdd",
    send("VendorRef/FullName", &clsQBPO::VendorName),
    send("RefNumber", &clsQBPO::RefNumber),
    send("TxnDate", &clsQBPO::TxnDate, When::always, Form::date),
    send("Memo", &clsQBPO::Memo),
    fixed<clsQBPO>("ItemLineAdd/ItemRef/FullName", "1"),
    send("ItemLineAdd/Amount", &creditAmount),
    fixed<clsQBPO>("ItemLineAdd/Quantity", "1"),
    fixed<clsQBPO>("ItemLineAdd/Desc", "Inventory")
);

/// Shows a status that is not 0.
void showRefusal() {
    if (responseMsgSet->ResponseList.empty()) {
        throw util::BasicError::of(9);
    }
    const platform::IResponse& answer = responseMsgSet->ResponseList.front();
    if (answer.StatusCode != 0) {
        core::showMessage(
            "Status: Code = " + std::to_string(answer.StatusCode) +
            ", Severity = " + answer.StatusSeverity + ", Message = " + answer.StatusMessage
        );
    }
}

}  // namespace

LegacyBool clsQBVendor::VendorSearchRq() {
    return qb::handled(kSearchLiteral, Name, [&] {
        if (!qb::runSearch(kSearch, Name, kSearchLiteral, Name, found_)) {
            return false;
        }
        VendorInfoRet_get(0);
        return true;
    });
}

void clsQBVendor::VendorKeyRet_get(int index) {
    const platform::QBElement& vendor = found_.at(index);
    if (vendor.has("Name")) {
        Name = vendor.find("Name").text();
    }
}

LegacyBool clsQBVendor::VendorCreditAddReq() {
    return qb::runCycle(kVendorCredit, qb::purchaseOrder(), "VendorcreditAddRq ", Name);
}

void clsQBVendor::VendorInfoRet_get(int index) {
    qb::read(found_.at(index), *this, kVendorRet);
}

LegacyBool clsQBVendor::VendorAddRequest() {
    return qb::runCycle(kVendorAdd, *this, "VendorAddRequest ", Name, kVendorFields);
}

LegacyBool clsQBVendor::VendorModifyReq() {
    return qb::runCycle(kVendorMod, *this, {"", "VendorModifyReq "}, Name, kVendorFields);
}

LegacyBool clsQBVendor::VendorDeleteRequest() {
    return qb::handled("VendorDeleteRequest ", Name, [&] {
        if (gfbRequestMsgSet_reset() == kNo) {
            return false;
        }
        qb::fill(requestMsgSet->append(kVendorDel.name), *this, kVendorDel);
        if (gfbRequests_do() == kNo) {
            return false;
        }
        showRefusal();
        // Kept: the set goes out a second time.
        return gfbRequests_do() != kNo && gfbResponse_get() != kNo;
    });
}
