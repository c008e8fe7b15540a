#include "export/posting_items.h"

#include "core/brv_op.h"
#include "db/clear_record.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_Vendors.h"
#include "export/export_run.h"
#include "export/record_exports.h"
#include "qb/clsQBInventory.h"
#include "qb/clsQBVendor.h"
#include "qb/smQB_Utilities.h"
#include "ui/form.h"
#include "util/conversions.h"

#include <vector>

namespace {

constexpr char kSetup[] = "frmSetup";
constexpr int kFirstRate = 1;
constexpr int kLastRate = 6;
constexpr int kPayeeField = 2;

/// A rate of the setup window that bears a name.
struct RateRow {
    std::string code;
    std::string rate;
};

std::vector<RateRow> rateRows() {
    std::vector<RateRow> rows;
    for (int row = kFirstRate; row <= kLastRate; ++row) {
        const std::string code = util::trim(ui::formText(kSetup, "txtAR_Sales_TaxID", row));
        if (!code.empty()) {
            rows.push_back({code, util::trim(ui::formText(kSetup, "txtTaxRate", row))});
        }
    }
    return rows;
}

/// What is there already was made by an earlier set-up: no word about it.
void logRefusal() {
    if (gsQBStatusMessage.find("the list element is already in use.") == std::string::npos) {
        exporting::logGatewayStatus();
    }
}

void addTaxCode(const std::string& name, const std::string& description, bool taxable) {
    clsQBInventory code;
    code.Name = name;
    code.SalesDesc = description;
    code.IsActive = kYes;
    code.IsTaxable = legacyBool(taxable);
    code.SalesTaxCodeAddNewReq();
    logRefusal();
}

void addTaxItem(
    const std::string& name,
    const std::string& rate,
    const std::string& vendor,
    const std::string& description
) {
    clsQBInventory item;
    item.Name = name;
    item.SalesTaxCode = rate;
    item.PrefVendor = vendor;
    item.SalesDesc = description;
    item.IsActive = kYes;
    item.SalesTaxInvtAddNewReq();
    logRefusal();
}

void checkTaxPayee(const std::string& payee) {
    clsQBVendor vendor;
    vendor.Name = payee;
    if (payee.empty() || vendor.VendorSearchRq() == kNo) {
        gbStopRequested = kYes;
        core::showMessage(
            "Tax Payee =" + payee + " Not Found in QB. Please Enter Correct Name of Tax payee!!!"
        );
    }
}

void addTaxCodes(const std::vector<RateRow>& rates) {
    addTaxCode("Non", "Non-Taxable Sales", false);
    addTaxCode("Tax", "Taxable Sales", true);
    for (const RateRow& row : rates) {
        addTaxCode(row.code, row.code + "Taxable Sales ", true);
    }
}

void addTaxItems(const std::vector<RateRow>& rates, const std::string& payee) {
    addTaxItem("Zero", "0", payee, "No sales tax");
    addTaxItem("Out of State", "0", payee, "Out-of-state sale, exempt from sales tax");
    for (const RateRow& row : rates) {
        addTaxItem(row.code, row.rate, payee, row.code + "Sales Tax ");
    }
    for (const RateRow& row : rates) {
        addTaxItem(row.code + "=Taxed-Tax", row.rate, payee, row.code + "Taxed with Tax ");
    }
    addTaxItem("=Taxed", "", exporting::ensureVendor("Default"), "Taxed Total");
}

void addSpecialItems() {
    struct SpecialRow {
        const char* sl;
        const char* description;
    };
    static constexpr SpecialRow kRows[] = {
        {"~Sales", "Sales Summary"},
        {"~ROA", "~ROA"},
        {"~ROAL", "Receive on Account"},
        {"~POUT", "Paid Out"},
        {"~DISCNT", "~DISCNT"},
        {"~VCOUPN", "~VCOUPN"},
        {"~SCOUPN", "~SCOUPN"},
    };
    for (const SpecialRow& row : kRows) {
        gInventory = db::clearedInventory();
        gInventory.SL = row.sl;
        gInventory.Description = row.description;
        gInventory.VendorCode = "Default";
        gInventory.TaxCode = "0";
        gpItem_export();
    }
}

void addWalkInCustomer() {
    gNames = db::clearedNames();
    gNames.ARCode = "Value";
    gNames.TAXCODE = "0";
    gpCustomer_export();
}

void addVendors() {
    for (const char* code : {"Default", "Manual"}) {
        gVendors = db::clearedVendors();
        gVendors.VENDCODE = code;
        gpVendor_export();
    }
}

}  // namespace

void gpPostingItems_setup() {
    if (!exporting::ensureSession()) {
        return;
    }
    const std::string payee = util::trim(ui::formText(kSetup, "txtAccount", kPayeeField));
    checkTaxPayee(payee);
    const std::vector<RateRow> rates = rateRows();
    addTaxCodes(rates);
    addTaxItems(rates, payee);
    addSpecialItems();
    addWalkInCustomer();
    addVendors();
}
