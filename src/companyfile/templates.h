#pragma once

#include "companyfile/ledger.h"

#include <string_view>

namespace companyfile {

/// True for a template that there is: "" (every new company), "retail", "retail-summary".
bool isTemplate(std::string_view templateName);

/// Fills a new file with what the template holds, and with the accounts, terms and tax payee that
/// an account mapping names.
/// @param mapping  text of the mapping (INI) in code page 1252; empty: none.
void fillFromTemplate(Ledger& ledger, std::string_view templateName, std::string_view mapping);

}  // namespace companyfile
