#include "companyfile/accounts.h"
#include "companyfile/booking.h"
#include "companyfile/references.h"

#include <algorithm>

namespace companyfile {

namespace {

constexpr std::string_view kReceivable = "AccountsReceivable";
constexpr std::string_view kPayable = "AccountsPayable";

/// The customer or vendor that a journal line on receivables or payables must name.
const Entry* requiredName(Ledger& ledger, const Line& line, const Entry& account) {
    const Entry* name = referenced(ledger.lists(), line.fields, "EntityRef");
    const std::string_view type = accountType(account);
    const std::string_view kind = name == nullptr ? "" : name->kind->kind;
    if (type == kReceivable && kind != "Customer") {
        throw cannotSave(
            "General Journal transaction",
            "When you use Accounts Receivable, you must choose a customer in the Name field."
        );
    }
    if (type == kPayable && kind != "Vendor") {
        throw cannotSave(
            "General Journal transaction",
            "When you use Accounts Payable, you must choose a vendor in the Name field."
        );
    }
    return name;
}

void noteUnsupported(Status& status, std::string_view field) {
    if (status.code == 0) {
        status = {530, "The field " + quoted(field) + " is not supported by this implementation."};
    }
}

/// One received payment on its way into the books.
class Payment {
public:
    explicit Payment(const Entering& entering)
        : ledger_(entering.ledger),
          payment_(entering.transaction),
          status_(entering.status) {}

    void book() {
        payment_.total = amountFrom(payment_.header.at("TotalAmount"));
        if (payment_.total < util::Money()) {
            throw cannotSave(payment_.kind->label, "Transaction amount must be positive.");
        }
        const Entry& receivable = accountOf(ledger_, payment_.header, "ARAccountRef", kReceivable);
        const Entry& deposit =
            accountOf(ledger_, payment_.header, "DepositToAccountRef", "UndepositedFunds");
        if (accountType(receivable) != kReceivable || !takesDeposits(deposit)) {
            throw cannotSave(payment_.kind->label, "The posting account is invalid");
        }
        payment_.header.set("ARAccountRef/ListID", receivable.listId);
        payment_.header.set("DepositToAccountRef/ListID", deposit.listId);
        post(payment_, deposit, payment_.total, nullptr);
        post(payment_, receivable, -payment_.total, ledger_.lists().byId(payment_.name));
        spread();
        std::erase_if(payment_.header.children, [](const Element& child) {
            return child.name == "TotalAmount" || child.name == "IsAutoApply" ||
                   child.name == "AppliedToTxnAdd";
        });
    }

private:
    void spread() {
        rest_ = payment_.total;
        for (const Element& child : payment_.header.children) {
            if (child.name == "AppliedToTxnAdd") {
                applyAsTold(child);
            }
        }
        if (payment_.header.at("IsAutoApply") == "true") {
            applyToOldest();
        }
    }

    void applyAsTold(const Element& told) {
        for (const char* field : {"SetCredit", "DiscountAmount", "DiscountAccountRef"}) {
            if (told.has(field)) {
                noteUnsupported(status_, field);
            }
        }
        const std::string_view txnId = told.at("TxnID");
        requireIdForm(txnId, "TxnID");
        const std::int64_t target = ledger_.transactions().withTxnId("Invoice", txnId);
        if (target == 0 || ledger_.transactions().load(target).name != payment_.name) {
            throw unknownId(txnId);
        }
        const util::Money amount = amountFrom(told.at("PaymentAmount"));
        if (amount > due(target)) {
            throw tooMuch(told.at("PaymentAmount"), "You cannot pay more than the amount due.");
        }
        if (amount > rest_) {
            throw tooMuch(
                told.at("PaymentAmount"), "You cannot apply more than the amount of the payment."
            );
        }
        apply(target, amount);
    }

    static StatusError tooMuch(std::string_view amount, std::string_view reason) {
        return {
            3210,
            "The \"AppliedToTxnAdd payment amount\" field has an invalid value " + quoted(amount) +
                "." + programSays(reason)};
    }

    util::Money due(std::int64_t invoice) {
        util::Money open =
            ledger_.transactions().load(invoice).total - ledger_.transactions().appliedTo(invoice);
        for (const Application& share : payment_.applied) {
            open -= share.target == invoice ? share.amount : util::Money();
        }
        return open;
    }

