#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "export/export_run.h"
#include "platform/ports/platform.h"
#include "qb/request_cycle.h"
#include "ui/status.h"
#include "util/conversions.h"
#include "windows/frmSetup.h"

#include <algorithm>
#include <optional>

/// `QBLINK.NUV` as the window writes it, and the marks of what was posted last.

namespace {

constexpr std::size_t kDateDigits = 8;

/// The eight digits of a date in either form, display or digits; nothing for any other text.
std::optional<std::string> dateDigits(const std::string& given) {
    const std::string text = util::trim(given);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.size() == kDateDigits && std::all_of(text.begin(), text.end(), isDigit)) {
        const int year = util::toLong(text.substr(0, 4));
        const int month = util::toLong(text.substr(4, 2));
        const int day = util::toLong(text.substr(6, 2));
        return util::isCalendarDate(year, month, day) ? std::optional(text) : std::nullopt;
    }
    std::string stored = exporting::storedDate(text);
    return stored == text ? std::nullopt : std::optional(std::move(stored));
}

constexpr int kPathAccess = 75;

[[noreturn]] void failUnusable() {
    throw platform::PlatformError(
        kPathAccess, core::linkSetupFile() + " cannot be read or written"
    );
}

/// Writes one value. @throws PlatformError when it cannot be written.
void write(const std::string& section, const std::string& key, const std::string& value) {
    if (gLinkIni.WriteData(section, key, value) == kNo) {
        failUnusable();
    }
}

std::string linkMark() {
    return std::string("QB SDK ") + core::kMajorVersion + core::kMinorVersion;
}

/// The accounts as the grid shows them: its texts are the keys.
void writeGrid(ui::Form& form) {
    const auto& rows = form.control("fgrdList").rows;
    for (std::size_t row = 1; row <= goNuvAcct.size(); ++row) {
        write("SALES ACCOUNT", util::trim(rows.at(row).at(0)), util::trim(rows.at(row).at(1)));
    }
}

void writeTaxRows(ui::Form& form) {
    for (int row = 0; form.findControl("txtAR_Sales_TaxID", row) != nullptr; ++row) {
        write(
            "TAX",
            "Tax Rate " + util::trim(form.text("txtAR_Sales_TaxID", row)),
            util::trim(form.text("txtAR_SalesAccount", row))
        );
    }
}

void writeMarks(ui::Form& form) {
    constexpr char kSection[] = "IMPORT HIST";
    write(
        kSection,
        "Last Invoices Posted",
        util::format(util::trim(form.text("txtLastPostedInvoice")), "0000000")
    );
    write(
        kSection, "Last Invoices Posted on", exporting::storedDate(form.text("txtLastPostedDate"))
    );
    if (const auto date = dateDigits(form.text("txtLastPostedPO"))) {
        write(kSection, "Last Purchase Order Posted", *date);
    }
    if (gnLastPOUID != 0) {
        write(kSection, "Last Purchase Order UID", util::textOf(std::int64_t{gnLastPOUID}));
    }
}

/// Takes the old file away. It is kept beside until the new one is whole.
void beginAnew() {
    core::putBackLinkSetup();
    gLinkIni.File(core::linkSetupFile());
    if (!platform::files().fileExists(core::linkSetupFile())) {
        return;
    }
    if (gLinkIni.FileOpen() == kNo) {
        failUnusable();
    }
    core::keepLinkSetup();
    // Kept: a save starts from nothing, and the record marks of the list exports go with it.
    platform::files().remove(core::linkSetupFile());
}

bool writeSetup(ui::Form& form) {
    beginAnew();
    if (gLinkIni.FileOpen() == kNo) {
        return false;
    }
    platform::desktop().pendingEvents();
    const auto box = [&](const char* name) { return form.isOn(name) ? "1" : "0"; };
    write("BRV ID", "NUV-QuickBook Link ID", linkMark());
    writeGrid(form);
    write("PATH", "Company QuickBook File", gsQBFilePath);
    write("MISC", "Net", form.text("txtNet"));
    write("MISC", "Use Accounts Receivable", box("chkUseAR"));
    write("MISC", "Use Accounts Payable", box("CkUseAP"));
    writeTaxRows(form);
    write("SALES ACCOUNT", "Tax Payee", form.text("txtAccount", 2));
    write("SALES ACCOUNT", "Vendors Account Payable", form.text("txtAccount", 1));
    writeMarks(form);
    core::dropKeptLinkSetup();
    return true;
}

}  // namespace

LegacyBool frmSetup::mfbAccounts_Setup_writing() {
    bool written = false;
    qb::onLanguageError(
        [&] { written = writeSetup(*this); },
        [](std::int32_t, const std::string& description) {
            core::showMessage("Unable To Save Setup " + description);
        }
    );
    if (!written) {
        platform::ignoringErrors(core::putBackLinkSetup);  // the next start tries it again
    }
    return legacyBool(written);
}

/// The label tells what is wrong, and the focus stays in the field.
void frmSetup::refuseMark(const char* field, const char* text) {
    ui::showStatus(name(), text);
    setFocus(field);
}

void frmSetup::onLeaveInvoice() {
    constexpr char kField[] = "txtLastPostedInvoice";
    if (control(kField).locked) {
        return;
    }
    const std::string text = util::trim(this->text(kField));
    if (!util::isNumeric(text)) {
        refuseMark(kField, "Invalid Invoice number");
        return;
    }
    gsLastInvoice = util::format(text, "0000000");
    setText(kField, gsLastInvoice);
}

void frmSetup::onLeaveInvoiceDate() {
    constexpr char kField[] = "txtLastPostedDate";
    if (control(kField).locked) {
        return;
    }
    if (const auto date = dateDigits(text(kField))) {
        gsLastInvoiceDate = *date;
    }
}

void frmSetup::onLeavePurchaseDate() {
    constexpr char kField[] = "txtLastPostedPO";
    if (control(kField).locked) {
        return;
    }
    const std::string text = util::trim(this->text(kField));
    const auto date = dateDigits(text);
    if (!date && !util::isNumeric(text)) {
        refuseMark(kField, "Invalid PO number");
        return;
    }
    if (util::isNumeric(text)) {
        setText(kField, util::format(text, "00000000"));
    }
    gsLastPODate = date.value_or("00000000");
}
