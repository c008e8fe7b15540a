#include "qb/clsQBAccount.h"

#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"

#include <algorithm>
#include <iterator>

std::vector<clsQBAccount> gaQBAccounts;

namespace {

constexpr qb::Search kAccountSearch = {
    "AccountQuery", "NameFilter", "Contains", "Name", platform::ResponseType::accountQuery};

constexpr qb::Take<clsQBAccount> kAccountRet[] = {
    {"AccountNumber", &clsQBAccount::AccountNumber},
    {"AccountType", &clsQBAccount::AccountType},
    {"Name", &clsQBAccount::Name},
    {"Balance", &clsQBAccount::Balance},
    {"Desc", &clsQBAccount::Desc},
    {"SpecialAccountType", &clsQBAccount::SpecialAccountType},
    {"FullName", &clsQBAccount::FullName},
    {"ListID", &clsQBAccount::ListID},
    {"ParentRef/FullName", &clsQBAccount::ParentName},
    {"Sublevel", &clsQBAccount::Sublevel},
    {"TotalBalance", &clsQBAccount::TotalBalance},
};

/// Words of the wire at the numbers that the session library gives them.
constexpr std::string_view kAccountTypes[] = {
    "AccountsPayable",
    "AccountsReceivable",
    "Bank",
    "CostOfGoodsSold",
    "CreditCard",
    "Equity",
    "Expense",
    "FixedAsset",
    "Income",
    "LongTermLiability",
    "OtherAsset",
    "OtherCurrentAsset",
    "OtherCurrentLiability",
    "OtherExpense",
    "OtherIncome",
    "NonPosting",
};

/// Number in decimal of an account type's word; empty for none of them.
std::string accountTypeNumber(std::string_view word) {
    const auto* const found = std::find(std::begin(kAccountTypes), std::end(kAccountTypes), word);
    return found == std::end(kAccountTypes) ? std::string()
                                            : std::to_string(found - std::begin(kAccountTypes));
}

/// Reads the accounts of one answer.
void populateFrom(const platform::IResponse& answer) {
    const auto& elements = answer.Detail.children();
    gaQBAccounts.assign(elements.size(), clsQBAccount());
    for (std::size_t index = 0; index < elements.size(); ++index) {
        qb::onLanguageError(
            [&] { gaQBAccounts[index].AccountInfoRet_get(elements[index]); },
            [](std::int32_t, const std::string&) {
                // Kept: a value that cannot be read leaves the rest of its account empty.
            }
        );
    }
}

}  // namespace

LegacyBool clsQBAccount::AccountSearchRq() {
    return qb::handled("AccountSearchRq ", Name, [&] {
        if (util::trim(Name).empty() || gfbRequestMsgSet_reset() == kNo) {
            return false;
        }
        qb::fillFilter(requestMsgSet->append(kAccountSearch.request), kAccountSearch, Name);
        return true;
    });
}

void clsQBAccount::AccountKeyRet_get(const platform::QBElement& account) {
    FullName = account.find("FullName").text();
}

void clsQBAccount::AccountInfoRet_get(const platform::QBElement& account) {
    qb::read(account, *this, kAccountRet, qb::Absent::empties);
    AccountType = accountTypeNumber(AccountType);
    RetType = account.name();
}

LegacyBool gfbAccountQuery_requested() {
    LegacyBool result = kNo;
    qb::onLanguageError(
        [&] {
            if (gfbRequestMsgSet_reset() != kNo) {
                requestMsgSet->append("AccountQuery").at("ActiveStatus").setText("ActiveOnly");
                result = gfbRequests_do();
            }
        },
        [](std::int32_t number, const std::string& description) {
            gnQBErrorNumber = number;
            gsQBStatusMessage =
                "gfbAccountQuery_requested: " + std::to_string(number) + " " + description;
        }
    );
    return result;
}

void gpAccountQuery_populated() {
    if (responseMsgSet == nullptr || !responseMsgSet->hasResponseList) {
        return;
    }
    for (const platform::IResponse& answer : responseMsgSet->ResponseList) {
        if (answer.StatusCode == 0 && answer.hasDetail() &&
            answer.Type == platform::ResponseType::accountQuery) {
            populateFrom(answer);
        }
    }
}
