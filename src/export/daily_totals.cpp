#include "core/link_setup.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/sale_conversion.h"
#include "export/sale_post.h"
#include "export/sale_state.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"

namespace exporting {

namespace {

constexpr std::int64_t kCashTender = 1;

void addToTotals() {
    if (gSalesHead.Description.trimmed().find("Paid Out") != std::string::npos) {
        gcSummaryPaidOut -= gSalesHead.TotalSale;
        gbSummaryHasPaidOut = kYes;
    } else {
        gcSummarySales += gSalesHead.TotalSale;
    }
    // Kept: the fourth and fifth tax of a sale do not count here.
    gcSummaryTax += gSalesHead.TaxTax1 + gSalesHead.TaxTax2 + gSalesHead.TaxTax3;
}

void addTotalLine(util::Money amount, const char* item, const char* description) {
    QBSaleLine& line = addSaleLine();
    line.Amount = amount;
    line.Item = item;
    line.Description = description;
    line.Quantity = 1;
}

/// Posts the running totals as one sales receipt and starts them again.
void postTotals() {
    gSale = clsQBSales();
    gSale.RefNumber = gSalesHead.SaleDate.trimmed();
    gSale.SalesRep = gfvSalesRep_resolve(gSalesHead.Scode.trimmed().substr(0, 5));
    gSale.SaleAmount = gcSummarySales;
    gSale.TxnDate = storeDate(gSalesHead.SaleDate.str());
    const bool taxed = !gcSummaryTax.isZero();
    if (taxed) {
        addToTotals();
    }
    gaSaleLines.assign(1, QBSaleLine());
    gnSaleLineCount = 0;
    addTotalLine(gcSummarySales - gcSummaryTax, "~Sales", "Sales Summary");
    gSale.DepositToAccount = gfsTenderAccount_get(kCashTender);
    if (taxed) {
        addTotalLine(gcSummaryTax, "=Taxed", "TaxTotal");
        gaSaleLines.back().Quantity = 0;
    }
    if (gbSummaryHasPaidOut != kNo) {
        addTotalLine(gcSummaryPaidOut, "~POUT", "Paid Out");
        gbSummaryHasPaidOut = kNo;
        gcSummaryPaidOut = {};
    }
    gSale.SalesReceiptAddRq();
    gcSummarySales = {};
    gcSummaryTax = {};
}

}  // namespace

void addSaleToTotals() {
    if (gbSummaryFlush == kNo) {
        addToTotals();
    } else {
        postTotals();
    }
}

}  // namespace exporting
