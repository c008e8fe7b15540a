#include "windows/export_engines.h"

#include "export/export_run.h"
#include "export/sales_export.h"

#include <string>

namespace windows {

ExportEngines& exportEngines() {
    static ExportEngines engines = {{
        {exportInventory, "Inventory", {}, {}},
        {exportNames, "Names", {}, {}},
        {exportVendors, "Vendors", {}, {}},
        {exportSales, "Sales", gpSales_export, {}},
        {exportPOHistory, "PO History", {}, {}},
        {exportSalesCodes, "Sales Codes", {}, {}},
        {exportTenders, "Tenders", {}, {}},
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
