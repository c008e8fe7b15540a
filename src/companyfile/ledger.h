#pragma once

#include "companyfile/database.h"
#include "companyfile/document.h"
#include "companyfile/lists.h"
#include "companyfile/status.h"
#include "companyfile/transactions.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace companyfile {

/// What one request brought.
struct Answer {
    Status status;
    std::vector<Element> records;
    bool isQuery = false;  ///< may carry retCount
};

/// One open company file: its parts and the carrying out of documents.
class Ledger {
public:
    Ledger(const std::string& path, Database::Mode mode);

    /// As CompanyFile::exchange.
    std::string exchange(const std::string& text);
    /// Carries out `work` as one unit: kept when it returns, undone when it throws.
    void change(const std::function<void()>& work);
    /// Carries out `work` on the state that the file has now; nothing may be changed in it.
    void look(const std::function<void()>& work);

    Lists& lists() { return lists_; }
    Transactions& transactions() { return transactions_; }
    Database& database() { return database_; }

    /// The moment of a change, in seconds since 1970. The file's own clock goes on by one with each
    /// call.
    std::int64_t now();
    /// The date of the day, YYYY-MM-DD.
    std::string today();

    std::vector<std::string> versions;
    std::function<std::int64_t()> clock;  ///< empty: the file's own

private:
    void within(bool writes, const std::function<void()>& work);
    Answer carryOut(Request& request, const Document& document);
    Answer refused(const Request& request, const StatusError& error, bool isHalfDone);
    void refresh();

    Database database_;
    Lists lists_;
    Transactions transactions_;
    Statement tick_;
    Statement readClock_;
    std::int64_t foreignChanges_ = 0;
    bool stale_ = true;  ///< what is in memory has to be read again
};

/// The moment as YYYY-MM-DDTHH:MM:SS+00:00.
std::string momentText(std::int64_t seconds);

// The requests, by what they do.
Answer answerHostQuery(const Ledger& ledger, const Document& document);
Answer addEntry(Ledger& ledger, const ListKind& kind, Request& request);
Answer modifyEntry(Ledger& ledger, const ListKind& kind, Request& request);
Answer deleteEntry(Ledger& ledger, Request& request);
/// @param kinds  words of the kinds that the query covers, all of one name space.
Answer queryEntries(Ledger& ledger, std::string_view kinds, Request& request);
Answer addTransaction(Ledger& ledger, const TransactionKind& kind, Request& request);
Answer queryTransactions(Ledger& ledger, const TransactionKind& kind, Request& request);
Answer deleteTransaction(Ledger& ledger, Request& request);

/// Makes a list entry from fields in wire form, as an add request does.
Entry& makeEntry(Ledger& ledger, const ListKind& kind, Element fields);

/// The record of an entry as answers show it.
Element entryRecord(Ledger& ledger, const Entry& entry);
/// The record of a transaction as answers show it.
/// @param withLinks  with the transactions that were applied to it.
Element
transactionRecord(Ledger& ledger, const Transaction& transaction, bool withLines, bool withLinks);
/// The part of a record that answers show of one line.
Element lineRecord(Ledger& ledger, const TransactionKind& kind, const Line& line);

/// Outcome of a query by ids or names, of which some may be unknown.
struct Wanted {
    std::size_t asked = 0;
    std::string unknown;  ///< the first one that is not there
};
/// The status of a query: 0, 1 without records, 500 or 3120 when something asked for is unknown.
/// @throws StatusError 3120 for a single unknown id.
Status queryStatus(const std::vector<Element>& records, const Wanted& ids, const Wanted& names);
/// Fails with 3000 when `id` has not the form of an id.
void requireIdForm(std::string_view id, std::string_view field);

}  // namespace companyfile
