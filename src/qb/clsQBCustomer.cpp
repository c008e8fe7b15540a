#include "qb/clsQBCustomer.h"

#include "db/nuvDBSM_Names.h"
#include "qb/request_cycle.h"
#include "util/conversions.h"

namespace {

using qb::fixed;
using qb::request;
using qb::send;
using qb::When;

constexpr char kSearchLiteral[] = "CustomerSearchRq ";
constexpr qb::Search kSearch =
    qb::nameSearch("CustomerQuery", platform::ResponseType::customerQuery);

constexpr qb::Take<clsQBCustomer> kCustomerRet[] = {
    {"ListID", &clsQBCustomer::ListID},
    {"EditSequence", &clsQBCustomer::EditSequence},
    {"FirstName", &clsQBCustomer::FirstName},
    {"LastName", &clsQBCustomer::LastName},
    {"FullName", &clsQBCustomer::Name},
    {"BillAddress/Addr1", &clsQBCustomer::ReadAddress1},
    {"BillAddress/Addr2", &clsQBCustomer::Address2},
    {"BillAddress/Addr3", &clsQBCustomer::Address3},
    {"BillAddress/City", &clsQBCustomer::City},
    {"BillAddress/State", &clsQBCustomer::State},
    {"BillAddress/PostalCode", &clsQBCustomer::PostalCode},
    {"Balance", &clsQBCustomer::OpenBalance},
    {"Phone", &clsQBCustomer::Phone},
    {"Fax", &clsQBCustomer::Fax},
    {"Email", &clsQBCustomer::Email},
};

// Kept: the first address line is the one that a read fills, so a new customer's goes out empty.
constexpr auto kCustomerAdd = request(
    "CustomerAdd",
    send("CompanyName", &clsQBCustomer::CompanyName),
    send("Name", &clsQBCustomer::Name),
    send("FirstName", &clsQBCustomer::FirstName),
    send("LastName", &clsQBCustomer::LastName),
    send("BillAddress/Addr1", &clsQBCustomer::ReadAddress1),
    send("BillAddress/Addr2", &clsQBCustomer::Address2, When::filled),
    send("BillAddress/Addr3", &clsQBCustomer::Address3, When::filled),
    send("BillAddress/City", &clsQBCustomer::City, When::filled),
    send("BillAddress/State", &clsQBCustomer::State, When::filled),
    send("BillAddress/PostalCode", &clsQBCustomer::PostalCode, When::filled),
    send("Phone", &clsQBCustomer::Phone, When::filled),
    send("Fax", &clsQBCustomer::Fax, When::filled),
    send("Email", &clsQBCustomer::Email, When::filled),
    send("CreditLimit", &clsQBCustomer::CreditLimit),
    send("SalesTaxCodeRef/FullName", &clsQBCustomer::SalesTaxCode),
    fixed<clsQBCustomer>("IsActive", "true"),
    send("TermsRef/FullName", &clsQBCustomer::Terms),
    send("OpenBalance", &clsQBCustomer::OpenBalance, When::nonZero),
    send("JobTypeRef/FullName", &clsQBCustomer::JobType)
);

constexpr auto kCustomerMod = request(
    "CustomerMod",
    send("ListID", &clsQBCustomer::ListID),
    send("EditSequence", &clsQBCustomer::EditSequence),
    send("CompanyName", &clsQBCustomer::CompanyName),
    send("Name", &clsQBCustomer::Name),
    send("FirstName", &clsQBCustomer::FirstName),
    send("LastName", &clsQBCustomer::LastName),
    send("BillAddress/Addr1", &clsQBCustomer::Address1),
    send("BillAddress/Addr2", &clsQBCustomer::Address2),
    send("BillAddress/Addr3", &clsQBCustomer::Address3),
    send("BillAddress/City", &clsQBCustomer::City),
    send("BillAddress/State", &clsQBCustomer::State),
    send("BillAddress/PostalCode", &clsQBCustomer::PostalCode),
    send("Phone", &clsQBCustomer::Phone),
    send("Fax", &clsQBCustomer::Fax),
    send("Email", &clsQBCustomer::Email)
);

constexpr auto kCustomerDel = request(
    "ListDel",
    fixed<clsQBCustomer>("ListDelType", "Customer"),
    send("ListID", &clsQBCustomer::ListID)
);

}  // namespace

LegacyBool clsQBCustomer::CustomerSearchRq() {
    if (util::trim(Name).empty()) {
        return kNo;
    }
    const std::string key = Name;
    return qb::handled(kSearchLiteral, key, [&] {
        if (!qb::runSearch(kSearch, key, kSearchLiteral, key, found_)) {
            return false;
        }
        const std::string code = gNames.ARCode.trimmed();
        bool isFound = false;
        for (int index = 0; index < found_.count() && !isFound; ++index) {
            Name = key;
            CustomerInfoRet_get(index, kYes);
            isFound = util::trim(Name) == code;
        }
        Name = code;
        return isFound;
    });
}

void clsQBCustomer::CustomerKeyRet_get(int index) {
    const platform::QBElement& customer = found_.at(index);
    if (customer.has("FullName")) {
        Name = customer.find("FullName").text();
    }
}

void clsQBCustomer::CustomerInfoRet_get(int index, LegacyBool compare) {
    const platform::QBElement& customer = found_.at(index);
    if (compare != kNo) {
        if (!customer.has("FullName") ||
            util::trim(customer.find("FullName").text()) != util::trim(Name)) {
            Name.clear();
        }
        if (Name.empty()) {
            return;
        }
    }
    qb::read(customer, *this, kCustomerRet);
}

LegacyBool clsQBCustomer::CustomerAddNewReq() {
    ListID.clear();
    AddBalance = gNames.BALANCE;
    return qb::runCycle(kCustomerAdd, *this, "CustomerAddNewReq ", Name);
}

LegacyBool clsQBCustomer::CustomerDeleteReq() {
    return qb::runCycle(kCustomerDel, *this, {"CustomerDeleteReq ", ""}, Name);
}

LegacyBool clsQBCustomer::CustomerModifyReq() {
    return qb::runCycle(kCustomerMod, *this, "CustomerModifyReq ", Name);
}
