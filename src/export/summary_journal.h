#pragma once

#include "util/money.h"

#include <string>

/// What the postings of both summary files share.
namespace exporting {

/// The two accounts of a booking, by their names in the company file.
struct JournalPair {
    const char* debit;
    const char* credit;
};
inline constexpr JournalPair kNegativeTenderAccounts = {"Negative Tenders", "Undeposited Funds"};
inline constexpr JournalPair kReturnAccounts = {"Returns", "Merchandise Sales"};
inline constexpr JournalPair kCostAccounts = {"Cost of Goods Sold", "Inventory Asset"};
inline constexpr JournalPair kVendorReturnAccounts = {"Accounts Payable", "Inventory Asset"};

/// Adds a debit line and a credit line of `amount`, without its sign, to `gaJournalLines`.
void addJournalPair(
    const JournalPair& accounts,
    util::Money amount,
    const std::string& memo,
    const std::string& entity = {}
);

/// Posts `gaJournalLines` under the date of `gsFromDate`; what the company file says is logged.
void postSummaryJournal(const std::string& refNumber);

/// Shows progress in the summary window and serves pending events.
void showSummaryStatus(const std::string& text);

/// Bytes of a summary file; empty when there is none. @throws PlatformError when it cannot be read.
std::string summaryText(const std::string& fileName);

/// Tells in a box and in the log that something of a summary was not posted.
void tellUnposted(const std::string& text);

}  // namespace exporting
