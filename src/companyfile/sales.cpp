#include "companyfile/accounts.h"
#include "companyfile/booking.h"
#include "companyfile/references.h"

#include <algorithm>
#include <array>

namespace companyfile {

namespace {

/// What an item costs when the line tells neither rate nor amount.
Decimal priceOf(const Entry& item) {
    for (const char* field :
         {"SalesPrice", "SalesOrPurchase/Price", "SalesAndPurchase/SalesPrice", "DiscountRate"}) {
        const std::string_view price = item.fields.at(field);
        if (!price.empty()) {
            return Decimal::fromText(price);
        }
    }
    return {};
}

/// A rate in per cent of a line or its item; empty: a plain price.
std::string_view percentageOf(const Element& line, const Entry& item) {
    if (!line.at("RatePercent").empty() || !line.at("Rate").empty()) {
        return line.at("RatePercent");
    }
    for (const char* field : {"SalesOrPurchase/PricePercent", "DiscountRatePercent", "TaxRate"}) {
        const std::string_view percentage = item.fields.at(field);
        if (!percentage.empty()) {
            return percentage;
        }
    }
    return {};
}

/// One sales receipt, invoice or credit memo on its way into the books.
class Sale {
public:
    explicit Sale(const Entering& entering)
        : ledger_(entering.ledger),
          sale_(entering.transaction) {}

    void book() {
        for (Line& line : sale_.lines) {
            addLine(line);
        }
        addTax();
        sale_.total = sum_ + sale_.tax;
        if (sale_.total < util::Money()) {
            throw cannotSave(sale_.kind->label, "Transaction amount must be positive.");
        }
        settle();
        if (sale_.header.at("IsPending") == "true") {
            setAside();
        }
    }

private:
    util::Money signedAmount(util::Money amount) const {
        return sale_.kind->sign < 0 ? -amount : amount;
    }

    Entry* coded(const Element& fields, std::string_view field) {
        return referenced(ledger_.lists(), fields, field);
    }

    StatusError invalidAccount() const {
        return cannotSave(sale_.kind->label, "The posting account is invalid");
    }

    void addLine(Line& line) {
        const Entry* item = coded(line.fields, "ItemRef");
        if (item == nullptr) {
            requireNoMoney(line.fields);
            return;
        }
        line.item = item->id;
        price(line.fields, *item);
        const util::Money amount = amountFrom(line.fields.at("Amount"));
        const std::string_view kind = item->kind->kind;
        line.amount = kind == "ItemPayment" ? -amount : amount;
        previous_ = line.amount;
        sum_ += line.amount;
        if (isTaxable(line.fields, *item)) {
            taxable_ += line.amount;
        }
        if (kind == "ItemSalesTax" && !amount.isZero()) {
            requireTaxVendor(*item);
        }
        const Entry* account = incomeAccount(ledger_, line.fields, *item);
        if (account == nullptr) {
            throw invalidAccount();
        }
        post(sale_, *account, signedAmount(-line.amount), nullptr);
        if (kind == "ItemInventory") {
            takeFromStock(line, *item);
        }
    }

    void requireNoMoney(const Element& line) const {
        const bool free =
            amountFrom(line.at("Amount")).isZero() && Decimal::fromText(line.at("Rate")).isZero();
        if (!free) {
            throw cannotSave(sale_.kind->label, "A line with an amount must have an item.");
        }
    }

    void price(Element& line, const Entry& item) {
        const std::string_view percentage = percentageOf(line, item);
        if (line.at("Amount").empty() && !percentage.empty()) {
            const bool ofAll = item.kind->kind == "ItemSalesTax";
            const util::Money base = ofAll ? sum_ : previous_;
            const util::Money amount = percentOf(base, Decimal::fromText(percentage));
            line.set("RatePercent", std::string(percentage));
            line.set("Amount", amountText(amount));
        } else {
            deriveAmount(line, "Rate", priceOf(item));
        }
    }

