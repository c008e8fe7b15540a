#include "companyfile/templates.h"

#include "companyfile/mapping.h"
#include "companyfile/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace companyfile {

namespace {

/// One entry that a template holds: its kind and its fields as "path=value", joined by ";".
struct Row {
    std::string_view kind;
    std::string_view fields;
};

/// What every new company has.
constexpr Row kNewCompany[] = {
    {"Account", "Name=Retained Earnings;AccountType=Equity"},
    {"StandardTerms", "Name=1% 10 Net 30;StdDueDays=30;StdDiscountDays=10;DiscountPct=1"},
    {"StandardTerms", "Name=2% 10 Net 30;StdDueDays=30;StdDiscountDays=10;DiscountPct=2"},
    {"StandardTerms", "Name=Due on receipt;StdDueDays=0"},
    {"StandardTerms", "Name=Net 15;StdDueDays=15"},
    {"StandardTerms", "Name=Net 30;StdDueDays=30"},
    {"StandardTerms", "Name=Net 60;StdDueDays=60"},
    {"PaymentMethod", "Name=Cash"},
    {"PaymentMethod", "Name=Check"},
    {"PaymentMethod", "Name=American Express"},
    {"PaymentMethod", "Name=Discover"},
    {"PaymentMethod", "Name=MasterCard"},
    {"PaymentMethod", "Name=Visa"},
    {"ShipMethod", "Name=DHL"},
    {"ShipMethod", "Name=Federal Express"},
    {"ShipMethod", "Name=UPS"},
    {"ShipMethod", "Name=US Mail"},
    {"CustomerMsg", "Name=Thank you for your business."},
};

constexpr Row kRetailAccounts[] = {
    {"Account", "Name=Cash Drawer;AccountType=Bank"},
    {"Account", "Name=Checking;AccountType=Bank"},
    {"Account", "Name=Petty Cash;AccountType=Bank"},
    {"Account", "Name=Accounts Receivable;AccountType=AccountsReceivable"},
    {"Account", "Name=Undeposited Funds;AccountType=OtherCurrentAsset"},
    {"Account", "Name=Card Clearing;AccountType=OtherCurrentAsset"},
    {"Account", "Name=Amex Clearing;AccountType=OtherCurrentAsset"},
    {"Account", "Name=Inventory Asset;AccountType=OtherCurrentAsset"},
    {"Account", "Name=Negative Tenders;AccountType=OtherCurrentAsset"},
    {"Account", "Name=Accounts Payable;AccountType=AccountsPayable"},
    {"Account", "Name=Sales Tax Payable;AccountType=OtherCurrentLiability"},
    {"Account", "Name=Layaway Deposits;AccountType=OtherCurrentLiability"},
    {"Account", "Name=Gift Cards Outstanding;AccountType=OtherCurrentLiability"},
    {"Account", "Name=Opening Balance Equity;AccountType=Equity"},
    {"Account", "Name=Merchandise Sales;AccountType=Income"},
    {"Account", "Name=Shipping Income;AccountType=Income"},
    {"Account", "Name=Returns;AccountType=Income"},
    {"Account", "Name=Miscellaneous;AccountType=Income"},
    {"Account", "Name=Uncategorized Income;AccountType=Income"},
    {"Account", "Name=Cost of Goods Sold;AccountType=CostOfGoodsSold"},
    {"Account", "Name=Cash Paid Out;AccountType=Expense"},
    {"Account", "Name=Uncategorized Expenses;AccountType=Expense"},
};

/// "*" stands for the tax payee.
constexpr Row kRetailLists[] = {
    {"StandardTerms", "Name=Net 0;StdDueDays=0"},
    {"StandardTerms", "Name=Net 45;StdDueDays=45"},
    {"StandardTerms", "Name=Net 90;StdDueDays=90"},
    {"JobType", "Name=Residential"},
    {"OtherName", "Name=House"},
    {"SalesRep", "Initial=H;SalesRepEntityRef/FullName=House"},
    {"SalesTaxCode", "Name=0;IsTaxable=false;Desc=Not taxable"},
    {"SalesTaxCode", "Name=N;IsTaxable=false;Desc=Not taxable"},
    {"SalesTaxCode", "Name=Non;IsTaxable=false;Desc=Non-Taxable Sales"},
    {"SalesTaxCode", "Name=Tax;IsTaxable=true;Desc=Taxable Sales"},
    {"Vendor", "Name=*"},
    {"ItemSalesTax", "Name=Non;ItemDesc=No sales tax;TaxRate=0;TaxVendorRef/FullName=*"},
    {"ItemOtherCharge",
     "Name=Return;SalesTaxCodeRef/FullName=Non;SalesOrPurchase/Desc=Returned goods;"
     "SalesOrPurchase/Price=0.00;SalesOrPurchase/AccountRef/FullName=Returns"},
    {"ItemNonInventory",
     "Name=~NONSTK;SalesTaxCodeRef/FullName=Non;SalesAndPurchase/SalesDesc=Goods not in stock;"
     "SalesAndPurchase/SalesPrice=0.00;"
     "SalesAndPurchase/IncomeAccountRef/FullName=Merchandise Sales;"
     "SalesAndPurchase/PurchaseDesc=Goods not in stock;SalesAndPurchase/PurchaseCost=0.00;"
     "SalesAndPurchase/ExpenseAccountRef/FullName=Cost of Goods Sold"},
    {"ItemNonInventory",
     "Name=1;SalesTaxCodeRef/FullName=Non;SalesOrPurchase/Desc=Inventory;"
     "SalesOrPurchase/Price=0.00;SalesOrPurchase/AccountRef/FullName=Inventory Asset"},
};

/// Items of daily totals that are no tenders: code, description, account.
struct TotalItem {
    std::string_view code;
    std::string_view description;
    std::string_view account;
};
constexpr TotalItem kTotalItems[] = {
    {"0100", "Sales", "Merchandise Sales"},
    {"0200", "Sales", "Merchandise Sales"},
    {"0300", "Sales", "Merchandise Sales"},
    {"0400", "Sales", "Merchandise Sales"},
    {"0500", "Sales", "Merchandise Sales"},
    {"0600", "Sales", "Merchandise Sales"},
    {"0700", "Sales tax collected", "Sales Tax Payable"},
    {"0099", "Cost of goods", "Cost of Goods Sold"},
    {"5000", "Cost of goods", "Cost of Goods Sold"},
    {"6005", "Negative tender", "Negative Tenders"},
    {"Returns", "Returns", "Merchandise Sales"},
    {"Othe", "Other", "Miscellaneous"},
};
constexpr int kFirstTender = 11;
constexpr int kLastTender = 29;
constexpr const char* kSummaryTaxes[] = {"A", "B", "C", "D", "E", "F"};

std::string replaced(std::string_view text, char sign, std::string_view by) {
    std::string result;
    for (const char character : text) {
        if (character == sign) {
            result += by;
        } else {
            result += character;
        }
    }
    return result;
}

/// Makes an entry unless its name is taken.
void make(Ledger& ledger, const Row& row, std::string_view payee) {
    const ListKind& kind = *listKind(row.kind);
    Element fields;
    for (const std::string_view field : split(row.fields, ';')) {
        const auto equals = field.find('=');
        fields.set(field.substr(0, equals), replaced(field.substr(equals + 1), '*', payee));
    }
    if (ledger.lists().byName(kind.space, fields.at(kind.nameField)) == nullptr) {
        makeEntry(ledger, kind, std::move(fields));
    }
}

template <std::size_t size>
void makeAll(Ledger& ledger, const Row (&rows)[size], std::string_view payee) {
    for (const Row& row : rows) {
        make(ledger, row, payee);
    }
}

void makeTotalItems(Ledger& ledger) {
    for (const TotalItem& item : kTotalItems) {
        Element fields;
        fields.set("Name", item.code);
        fields.set("SalesTaxCodeRef/FullName", "Non");
        fields.set("SalesOrPurchase/Desc", item.description);
        fields.set("SalesOrPurchase/Price", "0.00");
        fields.set("SalesOrPurchase/AccountRef/FullName", item.account);
        makeEntry(ledger, *listKind("ItemOtherCharge"), std::move(fields));
    }
    for (int tender = kFirstTender; tender <= kLastTender; ++tender) {
        Element fields;
        fields.set("Name", "00" + std::to_string(tender));
        fields.set("ItemDesc", "Tender " + std::to_string(tender));
        fields.set("DepositToAccountRef/FullName", "Undeposited Funds");
        makeEntry(ledger, *listKind("ItemPayment"), std::move(fields));
    }
}

/// A company that gets daily totals only has nobody who makes these.
void makeSummaryTaxes(Ledger& ledger, std::string_view payee) {
    for (const std::string_view name : kSummaryTaxes) {
        Element code;
        code.set("Name", name);
        code.set("IsTaxable", "true");
        makeEntry(ledger, *listKind("SalesTaxCode"), std::move(code));
        Element item;
        item.set("Name", name);
        item.set("TaxRate", "0");
        item.set("TaxVendorRef/FullName", payee);
        makeEntry(ledger, *listKind("ItemSalesTax"), std::move(item));
    }
}

}  // namespace

bool isTemplate(std::string_view templateName) {
    constexpr std::array<std::string_view, 3> kNames = {"", "retail", "retail-summary"};
    return std::find(kNames.begin(), kNames.end(), templateName) != kNames.end();
}

void fillFromTemplate(Ledger& ledger, std::string_view templateName, std::string_view mapping) {
    const std::vector<MappingValue> mapped = readMapping(mapping);
    std::string payee = taxPayee(mapped);
    const bool retail = templateName.starts_with("retail");
    if (payee.empty() && retail) {
        payee = "Sales Tax Agency";
    }
    if (retail) {
        makeAll(ledger, kRetailAccounts, payee);
    }
    makeAll(ledger, kNewCompany, payee);
    makeMappedEntries(ledger, mapped);
    if (retail) {
        makeAll(ledger, kRetailLists, payee);
        makeTotalItems(ledger);
    } else if (!payee.empty()) {
        make(ledger, {"Vendor", "Name=*"}, payee);
    }
    if (templateName == "retail-summary") {
        makeSummaryTaxes(ledger, payee);
    }
}

}  // namespace companyfile
