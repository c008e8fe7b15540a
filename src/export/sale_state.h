#pragma once

#include "db/nuvDBSM_SalesItem.h"
#include "qb/clsQBSales.h"
#include "qb/journal_and_payments.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <array>
#include <string>
#include <vector>

/// Working state of the sale under conversion and of the run that it belongs to. Filled by the
/// sales engines, read by the gateway's requests. Money in ten-thousandths.

/// A row of a table of taxes: identifier and rate of the tax setup, and what was added up for it.
struct SaleTaxRow {
    std::string code;
    float rate = 0.0F;  ///< per cent; compared exactly as a 32-bit float
    util::Money amount;
};
using SaleTaxTable = std::array<SaleTaxRow, 8>;

/// Header of the transaction under construction; made anew for every sale.
extern clsQBSales gSale;
/// Lines of the transaction that are in use, counted from 1.
extern int gnSaleLineCount;
/// Items of the sale from index 1; element 0 is not used.
extern std::vector<db::SalesItemRecord> gaSaleItems;
/// Journal lines of the sale from index 1; element 0 is not used.
extern std::vector<QBJournalLine> gaJournalLines;
/// Cost of goods of the sale that needs a journal entry.
extern util::Money gcCogsTotal;
/// `SubTotal` plus the taxes of the sale.
extern util::Money gcSaleGrandTotal;
/// Line totals of the sale's shipping items.
extern util::Money gcSaleShipping;
extern LegacyBool gbSaleOnAccount;
extern LegacyBool gbSaleHasPayment;
extern LegacyBool gbLayawayComplete;
/// Shipping of the sale by tax code; taxable base by rate (row 0: `SubTotal`); tax by rate (row 0:
/// all tax).
extern SaleTaxTable gaTaxableLines;
extern SaleTaxTable gaTaxBases;
extern SaleTaxTable gaTaxAmounts;

/// Running totals of the summary selection; they last as long as the program.
extern util::Money gcSummarySales;
extern util::Money gcSummaryTax;
extern util::Money gcSummaryPaidOut;
extern LegacyBool gbSummaryHasPaidOut;
/// Selects the branch that posts the totals. Nothing sets it.
extern LegacyBool gbSummaryFlush;

/// Makes a new `clsQBSales`, empties lines and items, clears the flags and totals of the sale, and
/// copies tax codes and rates from the tax setup into the three tables.
void gpSaleAccumulators_reset();

namespace exporting {

/// Adds a line to the transaction and gives it, empty.
QBSaleLine& addSaleLine();
/// Adds a journal line: number and side (credit when `signedAmount` is 0 or more) are set.
QBJournalLine& addJournalLine(util::Money signedAmount);
/// Puts the state of this module back to its start values.
void resetSaleState();

}  // namespace exporting
