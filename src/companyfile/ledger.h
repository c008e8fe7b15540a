#pragma once

#include "companyfile/database.h"
#include "companyfile/document.h"
#include "companyfile/lists.h"
#include "companyfile/status.h"
#include "companyfile/transactions.h"

#include <cstdint>
#include <functional>
#include <optional>
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
    std::string exchange(const std::string& document);
    /// Carries out `work` as one unit: kept when it returns, undone when it throws.
    void change(const std::function<void()>& work);

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
    Answer carryOut(Request& request, const Document& document);
    void refresh();

    Database database_;
    Lists lists_;
    Transactions transactions_;
    std::int64_t foreignChanges_ = 0;
    bool stale_ = false;
};

/// The moment as YYYY-MM-DDTHH:MM:SS+00:00.
std::string momentText(std::int64_t seconds);

// The requests, by what they do.
Answer answerHostQuery(const Ledger& ledger, const Document& document);
Answer addEntry(Ledger& ledger, const ListKind& kind, Request& request);
Answer modifyEntry(Ledger& ledger, const ListKind& kind, Request& request);
Answer deleteEntry(Ledger& ledger, const Request& request);
/// @param kinds  words of the kinds that the query covers.
Answer queryEntries(Ledger& ledger, std::string_view kinds, const Request& request);
Answer addTransaction(Ledger& ledger, const TransactionKind& kind, Request& request);
Answer queryTransactions(Ledger& ledger, const TransactionKind& kind, const Request& request);
Answer deleteTransaction(Ledger& ledger, const Request& request);

/// Makes a list entry from fields in wire form and wire order, as an add request does.
Entry& makeEntry(Ledger& ledger, const ListKind& kind, Element fields);

}  // namespace companyfile
