#include "companyfile/accounts.h"
#include "companyfile/call_error.h"
#include "companyfile/dump.h"
#include "companyfile/references.h"

#include <map>
#include <set>

namespace companyfile {

namespace {

/// A question to the file whose every row is a finding: what it says begins with the sentence.
struct Question {
    const char* sql;
    std::string_view sentence;
};
constexpr Question kQuestions[] = {
    {"SELECT txn FROM posting GROUP BY txn HAVING sum(amount) <> 0",
     "The debits and credits are not equal in transaction "},
    {"SELECT txn FROM posting WHERE amount = 0", "A booking of nothing stands in transaction "},
    {"SELECT txn FROM posting WHERE account NOT IN (SELECT id FROM entry WHERE kind = 'Account')",
     "A booking names an account that is not there in transaction "},
    {"SELECT txn FROM posting WHERE name <> 0 AND name NOT IN (SELECT id FROM entry)",
     "A booking names somebody who is not there in transaction "},
    {"SELECT txn FROM line WHERE item <> 0 AND item NOT IN (SELECT id FROM entry)",
     "A line names an item that is not there in transaction "},
    {"SELECT id FROM txn WHERE name <> 0 AND name NOT IN (SELECT id FROM entry)",
     "The customer or vendor is not there in transaction "},
    {"SELECT txn FROM line WHERE txn NOT IN (SELECT id FROM txn) GROUP BY txn",
     "There are lines without their transaction "},
    {"SELECT txn FROM posting WHERE txn NOT IN (SELECT id FROM txn) GROUP BY txn",
     "There are bookings without their transaction "},
    {"SELECT payment FROM applied WHERE payment NOT IN (SELECT id FROM txn) OR target NOT IN "
     "(SELECT id FROM txn)",
     "A share of what is not there belongs to payment "},
    {"SELECT target FROM applied JOIN txn ON txn.id = target GROUP BY target "
     "HAVING sum(amount) > total",
     "More than the amount due was paid for transaction "},
    {"SELECT payment FROM applied JOIN txn ON txn.id = payment GROUP BY payment "
     "HAVING sum(amount) > total",
     "More than the payment was applied by transaction "},
    {"SELECT id FROM txn LEFT JOIN line ON line.txn = txn.id WHERE type NOT IN ('JournalEntry', "
     "'ReceivePayment', 'OpeningBalance') GROUP BY id HAVING coalesce(sum(amount), 0) + tax <> "
     "total",
     "The lines and the tax do not make the total of transaction "},
    {"SELECT id FROM txn LEFT JOIN line ON line.txn = txn.id WHERE type = 'JournalEntry' "
     "GROUP BY id HAVING coalesce(sum(max(amount, 0)), 0) <> total",
     "The debit lines do not make the total of transaction "},
    {"SELECT id FROM entry WHERE parent <> 0 AND parent NOT IN (SELECT id FROM entry)",
     "The parent is not there of entry "},
    {"SELECT id FROM txn WHERE id > (SELECT value FROM meta WHERE key = 'transactions')",
     "The counter of transactions is behind transaction "},
    {"SELECT id FROM entry WHERE id > (SELECT value FROM meta WHERE key = 'entries')",
     "The counter of entries is behind entry "},
};

class Check {
public:
    explicit Check(Ledger& ledger) : ledger_(ledger) {}

    std::vector<std::string> run() {
        checkStore();
        if (!findings_.empty()) {
            return findings_;  // what a damaged store says further is not to be trusted
        }
        for (const Question& question : kQuestions) {
            ask(question);
        }
        checkKinds();
        checkFigures();
        checkEntries();
        checkTransactions();
        return findings_;
    }

private:
    void find(std::string finding) { findings_.push_back(std::move(finding)); }

    void checkStore() {
        Statement rows = ledger_.database().prepare("PRAGMA integrity_check");
        while (rows.step()) {
            if (rows.text(0) != "ok") {
                find("The file is damaged: " + rows.text(0) + ".");
            }
        }
    }

    void ask(const Question& question) {
        Statement rows = ledger_.database().prepare(question.sql);
        while (rows.step()) {
            find(std::string(question.sentence) + rows.text(0) + ".");
        }
    }

    void checkKinds() {
        Statement entries = ledger_.database().prepare("SELECT id, kind FROM entry");
        while (entries.step()) {
            if (listKind(entries.text(1)) == nullptr) {
                find("Entry " + entries.text(0) + " is of an unknown kind.");
            }
        }
        Statement transactions = ledger_.database().prepare("SELECT id, type FROM txn");
        while (transactions.step()) {
            if (transactionKind(transactions.text(1)) == nullptr) {
                find("Transaction " + transactions.text(0) + " is of an unknown type.");
            }
        }
    }

    /// Sums of the bookings and lines against the figures that the entries keep.
    void checkFigures() {
        std::map<std::int64_t, util::Money> balances;
        Statement postings =
            ledger_.database().prepare("SELECT account, amount, name FROM posting");
        while (postings.step()) {
            const util::Money amount = fromCents(postings.integer(1));
            balances[postings.integer(0)] += amount;
            const Entry* account = ledger_.lists().byId(postings.integer(0));
            const std::string_view type = account == nullptr ? "" : accountType(*account);
            if (type == "AccountsReceivable") {
                balances[postings.integer(2)] += amount;
            } else if (type == "AccountsPayable") {
                balances[postings.integer(2)] -= amount;
            }
        }
        std::map<std::int64_t, Decimal> stock;
        Statement lines =
            ledger_.database().prepare("SELECT item, sum(stock) FROM line GROUP BY 1");
        while (lines.step()) {
            stock[lines.integer(0)] = {lines.integer(1)};
        }
        for (const auto& [id, entry] : ledger_.lists().all()) {
            if (entry.balance != balances[id]) {
                find("The balance of " + entry.fullName + " is not the sum of its bookings.");
            }
            if (entry.quantity != stock[id]) {
                find("The stock of " + entry.fullName + " is not the sum of its movements.");
            }
        }
    }

    void checkReferences(const std::string& owner, const Element& fields) {
        for (const Element& child : fields.children) {
            if (!isReference(child)) {
                checkReferences(owner, child);
            } else if (ledger_.lists().byListId(child.at("ListID")) == nullptr) {
                find(owner + " refers to a " + child.name + " that is not there.");
            }
        }
    }

    void checkEntries() {
        std::set<std::pair<NameSpace, std::string>> names;
        for (const auto& [id, entry] : ledger_.lists().all()) {
            if (!names.emplace(entry.kind->space, entry.foldedName).second) {
                find("The name " + entry.fullName + " is there twice.");
            }
            checkReferences(entry.fullName, entry.fields);
        }
    }

    void checkTransactions() {
        Statement rows = ledger_.database().prepare(
            "SELECT id, fields FROM txn UNION ALL SELECT txn, fields FROM line"
        );
        while (rows.step()) {
            checkReferences("Transaction " + rows.text(0), fieldsFrom(rows.text(1)));
        }
    }

    Ledger& ledger_;
    std::vector<std::string> findings_;
};

}  // namespace

std::vector<std::string> findingsIn(Ledger& ledger) {
    std::vector<std::string> findings;
    try {
        ledger.look([&] { findings = Check(ledger).run(); });
    } catch (const CallError& error) {
        findings.push_back(error.text);
    }
    return findings;
}

}  // namespace companyfile
