#include "samplestore/store_writer.h"

namespace samplestore {

namespace {

struct Setting {
    const char* key;
    const char* value;
};

/// Accounts of the tenders and of the fixed rows.
constexpr Setting kAccounts[] = {
    {"On Account", "Accounts Receivable"},
    {"Cash", "Cash Drawer"},
    {"Check", "Checking"},
    {"Master Card", "Card Clearing"},
    {"Visa", "Card Clearing"},
    {"Discover", "Card Clearing"},
    {"AMEX", "Amex Clearing"},
    {"Debit", "Card Clearing"},
    {"Layaway Account", "Undeposited Funds"},
    {"Other Credit Card", "Card Clearing"},
    {"Petty Cash", "Petty Cash"},
    {"Cash Paid Out", "Cash Paid Out"},
    {"Inventory", "Inventory Asset"},
    {"Cost Of Goods Sold", "Cost of Goods Sold"},
    {"Shipping Income", "Shipping Income"},
    {"Sales Tax Payable", "Sales Tax Payable"},
    {"Sales Returns", "Returns"},
    {"Sales Layaway", "Layaway Deposits"},
};

constexpr const char* kTaxIds[] = {"0", "A", "B", "C", "D", "E", "F"};

std::string line(const std::string& key, const std::string& value) {
    return key + "=" + value + "\r\n";
}

}  // namespace

std::string linkSetupText(const std::string& companyFile) {
    std::string text = "[BRV ID]\r\n" + line("NUV-QuickBook Link ID", "QB SDK 10");
    text += "[SALES ACCOUNT]\r\n";
    for (const Setting& account : kAccounts) {
        text += line(account.key, account.value);
    }
    text += line("Tax Payee", kTaxPayee) + line("Vendors Account Payable", "Accounts Payable");
    text += "[PATH]\r\n" + line("Company QuickBook File", companyFile);
    text += "[MISC]\r\n" + line("Net", "30") + line("Use Accounts Receivable", "1") +
            line("Use Accounts Payable", "1");
    text += "[TAX]\r\n";
    for (const char* taxId : kTaxIds) {
        text += line(std::string("Tax Rate ") + taxId, "Merchandise Sales");
    }
    return text;
}

std::string summarySetupText(const std::string& companyFile, const std::string& firstDay) {
    std::string text = "[QUICKBOOKS_Summary]\r\n" + line("QuickBooks Path", companyFile) +
                       line("Last Date Posted", shortDay(firstDay, -1));
    for (const Setting& account : kAccounts) {
        text += line(account.key, account.value);
    }
    return text;
}

}  // namespace samplestore
