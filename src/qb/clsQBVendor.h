#pragma once

#include "qb/return_list.h"
#include "util/date_time.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <string>

/// A vendor: fill the members, then call a request. Members are named after the wire's fields.
class clsQBVendor {
public:
    std::string AccountNumber;
    std::string AltContact;
    std::string AltPhone;
    util::Money Balance;  ///< as read
    std::string CompanyName;
    std::string Contact;
    util::Money CreditLimit;
    std::string Email;
    std::string Fax;
    std::string FirstName;
    LegacyBool IsActive = kNo;  ///< not sent
    LegacyBool IsVendorEligibleFor1099 = kNo;
    std::string LastName;
    std::string ListID;
    std::string MiddleName;
    std::string Name;  ///< the key: the vendor's code
    std::string NameOnCheck;
    std::string Notes;
    util::Money OpenBalance;
    util::DateTime OpenBalanceDate;
    std::string Phone;
    std::string Salutation;
    std::string TermsName;
    std::string Addr1;
    std::string Addr2;
    std::string Addr3;
    std::string City;
    std::string State;
    std::string PostalCode;
    std::string VendorTaxIdent;
    std::string EditSequence;

    /// Looks for vendors whose name begins with `Name` and reads the first, whatever follows in its
    /// name; `gnQBReturnedCount` tells how many there are. @return kNo when there is none.
    LegacyBool VendorSearchRq();
    /// Reads `Name` from the element at `index` of the last search.
    void VendorKeyRet_get(int index);
    /// Adds a credit for the purchase order in `goQBPO`: one line of item "1" with the amount of
    /// the first line of `gaQBPOLines`, without its sign.
    LegacyBool VendorCreditAddReq();
    /// Reads the members, but not `Name`, from the element at `index` of the last search.
    void VendorInfoRet_get(int index);
    /// Adds the vendor. @return kYes when the company file took it.
    LegacyBool VendorAddRequest();
    /// Changes the vendor of `ListID`, which must be in the state of `EditSequence`.
    LegacyBool VendorModifyReq();
    /// Deletes the vendor of `ListID`. A refusal is shown in a box. The request goes out twice.
    LegacyBool VendorDeleteRequest();

private:
    qb::ReturnList found_;
};
