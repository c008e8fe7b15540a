#pragma once

#include "samplestore/shop.h"

#include <string>

namespace samplestore {

/// What to make.
struct Options {
    std::string folder;  ///< native name of the data folder; made when it is missing
    int sales = 0;
    int days = 0;
    std::uint64_t seed = 0;
    std::string firstDay = "20150105";  ///< yyyymmdd
    bool summary = false;               ///< a store in Summary mode, with its settings
    std::string toolsFolder;            ///< where the report tools lie; empty: none are copied
};

/// Makes the folder of a new store: its owner's only when it is new. A folder that is there must be
/// empty, and keeps its permissions.
/// @throws platform::PlatformError 58 for a folder that holds anything, 75 when it cannot be made.
void prepareFolder(const std::string& folder);

/// Makes the whole store in `options.folder` through the installed adapters: settings, catalog with
/// its tables, `QBLINK.NUV`, company file. The engine stays connected to the catalog.
/// @return count of rows written. @throws platform::PlatformError (58 when the folder holds a store
/// already), companyfile::CallError.
int makeStore(const Options& options);

/// Fills the catalog of the connected engine: all twelve tables, in one transaction.
/// @return count of rows written. @throws platform::PlatformError when the store refuses.
int writeTables(const Options& options);

/// Short date text of the day `offset` days behind `firstDay` (yyyymmdd).
std::string shortDay(const std::string& firstDay, int offset);

/// Text of `NUV.INI` for Summary mode: the company file, the day before `firstDay` as the last one
/// posted, and the accounts of the tenders.
std::string summarySetupText(const std::string& companyFile, const std::string& firstDay);

/// Text of `QBLINK.NUV` for this shop and the company file at `companyFile`.
std::string linkSetupText(const std::string& companyFile);

}  // namespace samplestore
