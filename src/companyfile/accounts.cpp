#include "companyfile/accounts.h"

#include "companyfile/text.h"

#include <algorithm>
#include <array>

namespace companyfile {

namespace {

/// Accounts that the file itself needs. The first row of a purpose is the one that is made.
struct SpecialAccount {
    std::string_view special;
    std::string_view name;
    std::string_view type;
};
constexpr SpecialAccount kSpecialAccounts[] = {
    {"AccountsReceivable", "Accounts Receivable", "AccountsReceivable"},
    {"AccountsPayable", "Accounts Payable", "AccountsPayable"},
    {"UndepositedFunds", "Undeposited Funds", "OtherCurrentAsset"},
    {"InventoryAssets", "Inventory Asset", "OtherCurrentAsset"},
    {"CostOfGoodsSold", "Cost of Goods Sold", "CostOfGoodsSold"},
    {"SalesTaxPayable", "Sales Tax Payable", "OtherCurrentLiability"},
    {"OpeningBalanceEquity", "Opening Balance Equity", "Equity"},
    {"OpeningBalanceEquity", "Opening Bal Equity", "Equity"},
    {"RetainedEarnings", "Retained Earnings", "Equity"},
    {"UncategorizedIncome", "Uncategorized Income", "Income"},
    {"UncategorizedExpenses", "Uncategorized Expenses", "Expense"},
};

}  // namespace

std::string_view accountType(const Entry& account) {
    return account.fields.at("AccountType");
}

bool isDebitType(std::string_view accountType) {
    constexpr std::array<std::string_view, 8> kDebitTypes = {
        "AccountsReceivable",
        "Bank",
        "CostOfGoodsSold",
        "Expense",
        "FixedAsset",
        "OtherAsset",
        "OtherCurrentAsset",
        "OtherExpense",
    };
    return std::find(kDebitTypes.begin(), kDebitTypes.end(), accountType) != kDebitTypes.end();
}

std::string_view specialOf(Ledger& ledger, const Entry& account) {
    for (const SpecialAccount& each : kSpecialAccounts) {
        // The first receivable or payable account is the one, whatever its name.
        const bool byType = each.special == each.type && each.type != "CostOfGoodsSold";
        if (each.type == accountType(account) &&
            (byType || folded(each.name) == folded(account.name)) &&
            ledger.lists().specialAccount(each.special) == nullptr) {
            return each.special;
        }
    }
    return {};
}

Entry& specialAccount(Ledger& ledger, std::string_view special) {
    if (Entry* account = ledger.lists().specialAccount(special)) {
        return *account;
    }
    const auto* row = std::find_if(
        std::begin(kSpecialAccounts),
        std::end(kSpecialAccounts),
        [&](const SpecialAccount& each) { return each.special == special; }
    );
    if (Entry* account = ledger.lists().byName(NameSpace::accounts, row->name)) {
        return *account;
    }
    Element fields;
    fields.set("Name", row->name);
    fields.set("AccountType", row->type);
    return makeEntry(ledger, *listKind("Account"), std::move(fields));
}

}  // namespace companyfile
