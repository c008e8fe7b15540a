#include "export/sale_state.h"

#include "core/link_setup.h"
#include "ui/form.h"
#include "util/conversions.h"

clsQBSales gSale;
int gnSaleLineCount = 0;
std::vector<db::SalesItemRecord> gaSaleItems(1);
std::vector<QBJournalLine> gaJournalLines(1);
util::Money gcCogsTotal;
util::Money gcSaleGrandTotal;
util::Money gcSaleShipping;
LegacyBool gbSaleOnAccount = kNo;
LegacyBool gbSaleHasPayment = kNo;
LegacyBool gbLayawayComplete = kNo;
SaleTaxTable gaTaxableLines;
SaleTaxTable gaTaxBases;
SaleTaxTable gaTaxAmounts;
util::Money gcSummarySales;
util::Money gcSummaryTax;
util::Money gcSummaryPaidOut;
LegacyBool gbSummaryHasPaidOut = kNo;
LegacyBool gbSummaryFlush = kNo;

namespace {

constexpr std::size_t kTaxRowsWithRate = 7;

void resetTaxTables() {
    for (std::size_t row = 0; row < gaTaxAmounts.size(); ++row) {
        SaleTaxRow fresh;
        fresh.code = gaNuvTax.at(row).taxId;
        if (row < kTaxRowsWithRate) {
            fresh.rate = static_cast<float>(
                util::val(ui::formText("frmSetup", "txtTaxRate", static_cast<int>(row)))
            );
        }
        gaTaxableLines.at(row) = fresh;
        gaTaxBases.at(row) = fresh;
        gaTaxAmounts.at(row) = fresh;
    }
}

}  // namespace

void gpSaleAccumulators_reset() {
    gSale = clsQBSales();
    gaSaleLines.assign(1, QBSaleLine());
    gaSaleItems.assign(1, db::SalesItemRecord());
    gnSaleLineCount = 0;
    gbLayawayComplete = kNo;
    gbSaleHasPayment = kNo;
    gbSaleOnAccount = kNo;
    gcCogsTotal = {};
    gcSaleGrandTotal = {};
    gcSaleShipping = {};
    resetTaxTables();
}

namespace exporting {

QBSaleLine& addSaleLine() {
    ++gnSaleLineCount;
    gaSaleLines.resize(static_cast<std::size_t>(gnSaleLineCount) + 1);
    return gaSaleLines.back();
}

QBJournalLine& addJournalLine(util::Money signedAmount) {
    QBJournalLine line;
    line.Side = signedAmount < util::Money() ? 0 : 1;
    line.LineNumber = util::textOf(static_cast<std::int64_t>(gaJournalLines.size()));
    gaJournalLines.push_back(line);
    return gaJournalLines.back();
}

void resetSaleState() {
    gpSaleAccumulators_reset();
    gaJournalLines.assign(1, QBJournalLine());
    gaTaxableLines = {};
    gaTaxBases = {};
    gaTaxAmounts = {};
    gcSummarySales = {};
    gcSummaryTax = {};
    gcSummaryPaidOut = {};
    gbSummaryHasPaidOut = kNo;
    gbSummaryFlush = kNo;
}

}  // namespace exporting
