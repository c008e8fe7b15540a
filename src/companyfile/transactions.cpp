#include "companyfile/transactions.h"

#include "companyfile/text.h"

#include <algorithm>

namespace companyfile {

namespace {

constexpr std::string_view kReceivable = "AccountsReceivable";
constexpr std::string_view kPayable = "AccountsPayable";
constexpr std::string_view kUndeposited = "UndepositedFunds";
constexpr TransactionKind kKinds[] = {
    {"SalesReceipt",
     "Sales Receipt",
     Family::sale,
     1,
     "CustomerRef",
     "DepositToAccountRef",
     kUndeposited},
    {"Invoice", "Invoice", Family::sale, 1, "CustomerRef", "ARAccountRef", kReceivable},
    {"CreditMemo", "Credit Memo", Family::sale, -1, "CustomerRef", "ARAccountRef", kReceivable},
    {"JournalEntry", "General Journal transaction", Family::journal, 1, "", "", ""},
    {"ReceivePayment",
     "Received Payment",
     Family::payment,
     1,
     "CustomerRef",
     "DepositToAccountRef",
     kUndeposited},
    {"PurchaseOrder", "Purchase Order", Family::order, 1, "VendorRef", "", ""},
    {"ItemReceipt", "Item Receipt", Family::purchase, 1, "VendorRef", "APAccountRef", kPayable},
    {"VendorCredit", "Vendor Credit", Family::purchase, -1, "VendorRef", "APAccountRef", kPayable},
    {"OpeningBalance", "Opening Balance", Family::internal, 1, "", "", ""},
    {"InventoryAdjustment", "Inventory Adjustment", Family::internal, 1, "", "", ""},
};

std::vector<std::int64_t> idsOf(Statement& statement) {
    std::vector<std::int64_t> ids;
    while (statement.step()) {
        ids.push_back(statement.integer(0));
    }
    return ids;
}

}  // namespace

const TransactionKind* transactionKind(std::string_view type) {
    const auto* found =
        std::find_if(std::begin(kKinds), std::end(kKinds), [&](const TransactionKind& kind) {
            return kind.type == type;
        });
    return found == std::end(kKinds) ? nullptr : found;
}

Transactions::Transactions(Database& database)
    : database_(database),
      insert_(database.prepare("INSERT INTO txn VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")),
      insertLine_(database.prepare("INSERT INTO line VALUES (?, ?, ?, ?, ?, ?, ?, ?)")),
      insertPosting_(database.prepare("INSERT INTO posting VALUES (?, ?, ?, ?, ?)")),
      insertApplied_(database.prepare("INSERT INTO applied VALUES (?, ?, ?)")),
      number_(database.prepare("UPDATE meta SET value = value + ? WHERE key = ? RETURNING value")),
      select_(database.prepare("SELECT * FROM txn WHERE id = ?")),
      selectLines_(database.prepare("SELECT * FROM line WHERE txn = ? ORDER BY position")),
      selectPostings_(database.prepare(
          "SELECT account, amount, name FROM posting WHERE txn = ? ORDER BY position"
      )),
      selectApplied_(
          database.prepare("SELECT target, amount FROM applied WHERE payment = ? ORDER BY target")
      ) {}

std::int64_t Transactions::nextNumber(std::string_view key, std::int64_t count) {
    number_.bind(count, key).step();
    const std::int64_t last = number_.integer(0);
    number_.step();
    return last - count + 1;
}

void Transactions::save(Transaction& transaction, std::int64_t now) {
    transaction.id = nextNumber("transactions", 1);
    transaction.txnId = idText(transaction.id, now);
    transaction.created = transaction.modified = transaction.editSequence = now;
    insert_
        .bind(
            transaction.id,
            transaction.kind->type,
            transaction.txnId,
            transaction.date,
            transaction.refNumber,
            transaction.name,
            cents(transaction.total),
            cents(transaction.tax),
            now,
            now,
            now,
            fieldsXml(transaction.header)
        )
        .run();
    saveParts(transaction, now);
    const auto loaded = references_.find(transaction.kind->type);
    if (loaded != references_.end()) {
        loaded->second.emplace_back(folded(transaction.refNumber), transaction.id);
    }
}

void Transactions::saveParts(Transaction& transaction, std::int64_t now) {
    std::int64_t number = nextNumber("lines", static_cast<std::int64_t>(transaction.lines.size()));
    std::int64_t position = 0;
    for (Line& line : transaction.lines) {
        line.lineId = idText(number++, now);
        insertLine_
            .bind(
                transaction.id,
                ++position,
                line.kind,
                line.lineId,
                line.item,
                cents(line.amount),
                line.stock.raw,
                fieldsXml(line.fields)
            )
            .run();
    }
    position = 0;
    for (const Posting& posting : transaction.postings) {
        insertPosting_
            .bind(transaction.id, ++position, posting.account, cents(posting.amount), posting.name)
            .run();
    }
    for (const Application& share : transaction.applied) {
        insertApplied_.bind(transaction.id, share.target, cents(share.amount)).run();
    }
}

Transaction Transactions::load(std::int64_t id) {
    Transaction result;
    const bool isThere = select_.bind(id).step();
    result.id = id;
    result.kind = isThere ? transactionKind(select_.text(1)) : nullptr;
    if (result.kind == nullptr) {
        database_.damaged("transaction " + std::to_string(id) + " is missing or of no known type");
    }
    result.txnId = select_.text(2);
    result.date = select_.text(3);
    result.refNumber = select_.text(4);
    result.name = select_.integer(5);
    result.total = fromCents(select_.integer(6));
    result.tax = fromCents(select_.integer(7));
    result.created = select_.integer(8);
    result.modified = select_.integer(9);
    result.editSequence = select_.integer(10);
    result.header = fieldsFrom(select_.text(11));
    select_.step();
    selectLines_.bind(id);
    while (selectLines_.step()) {
        Line line;
        line.kind = selectLines_.text(2);
        line.lineId = selectLines_.text(3);
        line.item = selectLines_.integer(4);
        line.amount = fromCents(selectLines_.integer(5));
        line.stock = {selectLines_.integer(6)};
        line.fields = fieldsFrom(selectLines_.text(7));
        result.lines.push_back(std::move(line));
    }
    selectPostings_.bind(id);
    while (selectPostings_.step()) {
        result.postings.push_back(
            {selectPostings_.integer(0),
             fromCents(selectPostings_.integer(1)),
             selectPostings_.integer(2)}
        );
    }
    selectApplied_.bind(id);
    while (selectApplied_.step()) {
        result.applied.push_back({selectApplied_.integer(0), fromCents(selectApplied_.integer(1))});
    }
    return result;
}

void Transactions::remove(const Transaction& transaction) {
    for (const char* sql :
         {"DELETE FROM txn WHERE id = ?",
          "DELETE FROM line WHERE txn = ?",
          "DELETE FROM posting WHERE txn = ?",
          "DELETE FROM applied WHERE payment = ?"}) {
        database_.prepare(sql).bind(transaction.id).run();
    }
    const auto loaded = references_.find(transaction.kind->type);
    if (loaded != references_.end()) {
        std::erase_if(loaded->second, [&](const auto& each) {
            return each.second == transaction.id;
        });
    }
}

Transactions::References& Transactions::references(std::string_view type) {
    const auto [place, isNew] = references_.try_emplace(std::string(type));
    if (isNew) {
        Statement rows = database_.prepare("SELECT id, ref FROM txn WHERE type = ? ORDER BY id");
        rows.bind(type);
        while (rows.step()) {
            place->second.emplace_back(folded(rows.text(1)), rows.integer(0));
        }
    }
    return place->second;
}

std::vector<std::int64_t> Transactions::withReference(
    std::string_view type, std::string_view criterion, std::string_view folded
) {
    std::vector<std::int64_t> ids;
    for (const auto& [reference, id] : references(type)) {
        if (matches(criterion, reference, folded)) {
            ids.push_back(id);
        }
    }
    return ids;
}

std::vector<std::int64_t> Transactions::ofType(std::string_view type) {
    Statement rows = database_.prepare("SELECT id FROM txn WHERE type = ?1 OR ?1 = '' ORDER BY id");
    return idsOf(rows.bind(type));
}

std::vector<std::int64_t> Transactions::ofName(std::string_view type, std::int64_t name) {
    Statement rows =
        database_.prepare("SELECT id FROM txn WHERE name = ? AND type = ? ORDER BY date, id");
    return idsOf(rows.bind(name, type));
}

std::int64_t Transactions::withTxnId(std::string_view type, std::string_view txnId) {
    Statement rows = database_.prepare("SELECT id FROM txn WHERE txn_id = ? AND type = ?");
    return rows.bind(txnId, type).step() ? rows.integer(0) : 0;
}

std::string Transactions::nextReference(std::string_view type) {
    std::int64_t highest = 0;
    constexpr std::size_t kMostDigits = 10;
    for (const auto& [reference, id] : references(type)) {
        const bool number = !reference.empty() && reference.size() <= kMostDigits &&
                            reference.find_first_not_of("0123456789") == std::string::npos;
        highest = std::max<std::int64_t>(highest, number ? std::stoll(reference) : 0);
    }
    return std::to_string(highest + 1);
}

util::Money Transactions::appliedTo(std::int64_t target) {
    Statement row = database_.prepare("SELECT total(amount) FROM applied WHERE target = ?");
    return row.bind(target).step() ? fromCents(row.integer(0)) : util::Money();
}

std::vector<std::pair<std::int64_t, util::Money>> Transactions::paymentsOf(std::int64_t target) {
    std::vector<std::pair<std::int64_t, util::Money>> payments;
    Statement rows =
        database_.prepare("SELECT payment, amount FROM applied WHERE target = ? ORDER BY payment");
    rows.bind(target);
    while (rows.step()) {
        payments.emplace_back(rows.integer(0), fromCents(rows.integer(1)));
    }
    return payments;
}

std::map<std::int64_t, std::pair<util::Money, util::Money>> Transactions::accountSums() {
    std::map<std::int64_t, std::pair<util::Money, util::Money>> sums;
    Statement rows = database_.prepare("SELECT account, sum(max(amount, 0)), sum(max(-amount, 0)) "
                                       "FROM posting GROUP BY account");
    while (rows.step()) {
        sums[rows.integer(0)] = {fromCents(rows.integer(1)), fromCents(rows.integer(2))};
    }
    return sums;
}

bool Transactions::refersTo(std::int64_t entryId, std::string_view listId) {
    for (const char* sql :
         {"SELECT 1 FROM posting WHERE account = ?1 OR name = ?1 LIMIT 1",
          "SELECT 1 FROM txn WHERE name = ?1 OR instr(fields, ?2) > 0 LIMIT 1",
          "SELECT 1 FROM line WHERE item = ?1 OR instr(fields, ?2) > 0 LIMIT 1"}) {
        Statement row = database_.prepare(sql);
        if (std::string_view(sql).find("?2") == std::string_view::npos
                ? row.bind(entryId).step()
                : row.bind(entryId, listId).step()) {
            return true;
        }
    }
    return false;
}

}  // namespace companyfile
