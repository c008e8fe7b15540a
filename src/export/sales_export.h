#pragma once

/// The automatic sales export: walks `SalesHead` in invoice order from the last invoice posted,
/// posts every eligible sale, and stores the position in `QBLINK.NUV` at the end of the table, at
/// the end date, and on Stop. Reports to the label of `frmSetup`, to the log and to `QBLINK.NUV`.
void gpSales_export();

/// Posts the one sale of `txtInvoiceManual`, whatever its mark and the last invoice posted say. A
/// number that does not exist posts the next higher one. Stores no position.
void gpSalesManual_export();
