#include "companyfile/ledger.h"
#include "companyfile/references.h"
#include "companyfile/text.h"
#include "companyfile/values.h"

#include <algorithm>
#include <charconv>

namespace companyfile {

namespace {

/// True when `value` lies between two limits of which each may be empty.
bool isBetween(std::string_view value, std::string_view from, std::string_view to) {
    return value.substr(0, from.size()) >= from && (to.empty() || value.substr(0, to.size()) <= to);
}

bool passesDates(const Transaction& transaction, const Element& filter) {
    const auto limit = [&](const char* path) { return filter.at(path).substr(0, 19); };
    return isBetween(
               transaction.date,
               filter.at("TxnDateRangeFilter/FromTxnDate"),
               filter.at("TxnDateRangeFilter/ToTxnDate")
           ) &&
           isBetween(
               momentText(transaction.modified),
               limit("ModifiedDateRangeFilter/FromModifiedDate"),
               limit("ModifiedDateRangeFilter/ToModifiedDate")
           );
}

void requireOrdered(const Element& filter, const char* fromPath, const char* toPath) {
    const std::string_view from = filter.at(fromPath);
    const std::string_view to = filter.at(toPath);
    if (!from.empty() && !to.empty() && from > to) {
        throw StatusError(3030, "Invalid date range: From date is greater than To date.");
    }
}

class TransactionQuery {
public:
    TransactionQuery(Ledger& ledger, const TransactionKind& kind, const Element& fields)
        : ledger_(ledger),
          kind_(kind),
          fields_(fields) {}

    Answer run() {
        for (const Element& child : fields_.children) {
            if (child.name == "TxnID") {
                byId(child.text);
            } else if (child.name == "RefNumber") {
                byReference(child.text, false);
            } else if (child.name == "RefNumberCaseSensitive") {
                byReference(child.text, true);
            }
        }
        if (!asked_) {
            byFilter();
        }
        Answer answer;
        answer.status = queryStatus(records_, ids_, {});
        answer.records = std::move(records_);
        return answer;
    }

private:
    void take(const Transaction& transaction) {
        records_.push_back(transactionRecord(
            ledger_,
            transaction,
            fields_.at("IncludeLineItems") == "true",
            fields_.at("IncludeLinkedTxns") == "true"
        ));
    }

    void byId(std::string_view txnId) {
        asked_ = true;
        requireIdForm(txnId, "TxnID");
        ++ids_.asked;
        const std::int64_t id = ledger_.transactions().withTxnId(kind_.type, txnId);
        if (id != 0) {
            take(ledger_.transactions().load(id));
        } else if (ids_.unknown.empty()) {
            ids_.unknown = txnId;
        }
    }

    void byReference(std::string_view reference, bool exactly) {
        asked_ = true;
        const std::string wanted = folded(reference);
        for (const std::int64_t id :
             ledger_.transactions().withReference(kind_.type, "Equals", wanted)) {
            const Transaction transaction = ledger_.transactions().load(id);
            if (!exactly || transaction.refNumber == reference) {
                take(transaction);
            }
        }
    }

    std::vector<std::int64_t> candidates() {
        const Element* filter = fields_.find("RefNumberFilter");
        if (filter == nullptr) {
            return ledger_.transactions().ofType(kind_.type);
        }
        return ledger_.transactions().withReference(
            kind_.type, filter->at("MatchCriterion"), folded(trimmed(filter->at("RefNumber")))
        );
    }

    void byFilter() {
        requireOrdered(fields_, "TxnDateRangeFilter/FromTxnDate", "TxnDateRangeFilter/ToTxnDate");
        requireOrdered(
            fields_,
            "ModifiedDateRangeFilter/FromModifiedDate",
            "ModifiedDateRangeFilter/ToModifiedDate"
        );
        const std::string_view macro = fields_.at("TxnDateRangeFilter/DateMacro");
        if (!macro.empty() && macro != "All") {
            throw StatusError(
                531,
                "The enum value " + quoted(macro) +
                    " in the field \"DateMacro\" is not supported by this implementation."
            );
        }
        std::vector<Transaction> found;
        for (const std::int64_t id : candidates()) {
            Transaction transaction = ledger_.transactions().load(id);
            if (passes(transaction)) {
                found.push_back(std::move(transaction));
            }
        }
        std::stable_sort(
            found.begin(),
            found.end(),
            [](const Transaction& left, const Transaction& right) { return left.date < right.date; }
        );
        std::size_t most = found.size();
        const std::string_view limit = fields_.at("MaxReturned");
        std::from_chars(limit.data(), limit.data() + limit.size(), most);
        found.erase(
            found.begin() + static_cast<std::ptrdiff_t>(std::min(most, found.size())), found.end()
        );
        std::for_each(found.begin(), found.end(), [&](const auto& each) { take(each); });
    }

    bool passes(const Transaction& transaction) {
        const std::string reference = folded(transaction.refNumber);
        const std::string from = folded(fields_.at("RefNumberRangeFilter/FromRefNumber"));
        const std::string to = folded(fields_.at("RefNumberRangeFilter/ToRefNumber"));
        return passesDates(transaction, fields_) && reference >= from &&
               (to.empty() || reference <= to) && passesPayment(transaction) &&
               passesEntity(transaction) && passesAccount(transaction);
    }

    bool passesPayment(const Transaction& transaction) {
        const std::string_view wanted = fields_.at("PaidStatus");
        if (wanted.empty() || wanted == "All") {
            return true;
        }
        const bool paid = transaction.total == ledger_.transactions().appliedTo(transaction.id);
        return paid == (wanted == "PaidOnly");
    }

    /// True when one of the entries that the filter names is `entry`, or stands above it where
    /// children count.
    bool names(const Element& filter, NameSpace space, std::int64_t entry) {
        return std::any_of(
            filter.children.begin(),
            filter.children.end(),
            [&](const Element& child) {
                const Entry* wanted = child.name.starts_with("ListID")
                                          ? ledger_.lists().byListId(child.text)
                                          : ledger_.lists().byName(space, child.text);
                const Entry* one = ledger_.lists().byId(entry);
                while (child.name.ends_with("WithChildren") && one != nullptr && one != wanted) {
                    one = ledger_.lists().byId(one->parent);
                }
                return wanted != nullptr && one == wanted;
            }
        );
    }

    bool passesEntity(const Transaction& transaction) {
        const Element* filter = fields_.find("EntityFilter");
        return filter == nullptr || names(*filter, NameSpace::names, transaction.name);
    }

    bool passesAccount(const Transaction& transaction) {
        const Element* filter = fields_.find("AccountFilter");
        return filter == nullptr ||
               std::any_of(
                   transaction.postings.begin(),
                   transaction.postings.end(),
                   [&](const Posting& posting) {
                       return names(*filter, NameSpace::accounts, posting.account);
                   }
               );
    }

    Ledger& ledger_;
    const TransactionKind& kind_;
    const Element& fields_;
    std::vector<Element> records_;
    Wanted ids_;
    bool asked_ = false;
};

}  // namespace

Answer queryTransactions(Ledger& ledger, const TransactionKind& kind, Request& request) {
    checkValues(request, false);
    return TransactionQuery(ledger, kind, request.fields).run();
}

}  // namespace companyfile
