#pragma once

#include <array>
#include <cstddef>
#include <functional>

namespace windows {

/// Check boxes `chkExport` by what they export. The numbers are the order in which the exports run.
enum ExportIndex : int {
    exportInventory = 0,
    exportNames,
    exportVendors,
    exportSales,
    exportPOHistory,
    exportSalesCodes,
    exportTenders,
};

inline constexpr std::size_t kExportCount = 7;

/// What the buttons `Cmdexport` and `CmdManual` run for one check box. An empty function stands for
/// an export that this build does not hold.
struct ExportEngine {
    ExportIndex index;
    const char* name;  ///< what it exports, for messages
    std::function<void()> automatic;
    std::function<void()> manual;
};

using ExportEngines = std::array<ExportEngine, kExportCount>;

/// The engines by index.
ExportEngines& exportEngines();

/// Runs the engine; for an empty one the setup window's label says that there is none.
void runEngine(const ExportEngine& engine, const std::function<void()>& run);

}  // namespace windows
