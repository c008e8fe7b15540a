#pragma once

#include "util/date_time.h"
#include "util/money.h"

#include <cstdint>
#include <string>
#include <variant>

namespace util {

/// The value of one column of one row, or of one part of a key. No value (SQL NULL) is
/// `std::monostate`. Text is code page 1252. Integers of every width are `int64_t`, REAL is
/// `float`, DECIMAL and NUMERIC are `Money`.
using Value =
    std::variant<std::monostate, std::string, std::int64_t, float, double, Money, DateTime>;

}  // namespace util
