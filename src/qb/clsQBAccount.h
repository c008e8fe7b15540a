#pragma once

#include "platform/ports/quickbooks_session.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <cstdint>
#include <string>
#include <vector>

/// An account of the company file.
class clsQBAccount {
public:
    std::string AccountNumber;
    std::string
        AccountType;   ///< number of the kind in decimal: 0 AccountsPayable ... 15 NonPosting
    std::string Name;  ///< also the key of AccountSearchRq
    util::Money Balance;
    std::string Desc;
    std::string SpecialAccountType;
    std::string FullName;  ///< names of the parents and its own, joined by ":"
    std::string ListID;
    std::string ParentName;
    std::int32_t Sublevel = 0;
    util::Money TotalBalance;
    std::string RetType;  ///< name of the element that it was read from

    /// Appends a query for accounts whose name contains `Name` to a fresh request set. Sends
    /// nothing.
    /// @return kNo when `Name` is blank or the set cannot be made.
    LegacyBool AccountSearchRq();
    /// Reads the full name from an account element.
    void AccountKeyRet_get(const platform::QBElement& account);
    /// Reads every member that the account element holds.
    void AccountInfoRet_get(const platform::QBElement& account);
};

/// The active accounts of the company file, from index 0, as gpAccountQuery_populated left them.
extern std::vector<clsQBAccount> gaQBAccounts;

/// Sends a query for all active accounts and reads nothing.
/// @return result of the send; the cause of a failure is in `gsQBStatusMessage`.
LegacyBool gfbAccountQuery_requested();

/// Fills `gaQBAccounts` from the answer to gfbAccountQuery_requested. An answer with a failed
/// status leaves the list as it is. Reports nothing.
void gpAccountQuery_populated();
