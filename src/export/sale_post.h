#pragma once

/// Posts the sale in the buffers: duplicate search, conversion, cost-of-goods journal, and the
/// request of its kind. Needs the current `SalesHead` row, `gaSaleItems` and the header of `gSale`.
/// What the company file refuses is logged; nothing stops the run. Changes `SubTotal` in the buffer
/// for layaway completions and payroll deductions.
void gpSale_post();

namespace exporting {

/// Adds the sale in the buffer to the running totals of the summary selection.
void addSaleToTotals();

}  // namespace exporting
