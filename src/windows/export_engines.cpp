#include "windows/export_engines.h"

#include "export/export_run.h"
#include "export/list_exports.h"
#include "export/purchase_orders_export.h"
#include "export/sales_export.h"

#include <string>

namespace windows {

ExportEngines& exportEngines() {
    static ExportEngines engines = {{
        {exportInventory, "Inventory", gpInventory_export, gpInventoryManual_export},
        {exportNames, "Names", gpNames_export, gpNamesManual_export},
        {exportVendors, "Vendors", [] { gpVendors_export("frmSetup"); }, gpVendorsManual_export},
        {exportSales, "Sales", gpSales_export, gpSalesManual_export},
        {exportPOHistory, "PO History", gpPurchaseOrders_export, gpPurchaseOrdersManual_export},
        {exportSalesCodes, "Sales Codes", gpSalesCodes_export, gpSalesCodesManual_export},
        {exportTenders, "Tenders", gpTenders_export, gpTendersManual_export},
    }};
    return engines;
}

void runEngine(const ExportEngine& engine, const std::function<void()>& run) {
    if (run) {
        run();
        return;
    }
    exporting::showStatus(
        "The export of " + std::string(engine.name) + " is not in this version of the link yet."
    );
}

}  // namespace windows
