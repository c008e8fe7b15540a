#include "export/sales_export.h"

#include "core/brv_op.h"
#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/export_run.h"
#include "export/record_walk.h"
#include "export/run_record.h"
#include "export/sale_header.h"
#include "export/sale_post.h"
#include "export/sale_state.h"
#include "platform/ports/platform.h"
#include "ui/form.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

namespace {

enum class Step { next, pastEndDate, stopped };
enum class Walk { moved, endOfTable, broken };

/// Invoice and date of the row in the buffer become the position. Kept: on Stop and at the end date
/// that row has not been posted and counts as done all the same.
void storePosition() {
    if (core::openLinkSetup()) {
        core::storeMark("Last Invoices Posted", gSalesHead.Invoice.str());
        core::storeMark("Last Invoices Posted on", gSalesHead.SaleDate.str());
        exporting::salesRecord().end(gSalesHead.Invoice.str());
    }
}

bool isSkipped() {
    return util::aboveBlank(gSalesHead.Status.view()) ||
           gSalesHead.Description.trimmed() == "Cash Drop" ||
           gSalesHead.Invoice.view() <= gsLastInvoice;
}

void showProgress() {
    exporting::showStatus(
        gSalesHead.SaleDate.str() + " " + gSalesHead.Invoice.str() + " " + gSalesHead.ARCode.str() +
        " " + util::format(gSalesHead.TotalSale, "0.00") + " "
    );
}

void exportSale() {
    exporting::salesRecord().reach(gSalesHead.Invoice.str());
    gpSaleAccumulators_reset();
    constexpr exporting::HeaderRules kRules;
    std::string customer;
    if (gbSalesSummaryMode == kNo) {
        customer = exporting::readSaleCustomer(kRules);
    }
    exporting::fillSaleHeader(customer, kRules);
    if (exporting::readSaleItems()) {
        gpSale_post();
    }
}

Step visitRow() {
    if (isSkipped()) {
        return Step::next;
    }
    showProgress();
    if (gSalesHead.SaleDate.str() > ui::formText("frmSetup", "txtToDate")) {
        return Step::pastEndDate;
    }
    if (gbStopRequested != kNo) {
        return Step::stopped;
    }
    exporting::guardRecord("gpSales_export " + gSalesHead.Invoice.str(), exportSale);
    return Step::next;
}

bool isNewRow(exporting::VisitedKeys& visited) {
    return visited.add("gpSales_export", "invoice " + gSalesHead.Invoice.str());
}

Walk nextRow(exporting::VisitedKeys& visited) {
    platform::desktop().pendingEvents();
    bool found = false;
    const bool walked = exporting::guardRecord("gpSales_export Get Next", [&] {
        found = gfiDB_Operation(db::tableSalesHead, db::opGetNext, db::keySalesHeadInvoice) != kNo;
    });
    if (!walked) {
        return Walk::broken;
    }
    return found && isNewRow(visited) ? Walk::moved : Walk::endOfTable;
}

void endAtDate() {
    exporting::showStatus(
        "Finished Exporting Sales To Date: " + ui::formText("frmSetup", "txtToDate") +
        " Invoice #" + gSalesHead.Invoice.str()
    );
    storePosition();
}

void endStopped() {
    exporting::showStatus("Exporting Sales Cancelled");
    storePosition();
}

void endOfTable() {
    storePosition();
    exporting::showStatus("Sales Files Importing Complete...");
    gbSalesExportArmed = kNo;
}

void walkSales() {
    gpSaleAccumulators_reset();
    exporting::VisitedKeys visited;
    isNewRow(visited);
    Walk walk = Walk::moved;
    while (walk == Walk::moved) {
        const Step step = visitRow();
        if (step == Step::pastEndDate) {
            endAtDate();
            return;
        }
        if (step == Step::stopped) {
            endStopped();
            return;
        }
        walk = nextRow(visited);
    }
    if (walk == Walk::broken) {
        endStopped();
    } else {
        endOfTable();
    }
}

bool findFirstSale() {
    gSalesHead.SaleDate = gsLastInvoiceDate;
    gSalesHead.Invoice = gsLastInvoice;
    return gfiDB_Operation(db::tableSalesHead, db::opGreaterEqual, db::keySalesHeadInvoice) != kNo;
}

bool openTables() {
    return gfbDB_OpenTable(db::tableInventory) != kNo && gfbDB_OpenTable(db::tableSalesHead) != kNo;
}

}  // namespace

void gpSales_export() {
    if (!exporting::ensureSession() || !openTables()) {
        return;
    }
    const exporting::ExportLock lock;
    if (!lock.isHeld()) {
        return;
    }
    exporting::showStatus("Importing Sales Files...");
    if (gbSalesExportArmed == kNo) {
        core::showMessage("You Already run once, Please exit the program if you want to run again");
        return;
    }
    exporting::normaliseDateField("txtToDate");
    gsLastInvoiceDate = exporting::storedDate(gsLastInvoiceDate);
    gsLastInvoice = gfsNumber_pad7(gsLastInvoice);
    bool found = false;
    if (!exporting::guardRecord("gpSales_export", [&] { found = findFirstSale(); })) {
        return;
    }
    if (!found) {
        exporting::showStatus("No Sales Imported");
        gbSalesExportArmed = kNo;
        return;
    }
    exporting::beginSalesRecord();
    walkSales();
}
