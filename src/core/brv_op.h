#pragma once

#include "util/legacy_bool.h"

#include <string>

/// The working state of the program that several modules share. One thread; any routine may read
/// and write it. Date texts are in the short date form of the store.

/// Data folder, without a backslash at the end.
extern std::string gsDataPath;
/// Number of the store at work, as text.
extern std::string gsStoreNumber;
/// Raised when the suite holds several stores.
extern LegacyBool gbMultiStore;
/// May the purchase-order export run (again) in this program run?
extern LegacyBool gbPOExportArmed;
/// May the sales export run (again) in this program run?
extern LegacyBool gbSalesExportArmed;
/// The operator pressed Stop; every export loop tests it.
extern LegacyBool gbStopRequested;
/// Raised while an export of purchase orders is under way.
extern LegacyBool gbExportInProgress;
/// The sales export adds sales to running totals instead of sending them.
extern LegacyBool gbSalesSummaryMode;
/// Company file; empty: the one that is open in the accounting package. The session layer opens it.
extern std::string gsQBFilePath;
/// First and last day to post in Summary mode.
extern std::string gsFromDate;
extern std::string gsToDate;
/// Full names of the summary files; blank when there is none.
extern std::string gsSummaryFile;
extern std::string gsPOSummaryFile;
/// One pass for each day (true), or one for the range.
extern LegacyBool gbPostDailyTotals;
/// Run the purchase-order tool too.
extern LegacyBool gbPostPOTotals;
/// Sales tax item of the sale under conversion, or "Non".
extern std::string gsSaleTaxItem;
/// Name of the help file that the application holds.
extern std::string gsHelpFile;

/// `gsQBFileName` and `gsQBSaleTaxItem` are second names of the two values above.
extern std::string& gsQBFileName;
extern std::string& gsQBSaleTaxItem;

namespace core {

/// Title of the application, as message boxes and the session show it.
inline constexpr char kApplicationTitle[] = "NUV Brevane";
inline constexpr char kMajorVersion[] = "1";
inline constexpr char kMinorVersion[] = "0";

/// Shows `text` with an OK button under the application's title (or `title`).
void showMessage(const std::string& text, const std::string& title = kApplicationTitle);

/// Puts the state of this module back to its start values.
void resetOp();

}  // namespace core