    bool isTaxable(const Element& line, const Entry& item) {
        if (item.kind->kind == "ItemPayment" || item.kind->kind == "ItemSalesTax") {
            return false;
        }
        const Entry* code = coded(line, "SalesTaxCodeRef");
        if (code == nullptr) {
            code = coded(item.fields, "SalesTaxCodeRef");
        }
        return code != nullptr && code->fields.at("IsTaxable") == "true";
    }

    void requireTaxVendor(const Entry& taxItem) {
        if (coded(taxItem.fields, "TaxVendorRef") == nullptr) {
            throw cannotSave(sale_.kind->label, "Sales tax detail line must have a vendor");
        }
    }

    /// What a piece cost on average goes from the asset account to the cost of goods.
    void takeFromStock(Line& line, const Entry& item) {
        const std::string_view sent = line.fields.at("Quantity");
        const Decimal quantity = sent.empty() ? Decimal::fromWhole(1) : Decimal::fromText(sent);
        line.stock = sale_.kind->sign < 0 ? quantity : -quantity;
        const util::Money cost = signedAmount(product(item.averageCost, quantity));
        const Entry& spent = accountOf(ledger_, item.fields, "COGSAccountRef", "CostOfGoodsSold");
        const Entry& asset = accountOf(ledger_, item.fields, "AssetAccountRef", "InventoryAssets");
        post(sale_, spent, cost, nullptr);
        post(sale_, asset, -cost, nullptr);
    }

    /// The tax item of the sale, or else of its customer, on the taxable lines; none when the
    /// customer's code is not taxable.
    void addTax() {
        const Entry* customer = ledger_.lists().byId(sale_.name);
        const Entry* taxItem = coded(sale_.header, "ItemSalesTaxRef");
        const Entry* code = coded(sale_.header, "CustomerSalesTaxCodeRef");
        if (customer != nullptr && taxItem == nullptr) {
            taxItem = coded(customer->fields, "ItemSalesTaxRef");
        }
        if (customer != nullptr && code == nullptr) {
            code = coded(customer->fields, "SalesTaxCodeRef");
        }
        if (taxItem == nullptr) {
            return;
        }
        const Decimal rate = Decimal::fromText(taxItem->fields.at("TaxRate"));
        sale_.header.set("ItemSalesTaxRef/ListID", taxItem->listId);
        sale_.header.set("SalesTaxPercentage", rate.text(2));
        if (code != nullptr && code->fields.at("IsTaxable") != "true") {
            return;
        }
        sale_.tax = percentOf(taxable_, rate);
        if (!sale_.tax.isZero()) {
            requireTaxVendor(*taxItem);
            const Entry& payable = specialAccount(ledger_, "SalesTaxPayable");
            post(sale_, payable, signedAmount(-sale_.tax), nullptr);
        }
    }

    /// The total goes to the deposit or receivable account.
    void settle() {
        const TransactionKind& kind = *sale_.kind;
        const Entry& account =
            accountOf(ledger_, sale_.header, kind.accountField, kind.accountSpecial);
        const std::string_view type = accountType(account);
        const bool onAccount = kind.accountField == "ARAccountRef";
        if (onAccount ? type != "AccountsReceivable" : !takesDeposits(account)) {
            throw invalidAccount();
        }
        sale_.header.set(std::string(kind.accountField) + "/ListID", account.listId);
        const Entry* customer = onAccount ? ledger_.lists().byId(sale_.name) : nullptr;
        post(sale_, account, signedAmount(sale_.total), customer);
    }

    /// A pending sale is kept and not booked.
    void setAside() {
        sale_.postings.clear();
        for (Line& line : sale_.lines) {
            line.stock = {};
        }
    }

    Ledger& ledger_;
    Transaction& sale_;
    util::Money sum_;
    util::Money taxable_;
    util::Money previous_;
};

}  // namespace

bool takesDeposits(const Entry& account) {
    constexpr std::array<std::string_view, 6> kTypes = {
        "Bank",
        "CreditCard",
        "Equity",
        "LongTermLiability",
        "OtherCurrentAsset",
        "OtherCurrentLiability",
    };
    const std::string_view type = accountType(account);
    return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

void bookSale(const Entering& entering) {
    Sale(entering).book();
}

}  // namespace companyfile
