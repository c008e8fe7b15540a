#include "companyfile/ledger.h"
#include "companyfile/text.h"
#include "companyfile/values.h"

#include <algorithm>
#include <charconv>

namespace companyfile {

namespace {

bool isOneOf(const std::vector<std::string_view>& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool passesActivity(const Entry& entry, std::string_view activity) {
    return activity == "All" || entry.active == (activity != "InactiveOnly");
}

bool passesDates(const Entry& entry, const Element& filter) {
    const std::string moment = momentText(entry.modified).substr(0, 19);
    const std::string_view from = filter.at("FromModifiedDate").substr(0, 19);
    const std::string_view to = filter.at("ToModifiedDate").substr(0, 19);
    return moment >= from && (to.empty() || moment.substr(0, to.size()) <= to);
}

bool passesName(const Entry& entry, const Element& filter) {
    const std::string name = folded(trimmed(filter.at("NameFilter/Name")));
    if (filter.has("NameFilter") &&
        !matches(filter.at("NameFilter/MatchCriterion"), entry.foldedName, name)) {
        return false;
    }
    const std::string from = folded(filter.at("NameRangeFilter/FromName"));
    const std::string to = folded(filter.at("NameRangeFilter/ToName"));
    return entry.foldedName >= from &&
           (to.empty() || entry.foldedName <= to || entry.foldedName.starts_with(to));
}

bool passesType(const Entry& entry, const Element& filter) {
    return !filter.has("AccountType") ||
           std::any_of(filter.children.begin(), filter.children.end(), [&](const Element& child) {
               return child.name == "AccountType" && child.text == entry.fields.at("AccountType");
           });
}

bool passesBalance(const Entry& entry, const Element& filter) {
    if (!filter.has("TotalBalanceFilter")) {
        return true;
    }
    const std::string_view comparison = filter.at("TotalBalanceFilter/Operator");
    const util::Money limit = amountFrom(filter.at("TotalBalanceFilter/Amount"));
    if (entry.balance == limit) {
        return comparison.ends_with("Equal");
    }
    return comparison.starts_with(entry.balance < limit ? "Less" : "Greater");
}

void requireOrderedRanges(const Element& filter) {
    const std::string_view from = filter.at("FromModifiedDate");
    const std::string_view to = filter.at("ToModifiedDate");
    if (!from.empty() && !to.empty() && from > to) {
        throw StatusError(3030, "Invalid date range: From date is greater than To date.");
    }
    const std::string fromName = folded(filter.at("NameRangeFilter/FromName"));
    const std::string toName = folded(filter.at("NameRangeFilter/ToName"));
    if (!toName.empty() && fromName > toName) {
        throw StatusError(3031, "Invalid name range: From name is greater than To name.");
    }
}

class EntryQuery {
public:
    EntryQuery(Ledger& ledger, std::string_view kinds)
        : ledger_(ledger),
          kinds_(split(kinds, ' ')) {}

    Answer run(const Element& fields) {
        for (const Element& child : fields.children) {
            if (child.name == "ListID") {
                byId(child.text);
            } else if (child.name == "FullName") {
                byName(child.text);
            }
        }
        if (ids_.asked + names_.asked == 0) {
            byFilter(fields);
        }
        Answer answer;
        answer.status = queryStatus(records_, ids_, names_);
        answer.records = std::move(records_);
        return answer;
    }

private:
    void take(const Entry* entry, Wanted& wanted, std::string_view asked) {
        ++wanted.asked;
        if (entry != nullptr && isOneOf(kinds_, entry->kind->kind)) {
            records_.push_back(entryRecord(ledger_, *entry));
        } else if (wanted.unknown.empty()) {
            wanted.unknown = asked;
        }
    }

    void byId(std::string_view listId) {
        requireIdForm(listId, "ListID");
        take(ledger_.lists().byListId(listId), ids_, listId);
    }

    NameSpace space() const {
        const ListKind* kind = listKind(kinds_.front());
        if (kind == nullptr) {
            throw StatusError(1030, "This request is not supported by this implementation.");
        }
        return kind->space;
    }

    void byName(std::string_view fullName) {
        take(ledger_.lists().byName(space(), fullName), names_, fullName);
    }

    void byFilter(const Element& filter) {
        requireOrderedRanges(filter);
        std::size_t most = records_.max_size();
        const std::string_view limit = filter.at("MaxReturned");
        std::from_chars(limit.data(), limit.data() + limit.size(), most);
        const bool prefixed = filter.at("NameFilter/MatchCriterion") == "StartsWith";
        const std::string prefix =
            prefixed ? folded(trimmed(filter.at("NameFilter/Name"))) : std::string();
        for (const Entry* entry : ledger_.lists().startingWith(space(), prefix)) {
            if (records_.size() < most && passes(*entry, filter)) {
                records_.push_back(entryRecord(ledger_, *entry));
            }
        }
    }

    bool passes(const Entry& entry, const Element& filter) const {
        return isOneOf(kinds_, entry.kind->kind) &&
               passesActivity(entry, filter.at("ActiveStatus")) && passesName(entry, filter) &&
               passesDates(entry, filter) && passesType(entry, filter) &&
               passesBalance(entry, filter);
    }

    Ledger& ledger_;
    std::vector<std::string_view> kinds_;
    std::vector<Element> records_;
    Wanted ids_;
    Wanted names_;
};

}  // namespace

Status queryStatus(const std::vector<Element>& records, const Wanted& ids, const Wanted& names) {
    if (!ids.unknown.empty() && ids.asked == 1) {
        throw unknownId(ids.unknown);
    }
    const std::string& unknown = ids.unknown.empty() ? names.unknown : ids.unknown;
    if (!unknown.empty()) {
        return {
            500,
            "The query request has not been fully completed. There was a required element (" +
                quoted(unknown) + ") that could not be found in QuickBooks."};
    }
    if (records.empty()) {
        return {1, "A query request did not find a matching object in QuickBooks"};
    }
    return {};
}

Answer queryEntries(Ledger& ledger, std::string_view kinds, Request& request) {
    checkValues(request, false);
    return EntryQuery(ledger, kinds).run(request.fields);
}

}  // namespace companyfile
