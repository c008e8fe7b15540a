#pragma once

#include "companyfile/company_file.h"
#include "companyfile/ledger.h"

#include <string>
#include <vector>

namespace companyfile {

/// A transaction as a reconciliation looks at it.
TransactionSummary summaryOf(Ledger& ledger, const Transaction& transaction);
/// As CompanyFile::dump.
std::string dumpOf(Ledger& ledger);
/// As CompanyFile::check.
std::vector<std::string> findingsIn(Ledger& ledger);

}  // namespace companyfile
