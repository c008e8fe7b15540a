#pragma once

/// Posts the receipts of `POHistory` from the last one posted on as purchase orders: one for each
/// run of rows with the same number. Keeps its marks in `QBLINK.NUV` at the end and on Stop; can
/// run once for each time that it was armed, unless it was stopped. A failure of one order is
/// logged and the walk goes on.
void gpPurchaseOrders_export();

/// Posts the receipts of the order in `txtPOHisPONum` (of the day in `txtPOHisDate`, when one is
/// typed) as one purchase order. Stores no marks.
void gpPurchaseOrdersManual_export();
