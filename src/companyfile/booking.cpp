#include "companyfile/booking.h"

#include "companyfile/accounts.h"
#include "companyfile/references.h"
#include "companyfile/text.h"

#include <set>

namespace companyfile {

namespace {

/// Goods that come or go at a price of their own change what one piece costs on average. Pieces
/// and their value are above zero when they come.
void averageIn(Entry& item, Decimal pieces, util::Money value) {
    const Decimal quantity = item.quantity + pieces;
    const bool fresh = item.quantity.raw <= 0;
    const util::Money total = fresh ? value : product(item.averageCost, item.quantity) + value;
    const Decimal share = fresh ? pieces : quantity;
    if (share.raw > 0 && total >= util::Money()) {
        item.averageCost = quotient(total, share);
    }
}

/// Changes the figures that a transaction touches, or changes them back.
class Effects {
public:
    Effects(Ledger& ledger, const Transaction& transaction, bool back)
        : ledger_(ledger),
          transaction_(transaction),
          back_(back) {}

    void apply() {
        for (const Posting& posting : transaction_.postings) {
            changeBalances(posting);
        }
        for (const Line& line : transaction_.lines) {
            if (!line.stock.isZero()) {
                changeStock(line);
            }
        }
        for (const Entry* entry : touched_) {
            ledger_.lists().saveFigures(*entry);
        }
    }

private:
    void changeBalance(Entry* entry, util::Money amount) {
        if (entry != nullptr) {
            entry->balance += back_ ? -amount : amount;
            touched_.insert(entry);
        }
    }

    void changeBalances(const Posting& posting) {
        Entry* account = ledger_.lists().byId(posting.account);
        changeBalance(account, posting.amount);
        const std::string_view type = account == nullptr ? "" : accountType(*account);
        if (type == "AccountsReceivable") {
            changeBalance(ledger_.lists().byId(posting.name), posting.amount);
        } else if (type == "AccountsPayable") {
            changeBalance(ledger_.lists().byId(posting.name), -posting.amount);
        }
    }

    void changeStock(const Line& line) {
        Entry* item = ledger_.lists().byId(line.item);
        if (item == nullptr) {
            return;
        }
        const Family family = transaction_.kind->family;
        const Decimal pieces = back_ ? -line.stock : line.stock;
        if (family == Family::purchase || family == Family::internal) {
            const bool goes = (transaction_.kind->sign < 0) != back_;
            averageIn(*item, pieces, goes ? -line.amount : line.amount);
        }
        item->quantity = item->quantity + pieces;
        touched_.insert(item);
    }

