#pragma once

#include "companyfile/ledger.h"

namespace companyfile {

/// The account that fulfils a purpose ("UndepositedFunds"); made on first need.
Entry& specialAccount(Ledger& ledger, std::string_view special);
/// The purpose that a new account fulfils by its name and type; empty: none.
std::string_view specialOf(Ledger& ledger, const Entry& account);
/// The AccountType word of an account.
std::string_view accountType(const Entry& account);
/// True for the types whose balance is shown as a debit (what one owns or spends).
bool isDebitType(std::string_view accountType);

}  // namespace companyfile