    void apply(std::int64_t invoice, util::Money amount) {
        const auto found = std::find_if(
            payment_.applied.begin(),
            payment_.applied.end(),
            [&](const Application& share) { return share.target == invoice; }
        );
        if (found != payment_.applied.end()) {
            found->amount += amount;
        } else {
            payment_.applied.push_back({invoice, amount});
        }
        rest_ -= amount;
    }

    void applyToOldest() {
        for (const std::int64_t invoice : ledger_.transactions().ofName("Invoice", payment_.name)) {
            const util::Money amount = std::min(due(invoice), rest_);
            if (amount > util::Money()) {
                apply(invoice, amount);
            }
        }
    }

    Ledger& ledger_;
    Transaction& payment_;
    Status& status_;
    util::Money rest_;
};

/// What buying one piece costs when the line tells nothing.
Decimal costOf(const Entry& item) {
    const std::string_view cost = item.fields.at("PurchaseCost");
    return Decimal::fromText(cost.empty() ? item.fields.at("SalesAndPurchase/PurchaseCost") : cost);
}

/// An item or expense line; gives the account that takes it (null: none that can).
Entry* readPurchaseLine(Ledger& ledger, Line& line, std::string_view rateField) {
    const Entry* item = referenced(ledger.lists(), line.fields, "ItemRef");
    if (item == nullptr) {
        line.amount = amountFrom(line.fields.at("Amount"));
        return referenced(ledger.lists(), line.fields, "AccountRef");
    }
    line.item = item->id;
    deriveAmount(line.fields, rateField, costOf(*item));
    line.amount = amountFrom(line.fields.at("Amount"));
    return expenseAccount(ledger, line.fields, *item);
}

void bringToStock(Ledger& ledger, const Transaction& transaction, Line& line) {
    const Entry* item = ledger.lists().byId(line.item);
    if (item != nullptr && item->kind->kind == "ItemInventory") {
        const std::string_view sent = line.fields.at("Quantity");
        const Decimal quantity = sent.empty() ? Decimal::fromWhole(1) : Decimal::fromText(sent);
        line.stock = transaction.kind->sign < 0 ? -quantity : quantity;
    }
}

}  // namespace

void bookJournal(const Entering& entering) {
    Transaction& journal = entering.transaction;
    Ledger& ledger = entering.ledger;
    int namedAccounts = 0;
    for (Line& line : journal.lines) {
        const Entry* account = referenced(ledger.lists(), line.fields, "AccountRef");
        if (account == nullptr) {
            throw missingElement("AccountRef");
        }
        const Entry* name = requiredName(ledger, line, *account);
        const std::string_view type = accountType(*account);
        namedAccounts += type == kReceivable || type == kPayable ? 1 : 0;
        const util::Money amount = amountFrom(line.fields.at("Amount"));
        const bool debit = line.kind == "JournalDebitLine";
        line.amount = debit ? amount : -amount;
        journal.total += debit ? amount : util::Money();
        post(journal, *account, line.amount, name);
    }
    if (namedAccounts > 1) {
        throw cannotSave(
            journal.kind->label,
            "You can use only one Accounts Receivable or Accounts Payable account in a "
            "transaction."
        );
    }
}

void bookPayment(const Entering& entering) {
    Payment(entering).book();
}

void bookPurchase(const Entering& entering) {
    Transaction& purchase = entering.transaction;
    Ledger& ledger = entering.ledger;
    const TransactionKind& kind = *purchase.kind;
    const bool booked = kind.family == Family::purchase;
    if (purchase.name == 0) {
        throw missingElement(kind.nameField);
    }
    const auto withSign = [&](util::Money amount) { return kind.sign < 0 ? -amount : amount; };
    for (Line& line : purchase.lines) {
        const Entry* account = readPurchaseLine(ledger, line, booked ? "Cost" : "Rate");
        purchase.total += line.amount;
        if (!booked) {
            continue;
        }
        if (account == nullptr && !line.amount.isZero()) {
            throw cannotSave(kind.label, "The posting account is invalid");
        }
        if (account != nullptr) {
            post(purchase, *account, withSign(line.amount), nullptr);
        }
        bringToStock(ledger, purchase, line);
    }
    if (booked) {
        const Entry& payable = accountOf(ledger, purchase.header, kind.accountField, kPayable);
        purchase.header.set(std::string(kind.accountField) + "/ListID", payable.listId);
        post(purchase, payable, withSign(-purchase.total), ledger.lists().byId(purchase.name));
    }
}

}  // namespace companyfile
