#pragma once

#include "util/conversions.h"

#include <string>

/// The display form of a date held as yyyymmdd text: day/month/year when `convention` is "E", else
/// month/day/year. Blank text gives two blanks; nothing else is checked.
std::string gfsDate_display(const std::string& stored, const std::string& convention);

/// A date as tables hold it: yyyymmdd.
std::string gfsDate_stored(util::DateTime date);
/// The same for a date text; what is no date passes unchanged.
std::string gfsDate_stored(const std::string& text, util::DateOrder order, int currentYear);
