#pragma once

#include "companyfile/database.h"
#include "companyfile/decimal.h"
#include "companyfile/element.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace companyfile {

/// How a kind of transaction is booked.
enum class Family : std::uint8_t {
    sale,      ///< items against a deposit or receivable account, with tax and cost of goods
    journal,   ///< lines as given
    payment,   ///< deposit account against receivables
    purchase,  ///< items and expenses against payables
    order,     ///< nothing is booked
    internal,  ///< made by the file itself
};

/// One kind of transaction.
struct TransactionKind {
    std::string_view type;   ///< as in the request without Add
    std::string_view label;  ///< what messages call it
    Family family;
    int sign;                         ///< -1: everything on the other side
    std::string_view nameField;       ///< reference to the customer or vendor
    std::string_view accountField;    ///< reference to the account that the total goes to
    std::string_view accountSpecial;  ///< the account when that is not sent
};
/// The description of a type; null for what is no kind of transaction.
const TransactionKind* transactionKind(std::string_view type);

/// One line as it is kept.
struct Line {
    std::string kind;  ///< "SalesReceiptLine", "ExpenseLine", "JournalDebitLine"
    std::string lineId;
    std::int64_t item = 0;  ///< entry id; 0: none
    util::Money amount;     ///< share in the total, or debit less credit of a journal line
    Decimal stock;          ///< change of the quantity on hand
    Element fields;
};

/// One booking: debit above zero, credit below.
struct Posting {
    std::int64_t account = 0;
    util::Money amount;
    std::int64_t name = 0;  ///< customer or vendor; 0: none
};

/// A payment's share in an invoice.
struct Application {
    std::int64_t target = 0;
    util::Money amount;
};

struct Transaction {
    std::int64_t id = 0;  ///< running number over all types
    const TransactionKind* kind = nullptr;
    std::string txnId;
    std::string date;
    std::string refNumber;
    std::int64_t name = 0;
    util::Money total;
    util::Money tax;
    std::int64_t created = 0;
    std::int64_t modified = 0;
    std::int64_t editSequence = 0;
    Element header;
    std::vector<Line> lines;
    std::vector<Posting> postings;
    std::vector<Application> applied;
};

/// The transactions of the file. They stay in the file; only the reference numbers asked for are in
/// memory.
class Transactions {
public:
    explicit Transactions(Database& database);

    /// Forgets what is in memory, after another session or a rollback changed the file.
    void forget() { references_.clear(); }
    /// Writes a new transaction and numbers it and its lines.
    void save(Transaction& transaction, std::int64_t now);
    /// A whole transaction. @throws CallError kNotUsable when it is not there or of no known type.
    Transaction load(std::int64_t id);
    void remove(const Transaction& transaction);

    /// Ids of a type in order of entry, whose folded reference number passes a match.
    std::vector<std::int64_t>
    withReference(std::string_view type, std::string_view criterion, std::string_view folded);
    /// Ids of a type (empty: all types) in order of entry.
    std::vector<std::int64_t> ofType(std::string_view type);
    /// Ids of a type and a customer or vendor, by date and then in order of entry.
    std::vector<std::int64_t> ofName(std::string_view type, std::int64_t name);
    /// The id behind a TxnID; 0: none of that type.
    std::int64_t withTxnId(std::string_view type, std::string_view txnId);
    /// The reference number after the highest whole number in use.
    std::string nextReference(std::string_view type);
    /// What payments have taken of a transaction.
    util::Money appliedTo(std::int64_t target);
    /// The payments that were applied to a transaction, with their shares.
    std::vector<std::pair<std::int64_t, util::Money>> paymentsOf(std::int64_t target);
    /// Types' sums of postings by account id: debit, credit.
    std::map<std::int64_t, std::pair<util::Money, util::Money>> accountSums();
    /// True when some transaction holds a reference to the entry.
    bool refersTo(std::int64_t entryId, std::string_view listId);

private:
    using References = std::vector<std::pair<std::string, std::int64_t>>;
    References& references(std::string_view type);
    std::int64_t nextNumber(std::string_view key, std::int64_t count);
    void saveParts(Transaction& transaction, std::int64_t now);

    Database& database_;
    Statement insert_;
    Statement insertLine_;
    Statement insertPosting_;
    Statement insertApplied_;
    Statement number_;
    Statement select_;
    Statement selectLines_;
    Statement selectPostings_;
    Statement selectApplied_;
    std::map<std::string, References, std::less<>> references_;
};

}  // namespace companyfile
