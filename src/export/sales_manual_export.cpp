#include "core/link_setup.h"
#include "core/run_log.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/export_run.h"
#include "export/run_record.h"
#include "export/sale_header.h"
#include "export/sale_post.h"
#include "export/sale_state.h"
#include "export/sales_export.h"
#include "platform/ports/platform.h"
#include "ui/form.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

namespace {

constexpr char kSetup[] = "frmSetup";

/// A sale of one's own choice neither makes its customer nor falls back on the person's name.
constexpr exporting::HeaderRules kRules = {
    .exportCustomer = false, .personName = false, .secondAddressLine = false};

/// Kept: the sale found is taken as it stands, also when it lies behind the number that was typed.
bool findSale(const std::string& invoice) {
    const std::string date = util::trim(ui::formText(kSetup, "txtDateManual"));
    if (!date.empty()) {
        gSalesHead.SaleDate = date;
    }
    gSalesHead.Invoice = gfsNumber_pad7(invoice);
    return gfiDB_Operation(db::tableSalesHead, db::opGreaterEqual, db::keySalesHeadInvoice) != kNo;
}

void reportNoSale(const std::string& invoice) {
    exporting::showStatus("No Sales Exported");
    gpQBLink_Log_writing("ERROR: Sales Invoice = " + invoice + " Not In Database!!!");
    exporting::showStatus("ERROR: Sales Invoice = " + invoice + " Not in database!!!");
}

void exportSale() {
    gpSaleAccumulators_reset();
    exporting::fillSaleHeader(exporting::readSaleCustomer(kRules), kRules);
    if (exporting::readSaleItems()) {
        gpSale_post();
    }
    platform::desktop().pendingEvents();
}

}  // namespace

void gpSalesManual_export() {
    if (!exporting::ensureSession() || gfbDB_OpenTable(db::tableInventory) == kNo ||
        gfbDB_OpenTable(db::tableSalesHead) == kNo) {
        return;
    }
    const exporting::ExportLock lock;
    if (!lock.isHeld()) {
        return;
    }
    exporting::showStatus("Importing Sales Files...");
    gsLastInvoiceDate = exporting::storedDate(gsLastInvoiceDate);
    const std::string invoice = ui::formText(kSetup, "txtInvoiceManual");
    bool found = false;
    if (!exporting::guardRecord("gpSalesManual_export", [&] { found = findSale(invoice); })) {
        return;
    }
    if (!found) {
        reportNoSale(invoice);
        return;
    }
    exporting::beginSalesRecord();
    if (gSalesHead.Description.trimmed() != "Cash Drop") {
        exporting::guardRecord("gpSalesManual_export " + gSalesHead.Invoice.str(), exportSale);
    }
    exporting::showStatus("Manual Sales files import Complete...");
}
