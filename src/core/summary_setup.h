#pragma once

#include "util/date_time.h"
#include "util/legacy_bool.h"

#include <optional>
#include <string>

/// Settings of Summary mode: section "QUICKBOOKS_Summary" of `NUV.INI` in the data folder, and of
/// `station.ini` in the program folder for the company file.

/// Points `gIni` at `NUV.INI` and reads the company file (when none is known), the first day to
/// post (the day behind "Last Date Posted", or yesterday) and the two switches.
/// @return kYes always; a settings file that cannot be opened is told in a box titled "Error" and
/// leaves everything as it was. @throws BasicError 13 when "Last Date Posted" is no date.
LegacyBool gfbSummary_Setup_reading();

/// Writes settings. @param kind  "P": the company file into `station.ini`, when there is one;
/// "D": the last day `gsToDate` and the account of each row of `goNuvAcct` into `NUV.INI`, when
/// there is a last day. Points `gIni` at the file. A file that cannot be opened is told in a box
/// titled "Error", and nothing is written.
void gpSummary_Setup_writing(const std::string& kind);

namespace core {

/// Section of Summary mode in both files.
inline constexpr char kSummarySection[] = "QUICKBOOKS_Summary";

/// Points `gIni` at `NUV.INI`. @return false when that cannot be used; nothing is told.
bool openSummarySettings();

/// The date of a text in the store's convention; nothing when it is none.
std::optional<util::DateTime> dateOf(const std::string& text);
/// The short date text of the date `days` behind another.
std::string dateText(util::DateTime date, int days = 0);
/// The short date text of the day before today.
std::string yesterdayText();
/// The eight digits of a date text; what is no date passes unchanged.
std::string dayDigits(const std::string& text);

}  // namespace core
