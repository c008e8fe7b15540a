#include "core/link_setup.h"

#include "core/brv_op.h"
#include "core/run_log.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"

std::vector<NuvAccountRow> goNuvAcct;
std::int16_t gnTenderUpper = -1;
std::array<NuvTaxRow, 8> gaNuvTax;
clsINI_Services gLinkIni;
std::string gsNetTerms;
LegacyBool gbUseAR = kNo;
LegacyBool gbUseAP = kNo;
std::string gsLastInvoice;
std::string gsLastInvoiceDate;
std::string gsLastPODate;
std::int32_t gnLastPOUID = 0;
std::int16_t gnLastInventoryUID = 0;
std::int16_t gnLastNameUID = 0;
std::string gsTaxPayee;
std::string gsVendorsAccountPayable;

namespace {

constexpr const char* kFixedRows[] = {
    "Petty Cash",
    "Cash Paid Out",
    "Inventory",
    "Cost Of Goods Sold",
    "Shipping Income",
    "Sales Tax Payable",
    "Sales Returns",
    "Sales Layaway",
};
constexpr const char* kTaxIds[] = {"0", "A", "B", "C", "D", "E", "F"};
constexpr std::size_t kStoredTaxRows = std::size(kTaxIds);

std::string tenderText(std::int64_t id, std::string NuvAccountRow::*field) {
    std::string text;
    for (int index = 0; index <= gnTenderUpper; ++index) {
        const NuvAccountRow& row = goNuvAcct.at(static_cast<std::size_t>(index));
        if (row.tenderNumber == id) {
            text = row.*field;
        }
    }
    return text;
}

void readMarks(clsINI_Services& ini) {
    const auto read = [&](const char* key, const char* defaultValue) {
        return ini.getvalue("IMPORT HIST", key, defaultValue);
    };
    gsLastInvoice = read("Last Invoices Posted", "");
    gsLastInvoiceDate = read("Last Invoices Posted on", "");
    gsLastPODate = read("Last Purchase Order Posted", "");
    gnLastPOUID = util::toLong(read("Last Purchase Order UID", "0"));
    gnLastInventoryUID = util::toInteger(read("Last Inventory UID Added", "0"));
    gnLastNameUID = util::toInteger(read("Last Name UID Added", "0"));
}

void readMapping(clsINI_Services& ini) {
    for (NuvAccountRow& row : goNuvAcct) {
        row.QBAccount = ini.getvalue("SALES ACCOUNT", util::trim(row.AcctDesc), "");
    }
    gsQBFilePath = ini.getvalue("PATH", "Company QuickBook File", "");
    gsNetTerms = ini.getvalue("MISC", "Net", "");
    gbUseAR = util::toInteger(ini.getvalue("MISC", "Use Accounts Receivable", "0"));
    gbUseAP = util::toInteger(ini.getvalue("MISC", "Use Accounts Payable", "0"));
    for (std::size_t row = 0; row < kStoredTaxRows; ++row) {
        NuvTaxRow& tax = gaNuvTax.at(row);
        tax.salesAccount = ini.getvalue("TAX", "Tax Rate " + util::trim(tax.taxId), "");
    }
    gsVendorsAccountPayable = ini.getvalue("SALES ACCOUNT", "Vendors Account Payable", "");
    gsTaxPayee = ini.getvalue("SALES ACCOUNT", "Tax Payee", "");
}

/// True when the file is there and bears the link's mark; then everything was read.
bool readSetup() {
    core::putBackLinkSetup();
    clsINI_Services ini;
    ini.File(core::linkSetupFile());
    if (ini.FileOpen() == kNo) {
        return false;
    }
    platform::desktop().pendingEvents();
    const std::string mark = ini.getvalue("BRV ID", "NUV-QuickBook Link ID", "");
    if (util::trim(mark).find("QB") == std::string::npos) {
        return false;
    }
    readMarks(ini);
    readMapping(ini);
    return true;
}

/// The file that holds the whole setup while it is written anew.
std::string keptSetupFile() {
    return gsDataPath + "\\QBLINK.SAV";
}

void showReadFailure(const std::string& description) {
    core::showMessage("Unable To Read Setup " + description);
}

}  // namespace

