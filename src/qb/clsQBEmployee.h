#pragma once

#include "qb/return_list.h"
#include "util/legacy_bool.h"

#include <string>

/// An employee, or an entry of the list of other names. Fill the members, then call a request.
class clsQBEmployee {
public:
    std::string ListID;
    std::string EditSequence;
    std::string Name;  ///< the key
    std::string FirstName;
    std::string LastName;
    std::string MiddleName;
    std::string Gender;     ///< number in decimal: 0 Male, 1 Female
    std::string BirthDate;  ///< date text; blank: not sent
    std::string Salutation;
    std::string HiredDate;     ///< date text; blank: not sent
    std::string ReleasedDate;  ///< date text; blank: not sent
    LegacyBool IsActive = kNo;
    std::string Address1;
    std::string Address2;
    std::string Address3;
    std::string City;
    std::string State;
    std::string PostalCode;
    std::string Phone;
    std::string AltPhone;
    std::string Email;
    std::string EmployeeType;  ///< number in decimal: 0 Officer, 1 Owner, 2 Regular, 3 Statutory
    std::string AccountNumber;
    std::string SSN;

    /// Reads the first employee whose name begins with `Name`, whatever follows in its name.
    /// @return kNo when there is none, `Name` is blank or the query failed.
    LegacyBool EmployeeSearchRq();
    /// Reads the members from the element at `index` of the last search.
    void EmployeeInfoRet_get(int index);
    /// Adds an employee. @return kYes when the company file took it.
    LegacyBool EmployeeAddNewReq();
    /// Adds an entry to the list of other names. @return kYes when the company file took it.
    LegacyBool OtherNameAddNewReq();
    /// Is there another name that begins with `Name`? Reads nothing into the members.
    LegacyBool OtherNameSearchRq();

private:
    qb::ReturnList found_;
};
