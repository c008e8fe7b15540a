#include "qb/clsQBEmployee.h"

#include "qb/request_cycle.h"
#include "qb/wire_values.h"
#include "util/conversions.h"

namespace {

using qb::Form;
using qb::request;
using qb::send;
using qb::When;

constexpr qb::Search kEmployeeSearch =
    qb::nameSearch("EmployeeQuery", platform::ResponseType::employeeQuery);
constexpr qb::Search kOtherNameSearch =
    qb::nameSearch("OtherNameQuery", platform::ResponseType::otherNameQuery);

constexpr qb::Take<clsQBEmployee> kEmployeeRet[] = {
    {"ListID", &clsQBEmployee::ListID},
    {"EditSequence", &clsQBEmployee::EditSequence},
    {"Name", &clsQBEmployee::Name},
    {"FirstName", &clsQBEmployee::FirstName},
    {"LastName", &clsQBEmployee::LastName},
    {"MiddleName", &clsQBEmployee::MiddleName},
};

std::string employeeType(const clsQBEmployee& employee) {
    return qb::wireWord("EmployeeAdd", "EmployeeType", employee.EmployeeType);
}

std::string gender(const clsQBEmployee& employee) {
    return qb::wireWord("EmployeeAdd", "Gender", employee.Gender);
}

constexpr auto kEmployeeAdd = request(
    "EmployeeAdd",
    // The format's table has no place for the name: it stands first, as in the other name lists.
    send("Name", &clsQBEmployee::Name),
    send("EmployeeType", &employeeType),
    send("AccountNumber", &clsQBEmployee::AccountNumber),
    send("FirstName", &clsQBEmployee::FirstName),
    send("LastName", &clsQBEmployee::LastName),
    send("Gender", &gender),
    send("MiddleName", &clsQBEmployee::MiddleName),
    send("BirthDate", &clsQBEmployee::BirthDate, When::trimmed, Form::date),
    send("HiredDate", &clsQBEmployee::HiredDate, When::trimmed, Form::date),
    send("ReleasedDate", &clsQBEmployee::ReleasedDate, When::trimmed, Form::date),
    send("IsActive", &clsQBEmployee::IsActive),
    send("SSN", &clsQBEmployee::SSN),
    send("Salutation", &clsQBEmployee::Salutation),
    send("EmployeeAddress/Addr1", &clsQBEmployee::Address1),
    send("EmployeeAddress/Addr2", &clsQBEmployee::Address2, When::filled),
    send("EmployeeAddress/Addr3", &clsQBEmployee::Address3, When::filled),
    send("EmployeeAddress/City", &clsQBEmployee::City, When::filled),
    send("EmployeeAddress/State", &clsQBEmployee::State, When::filled),
    send("EmployeeAddress/PostalCode", &clsQBEmployee::PostalCode, When::filled),
    send("Phone", &clsQBEmployee::Phone, When::filled),
    send("AltPhone", &clsQBEmployee::AltPhone, When::filled),
    send("Email", &clsQBEmployee::Email, When::filled)
);

constexpr auto kOtherNameAdd = request(
    "OtherNameAdd",
    send("Name", &clsQBEmployee::Name),
    send("AccountNumber", &clsQBEmployee::AccountNumber),
    send("FirstName", &clsQBEmployee::FirstName),
    send("LastName", &clsQBEmployee::LastName),
    send("MiddleName", &clsQBEmployee::MiddleName),
    send("IsActive", &clsQBEmployee::IsActive),
    send("Salutation", &clsQBEmployee::Salutation),
    send("OtherNameAddress/Addr1", &clsQBEmployee::Address1),
    send("OtherNameAddress/Addr2", &clsQBEmployee::Address2, When::filled),
    send("OtherNameAddress/Addr3", &clsQBEmployee::Address3, When::filled),
    send("OtherNameAddress/City", &clsQBEmployee::City, When::filled),
    send("OtherNameAddress/State", &clsQBEmployee::State, When::filled),
    send("OtherNameAddress/PostalCode", &clsQBEmployee::PostalCode, When::filled),
    send("Phone", &clsQBEmployee::Phone, When::filled),
    send("AltPhone", &clsQBEmployee::AltPhone, When::filled)
);

/// Searches one of the two lists; false without a word for a blank name.
bool searchByName(
    const clsQBEmployee& employee,
    const qb::Search& search,
    const char* literal,
    qb::ReturnList& found
) {
    return !util::trim(employee.Name).empty() &&
           qb::runSearch(search, employee.Name, literal, employee.Name, found);
}

}  // namespace

LegacyBool clsQBEmployee::EmployeeSearchRq() {
    constexpr char kLiteral[] = "EmployeeSearchRq ";
    return qb::handled(kLiteral, Name, [&] {
        if (!searchByName(*this, kEmployeeSearch, kLiteral, found_)) {
            return false;
        }
        EmployeeInfoRet_get(0);
        return true;
    });
}

void clsQBEmployee::EmployeeInfoRet_get(int index) {
    qb::read(found_.at(index), *this, kEmployeeRet);
}

LegacyBool clsQBEmployee::EmployeeAddNewReq() {
    return qb::runCycle(kEmployeeAdd, *this, "EmployeeAddNewReq ", Name);
}

LegacyBool clsQBEmployee::OtherNameAddNewReq() {
    return qb::runCycle(kOtherNameAdd, *this, "OtherNameAddNewReq ", Name);
}

LegacyBool clsQBEmployee::OtherNameSearchRq() {
    constexpr char kLiteral[] = "OtherNameSearchRq ";
    return qb::handled(kLiteral, Name, [&] {
        return searchByName(*this, kOtherNameSearch, kLiteral, found_);
    });
}
