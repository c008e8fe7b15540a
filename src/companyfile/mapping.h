#pragma once

#include "companyfile/ledger.h"

#include <string>
#include <string_view>
#include <vector>

namespace companyfile {

/// One line of an account mapping.
struct MappingValue {
    std::string section;  ///< in lower case
    std::string key;      ///< as it stands
    std::string value;    ///< UTF-8, trimmed, never empty
};

/// The filled lines of an account mapping.
/// @param text  INI text in code page 1252.
std::vector<MappingValue> readMapping(std::string_view text);
/// The tax payee of a mapping; empty: it names none.
std::string taxPayee(const std::vector<MappingValue>& mapping);
/// Makes the accounts and terms that a mapping names and the file lacks.
void makeMappedEntries(Ledger& ledger, const std::vector<MappingValue>& mapping);

}  // namespace companyfile
