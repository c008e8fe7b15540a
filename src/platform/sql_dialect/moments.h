#pragma once

#include "util/date_time.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The moment that a text of a statement or of a stored row means: "yyyymmdd", "yyyy-mm-dd",
/// "m/d/yyyy" (also with "-" and "."), each with or without a time ("12:00:00 AM", "14:30",
/// "14:30:05.000"), or a time alone, which falls on 1 January 1900, as a blank text does.
std::optional<util::DateTime> momentFromText(std::string_view text);

/// "yyyy-mm-dd hh:mm:ss", or the date alone.
std::string momentText(util::DateTime moment, bool withTime);

}  // namespace platform
