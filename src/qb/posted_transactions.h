#pragma once

#include <string>
#include <vector>

namespace qb {

/// A transaction that stands in the company file.
struct PostedTransaction {
    std::string DueDate;  ///< eight digits; empty for kinds without one
};

/// Asks the company file for the transactions of a kind ("JournalEntry", "Invoice") that bear
/// exactly the number `refNumber`. The request goes out in a set of its own and shows nothing; the
/// link's request set, answer and status texts stay as they are.
/// @throws PlatformError, BasicError when there is no answer to the question.
std::vector<PostedTransaction>
postedTransactions(const std::string& kind, const std::string& refNumber);

}  // namespace qb
