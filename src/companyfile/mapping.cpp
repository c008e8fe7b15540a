#include "companyfile/mapping.h"

#include "companyfile/text.h"
#include "util/text_codec.h"

#include <algorithm>

namespace companyfile {

namespace {

/// What type a missing account of a key gets.
struct KeyType {
    std::string_view key;
    std::string_view type;
};
constexpr KeyType kKeyTypes[] = {
    {"petty cash", "Bank"},
    {"cash paid out", "Expense"},
    {"inventory", "OtherCurrentAsset"},
    {"cost of goods sold", "CostOfGoodsSold"},
    {"shipping income", "Income"},
    {"sales tax payable", "OtherCurrentLiability"},
    {"sales returns", "Income"},
    {"sales layaway", "OtherCurrentLiability"},
    {"vendors account payable", "AccountsPayable"},
};
constexpr std::string_view kAccounts = "sales account";
constexpr std::string_view kTaxes = "tax";
constexpr std::string_view kPayee = "tax payee";

/// Every other key is a tender, whose money is on its way to a bank.
std::string_view typeFor(const MappingValue& row) {
    if (row.section == kTaxes) {
        return "Income";
    }
    const std::string key = folded(row.key);
    const auto* found =
        std::find_if(std::begin(kKeyTypes), std::end(kKeyTypes), [&](const KeyType& each) {
            return each.key == key;
        });
    return found == std::end(kKeyTypes) ? "OtherCurrentAsset" : found->type;
}

std::string_view unquoted(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// Makes an account and those that stand above it.
void makeAccount(Ledger& ledger, const std::string& fullName, std::string_view type) {
    if (ledger.lists().byName(NameSpace::accounts, fullName) != nullptr) {
        return;
    }
    const auto colon = fullName.rfind(':');
    Element fields;
    if (colon != std::string::npos) {
        makeAccount(ledger, fullName.substr(0, colon), type);
        fields.set("ParentRef/FullName", fullName.substr(0, colon));
    }
    fields.set("Name", colon == std::string::npos ? fullName : fullName.substr(colon + 1));
    fields.set("AccountType", type);
    makeEntry(ledger, *listKind("Account"), std::move(fields));
}

void makeTerms(Ledger& ledger, std::string_view days) {
    const std::string name = "Net " + std::string(days);
    if (ledger.lists().byName(NameSpace::terms, name) == nullptr) {
        Element fields;
        fields.set("Name", name);
        if (days.find_first_not_of("0123456789") == std::string_view::npos) {
            fields.set("StdDueDays", days);
        }
        makeEntry(ledger, *listKind("StandardTerms"), std::move(fields));
    }
}

}  // namespace

std::vector<MappingValue> readMapping(std::string_view text) {
    std::vector<MappingValue> rows;
    std::string section;
    for (const std::string_view line : split(text, '\n')) {
        const std::string_view row = trimmed(line);
        const auto equals = row.find('=');
        if (row.starts_with('[')) {
            section = folded(util::toUtf8(trimmed(row.substr(1, row.find(']') - 1))));
        } else if (!row.starts_with(';') && equals != std::string_view::npos) {
            const std::string_view value = trimmed(unquoted(trimmed(row.substr(equals + 1))));
            if (!value.empty()) {
                const std::string_view key = trimmed(row.substr(0, equals));
                rows.push_back({section, util::toUtf8(key), util::toUtf8(value)});
            }
        }
    }
    return rows;
}

std::string taxPayee(const std::vector<MappingValue>& mapping) {
    const auto found = std::find_if(mapping.begin(), mapping.end(), [](const MappingValue& row) {
        return row.section == kAccounts && folded(row.key) == kPayee;
    });
    return found == mapping.end() ? std::string() : found->value;
}

void makeMappedEntries(Ledger& ledger, const std::vector<MappingValue>& mapping) {
    for (const MappingValue& row : mapping) {
        const bool payee = row.section == kAccounts && folded(row.key) == kPayee;
        if (!payee && (row.section == kAccounts || row.section == kTaxes)) {
            makeAccount(ledger, row.value, typeFor(row));
        } else if (row.section == "misc" && folded(row.key) == "net") {
            makeTerms(ledger, row.value);
        }
    }
}

}  // namespace companyfile
