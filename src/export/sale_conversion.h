#pragma once

#include <cstdint>
#include <string>

/// The steps that turn the current `SalesHead` row and `gaSaleItems` into what the company file
/// receives. They take no arguments and return nothing: they work on the record buffers and on the
/// state of export/sale_state.h, in the order of their declaration.

/// Adds up the taxes of the sale by rate, its shipping by tax code, and `gcSaleGrandTotal`. A rate
/// that the setup does not list is logged and ends the routine; the sale is posted nevertheless.
void mpSaleTaxes_total();

/// Journal lines of the sales that are no goods: payment on account, layaway, payroll deduction.
/// Changes `SubTotal` in the buffer for layaway completions and payroll deductions.
void mpSaleSpecials_journal();

/// One transaction line for each item, and the sales tax item of the sale.
void mpSaleLines_convert();

/// What the tenders mean for the transaction: on account or not, lines for part payments and pay
/// outs, payments on account (sent at once).
void mpSaleTenders_convert();

/// The initials of a sales rep that the company file knows: `code` trimmed, or "H".
std::string gfvSalesRep_resolve(const std::string& code);

/// Reads the tender into the `TenderTypes` buffer. @return `id`, or 99 when there is none.
std::int64_t gfiTender_lookup(std::int64_t id);

namespace exporting {

/// Display form of a shipping code of the store's settings; empty for a blank one.
std::string shippingCode(const std::string& setting);
/// True when the display form of `sl` is one of the store's shipping codes.
bool isShippingItem(const std::string& sl);
/// Name of the payment method that the tender in the buffer becomes, as "Visa Credit Card".
std::string paymentMethodName();
/// A stored date (yyyymmdd) in the store's date convention.
std::string storeDate(const std::string& stored);

}  // namespace exporting