LegacyBool gfbAccounts_Setup_reading() {
    LegacyBool result = kNo;
    try {
        result = legacyBool(readSetup());
    } catch (const util::BasicError& error) {
        showReadFailure(error.what());
    } catch (const platform::PlatformError& error) {
        showReadFailure(error.description());
    }
    gpBRV_Trace_writing("gfbAccounts_Setup_reading=" + util::booleanWord(result != kNo));
    return result;
}

std::string gfsTenderAccount_get(std::int64_t id) {
    return tenderText(id, &NuvAccountRow::QBAccount);
}

std::string gfsTenderName_get(std::int64_t id) {
    return tenderText(id, &NuvAccountRow::AcctDesc);
}

namespace core {

std::string fixedAccount(FixedAccount row) {
    const std::size_t index =
        static_cast<std::size_t>(gnTenderUpper) + static_cast<std::size_t>(row);
    return index < goNuvAcct.size() ? util::rtrim(goNuvAcct[index].QBAccount) : std::string();
}

void buildAccountTable(const std::vector<TenderRow>& tenders) {
    goNuvAcct.clear();
    for (const TenderRow& tender : tenders) {
        goNuvAcct.push_back({tender.number, tender.type, tender.description, ""});
    }
    gnTenderUpper = static_cast<std::int16_t>(static_cast<int>(tenders.size()) - 1);
    for (const char* name : kFixedRows) {
        goNuvAcct.push_back({0, 0, name, ""});
    }
    for (std::size_t row = 0; row < kStoredTaxRows; ++row) {
        gaNuvTax.at(row).taxId = kTaxIds[row];
    }
}

std::string linkSetupFile() {
    return gsDataPath + "\\QBLINK.NUV";
}

bool openLinkSetup() {
    platform::ignoringErrors(putBackLinkSetup);  // a mark counts for what is there, whole or not
    gLinkIni.File(linkSetupFile());
    return gLinkIni.FileOpen() != kNo;
}

void keepLinkSetup() {
    platform::files().write(keptSetupFile(), platform::files().read(linkSetupFile()));
}

void dropKeptLinkSetup() {
    if (platform::files().fileExists(keptSetupFile())) {
        platform::files().remove(keptSetupFile());
    }
}

void putBackLinkSetup() {
    platform::FilePort& files = platform::files();
    if (!files.fileExists(keptSetupFile())) {
        return;
    }
    const std::string whole = files.read(keptSetupFile());
    if (files.fileExists(linkSetupFile())) {
        files.remove(linkSetupFile());  // first: a full disk has no room for a third file
    }
    files.write(linkSetupFile(), whole);
    files.remove(keptSetupFile());
}

void storeMark(const std::string& key, const std::string& value) {
    gLinkIni.WriteData("IMPORT HIST", key, value);
}

std::string storedMark(const std::string& key) {
    return openLinkSetup() ? gLinkIni.getvalue("IMPORT HIST", key, "") : std::string();
}

void resetLinkSetup() {
    goNuvAcct.clear();
    gnTenderUpper = -1;
    gaNuvTax = {};
    gLinkIni = clsINI_Services();
    gbUseAR = kNo;
    gbUseAP = kNo;
    gnLastPOUID = 0;
    gnLastInventoryUID = 0;
    gnLastNameUID = 0;
    for (std::string* text :
         {&gsNetTerms,
          &gsLastInvoice,
          &gsLastInvoiceDate,
          &gsLastPODate,
          &gsTaxPayee,
          &gsVendorsAccountPayable}) {
        text->clear();
    }
}

}  // namespace core
