#include "companyfile/company_file.h"
#include "samplestore/store_writer.h"
#include "util/conversions.h"

#include <iterator>

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

/// Ways of paying as the exports name them.
constexpr const char* kPaymentMethods[] = {
    "Cash",
    "Check",
    "Master Card Credit Card",
    "Visa Debit Card",
    "Discover",
    "AMEX",
    "Debit",
    "Layaway Account",
    "Other Credit Card",
};

constexpr const char* kTaxIds[] = {"0", "A", "B", "C", "D", "E", "F"};

std::string line(const std::string& key, const std::string& value) {
    return key + "=" + value + "\r\n";
}

std::string element(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
}

std::string escaped(const char* text) {
    std::string result;
    for (const char* character = text; *character != '\0'; ++character) {
        result += *character == '\'' ? std::string("&apos;") : std::string(1, *character);
    }
    return result;
}

std::string request(const std::string& name, const std::string& content) {
    return element(name + "AddRq", element(name + "Add", content));
}

std::string listEntries() {
    std::string requests;
    for (const Person& person : kPeople) {
        const std::string first = escaped(person.firstName);
        const std::string last = escaped(person.lastName);
        requests += request("Employee", element("FirstName", first) + element("LastName", last)) +
                    request(
                        "SalesRep",
                        element("Initial", person.code) +
                            element("SalesRepEntityRef", element("FullName", first + " " + last))
                    );
    }
    for (const char* method : kPaymentMethods) {
        requests += request("PaymentMethod", element("Name", method));
    }
    return requests;
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
    // Items and customers above these numbers are new to the books: the first daily export sends
    // them.
    text += "[IMPORT HIST]\r\n" +
            line("Last Inventory UID Added", std::to_string(kDeletedItem - 1)) +
            line("Last Name UID Added", "1");
    return text;
}

void writeCompanyFile(const std::string& file, const std::string& linkSetup) {
    companyfile::CompanyFile books = companyfile::CompanyFile::create(file, "retail", linkSetup);
    const std::string answer = books.exchange(
        "<?xml version=\"1.0\" encoding=\"utf-8\"?><?qbxml version=\"6.0\"?>" +
        element(
            "QBXML", "<QBXMLMsgsRq onError=\"continueOnError\">" + listEntries() + "</QBXMLMsgsRq>"
        )
    );
    // The template has some of the ways of paying already.
    const std::string otherThanKnown =
        util::replaceAll(answer, "statusCode=\"3100\" statusSeverity=\"Error\"", "");
    if (otherThanKnown.find("statusSeverity=\"Error\"") != std::string::npos) {
        throw companyfile::CallError(
            companyfile::hresult::kCannotOpen, "the company file refused: " + answer
        );
    }
}

}  // namespace samplestore
