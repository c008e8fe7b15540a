#include "core/brv_op.h"
#include "core/run_log.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/sale_columns.h"
#include "export/sale_conversion.h"
#include "export/sale_state.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

#include <algorithm>

namespace exporting {

namespace {

constexpr std::size_t kCodeWidth = 8;
constexpr char kUntaxedCode[] = "0";

void addShipping(const db::SalesItemRecord& item) {
    gInventory.RecordNum = item.InvUID;
    gfiDB_Operation(db::tableInventory, db::opEqual, db::keyInventoryRecordNum);
    gcSaleShipping += item.LineTotal;
    // An untaxed sale carries its shipping under the untaxed code, whatever the item says.
    const std::string code =
        gSalesHead.Taxed.view() == "N" ? kUntaxedCode : gInventory.TaxCode.trimmed();
    auto* const row =
        std::find_if(gaTaxableLines.begin(), gaTaxableLines.end(), [&](const SaleTaxRow& entry) {
            return entry.code == code;
        });
    if (row != gaTaxableLines.end()) {
        row->amount += item.LineTotal;
    }
}

void mpSaleTaxCodes_total() {
    if (gSalesHead.Taxed.view() == "N") {
        gInventory.TaxCode = kUntaxedCode;
    }
    for (const auto* setting : {&gCommon.ShippingSL1, &gCommon.ShippingSL2, &gCommon.ShippingSL3}) {
        const std::string code = shippingCode(setting->str());
        for (std::size_t index = 1; !code.empty() && index < gaSaleItems.size(); ++index) {
            const db::SalesItemRecord& item = gaSaleItems[index];
            if (util::trim(gfsItem_name(item.SL.str())) == code) {
                addShipping(item);
            }
        }
    }
}

/// Row of the tax of `rate`, from 1; 7 when the setup does not list it.
std::size_t taxRow(float rate) {
    std::size_t row = 1;
    while (row < gaTaxAmounts.size() - 1 && gaTaxAmounts.at(row).rate != rate) {
        ++row;
    }
    return row;
}

void logUnlistedRate(float rate) {
    gpQBLink_Log_writing(
        "Invoice #" + gSalesHead.Invoice.str() + " has an unlisted tax rate of " +
        util::textOf(rate) + "%.\r\n" +
        " This item will not import. Please correct your setup before importing "
    );
}

}  // namespace

std::string shippingCode(const std::string& setting) {
    std::string code = util::rtrim(setting);
    if (code.empty() || code.size() > kCodeWidth) {
        return util::trim(code);  // nine characters: the display form already
    }
    code.resize(kCodeWidth, ' ');
    return util::trim(gfsItem_name(code));
}

bool isShippingItem(const std::string& sl) {
    const std::string name = util::trim(gfsItem_name(sl));
    const auto* const settings = &gCommon;
    return !name.empty() && (name == shippingCode(settings->ShippingSL1.str()) ||
                             name == shippingCode(settings->ShippingSL2.str()) ||
                             name == shippingCode(settings->ShippingSL3.str()));
}

}  // namespace exporting

void mpSaleTaxes_total() {
    exporting::mpSaleTaxCodes_total();
    util::Money totalTax;
    const int taxes = exporting::slotCount(gSalesHead.Taxes);
    for (int slot = 0; slot < taxes; ++slot) {
        const exporting::TaxColumns& columns =
            exporting::kTaxColumns.at(static_cast<std::size_t>(slot));
        const util::Money tax = gSalesHead.*columns.tax;
        if (tax.isZero()) {
            continue;
        }
        const float rate = gSalesHead.*columns.rate;
        const std::size_t row = exporting::taxRow(rate);
        if (row == gaTaxAmounts.size() - 1) {
            exporting::logUnlistedRate(rate);
            return;
        }
        // Kept: the shipping taken off is that of the tax's place in the sale, not of its row here.
        const util::Money shipping = gaTaxableLines.at(static_cast<std::size_t>(slot) + 1).amount;
        gaTaxBases.at(row).amount = gSalesHead.*columns.amount - shipping;
        gaTaxAmounts.at(row).amount = tax;
        totalTax += tax;
        gcSaleGrandTotal += gSalesHead.*columns.amount;
    }
    gaTaxBases.at(0).amount = gSalesHead.SubTotal;
    gaTaxAmounts.at(0).amount = totalTax;
    gcSaleGrandTotal = gaTaxBases.at(0).amount + gaTaxAmounts.at(0).amount;
}
