#pragma once

#include "qb/return_list.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <string>

/// A customer: fill the members, then call a request. Outcome texts are in `gsQBStatusMessage`.
class clsQBCustomer {
public:
    std::string ListID;
    std::string EditSequence;
    std::string FirstName;
    std::string LastName;
    std::string CompanyName;
    std::string Name;           ///< the key: the customer's code at the point of sale
    LegacyBool IsActive = kNo;  ///< not sent: an added customer is always active
    std::string Address1;       ///< first address line of a change
    std::string Address2;
    std::string Address3;
    std::string City;
    std::string State;
    std::string PostalCode;
    std::string Phone;
    std::string Fax;
    std::string Email;
    util::Money OpenBalance;  ///< balance as read, or opening balance to send
    std::string JobType;
    std::string ReadAddress1;  ///< first address line as read; the one that an add sends
    std::string SalesTaxCode;
    util::Money AddBalance;  ///< balance of the `gNames` record at the last add
    util::Money CreditLimit;
    std::string Terms;

    /// Looks for the customer whose name is exactly the code in the `gNames` record, among those
    /// that begin with `Name`, and reads it. `Name` is the record's code afterwards.
    /// @return kYes when found; kNo also when `Name` is blank (nothing is sent) or the query
    /// failed.
    LegacyBool CustomerSearchRq();
    /// Reads `Name` from the element at `index` of the last search.
    void CustomerKeyRet_get(int index);
    /// Reads the members from the element at `index`. With `compare`, an element whose full name is
    /// not `Name` empties `Name` and is not read.
    void CustomerInfoRet_get(int index, LegacyBool compare);
    /// Adds the customer. @return kYes when the company file took it.
    LegacyBool CustomerAddNewReq();
    /// Deletes the customer of `ListID`.
    LegacyBool CustomerDeleteReq();
    /// Changes the customer of `ListID`, which must be in the state of `EditSequence`.
    LegacyBool CustomerModifyReq();

private:
    qb::ReturnList found_;
};