    Ledger& ledger_;
    const Transaction& transaction_;
    bool back_;
    std::set<Entry*> touched_;
};

/// True for an account that can take the share of a line.
bool takesLines(const Entry& account) {
    const std::string_view type = accountType(account);
    return type != "AccountsReceivable" && type != "AccountsPayable" && type != "NonPosting";
}

/// The first account that one of `fields` of the item names, unless the line names its own.
Entry* itemAccount(
    Ledger& ledger,
    const Element& line,
    const Entry& item,
    std::initializer_list<std::string_view> fields
) {
    Entry* account = referenced(ledger.lists(), line, "OverrideItemAccountRef");
    for (const std::string_view field : fields) {
        if (account == nullptr) {
            account = referenced(ledger.lists(), item.fields, field);
        }
    }
    return account != nullptr && takesLines(*account) ? account : nullptr;
}

}  // namespace

void post(Transaction& transaction, const Entry& account, util::Money amount, const Entry* name) {
    if (!amount.isZero()) {
        transaction.postings.push_back({account.id, amount, name == nullptr ? 0 : name->id});
    }
}

void enter(Ledger& ledger, Transaction& transaction) {
    util::Money difference;
    for (const Posting& posting : transaction.postings) {
        difference += posting.amount;
    }
    if (!difference.isZero()) {
        throw cannotSave(transaction.kind->label, "Transaction not in balance.");
    }
    ledger.transactions().save(transaction, ledger.now());
    Effects(ledger, transaction, false).apply();
}

void takeBack(Ledger& ledger, const Transaction& transaction) {
    ledger.transactions().remove(transaction);
    Effects(ledger, transaction, true).apply();
}

Entry&
accountOf(Ledger& ledger, const Element& fields, std::string_view field, std::string_view special) {
    Entry* account = referenced(ledger.lists(), fields, field);
    return account == nullptr ? specialAccount(ledger, special) : *account;
}

Entry* incomeAccount(Ledger& ledger, const Element& line, const Entry& item) {
    if (item.kind->kind == "ItemSalesTax") {
        return &specialAccount(ledger, "SalesTaxPayable");
    }
    if (item.kind->kind == "ItemPayment") {
        return &accountOf(ledger, item.fields, "DepositToAccountRef", "UndepositedFunds");
    }
    return itemAccount(
        ledger,
        line,
        item,
        {"IncomeAccountRef",
         "SalesAndPurchase/IncomeAccountRef",
         "SalesOrPurchase/AccountRef",
         "AccountRef"}
    );
}

Entry* expenseAccount(Ledger& ledger, const Element& line, const Entry& item) {
    return itemAccount(
        ledger,
        line,
        item,
        {"AssetAccountRef",
         "SalesAndPurchase/ExpenseAccountRef",
         "SalesOrPurchase/AccountRef",
         "AccountRef"}
    );
}

void deriveAmount(Element& line, std::string_view rateField, Decimal price) {
    const bool hasQuantity = !line.at("Quantity").empty();
    const Decimal quantity =
        hasQuantity ? Decimal::fromText(line.at("Quantity")) : Decimal::fromWhole(1);
    if (line.at("Amount").empty()) {
        const std::string_view sent = line.at(rateField);
        const Decimal rate = sent.empty() ? price : Decimal::fromText(sent);
        line.set(rateField, rate.text(2));
        line.set("Amount", amountText(product(rate, quantity)));
    } else if (line.at(rateField).empty() && hasQuantity && !quantity.isZero()) {
        line.set(rateField, quotient(amountFrom(line.at("Amount")), quantity).text(2));
    }
}

void checkAddresses(const Element& fields) {
    for (const Element& child : fields.children) {
        const auto has = [&](const char* name) { return !trimmed(child.at(name)).empty(); };
        if (child.name.ends_with("Address") && (has("Addr4") || has("Addr5")) && has("City") &&
            has("State") && has("PostalCode")) {
            throw StatusError(
                3210,
                R"(The "address" field has an invalid value "".)" +
                    programSays("The parameter is incorrect.")
            );
        }
    }
}

void bookOpening(
    Ledger& ledger, std::string_view date, const Posting& posting, const Entry& other
) {
    Transaction transaction;
    transaction.kind = transactionKind("OpeningBalance");
    transaction.date = date.empty() ? ledger.today() : std::string(date);
    transaction.name = posting.name;
    transaction.total = posting.amount;
    transaction.postings = {posting, {other.id, -posting.amount, posting.name}};
    enter(ledger, transaction);
}

void bookStock(Ledger& ledger, const Entry& item, const Element& sent) {
    const Decimal quantity = Decimal::fromText(sent.at("QuantityOnHand"));
    const std::string_view value = sent.at("TotalValue");
    Line line;
    line.kind = "InventoryAdjustmentLine";
    line.item = item.id;
    line.stock = quantity;
    line.amount = value.empty() ? product(Decimal::fromText(sent.at("PurchaseCost")), quantity)
                                : amountFrom(value);
    line.fields.set("ItemRef/ListID", item.listId);
    line.fields.set("Quantity", quantity.text());
    line.fields.set("Amount", amountText(line.amount));
    Transaction transaction;
    transaction.kind = transactionKind("InventoryAdjustment");
    const std::string_view date = sent.at("InventoryDate");
    transaction.date = date.empty() ? ledger.today() : std::string(date);
    transaction.total = line.amount;
    const Entry& asset = accountOf(ledger, item.fields, "AssetAccountRef", "InventoryAssets");
    post(transaction, asset, line.amount, nullptr);
    post(transaction, specialAccount(ledger, "OpeningBalanceEquity"), -line.amount, nullptr);
    transaction.lines.push_back(std::move(line));
    enter(ledger, transaction);
}

}  // namespace companyfile
