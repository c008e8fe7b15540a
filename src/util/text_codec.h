#pragma once

#include <string>
#include <string_view>

namespace util {

/// Text of code page 1252 as UTF-8. Every byte has a counterpart: the five that the code page
/// leaves undefined become the control characters of the same number.
std::string toUtf8(std::string_view text);

/// UTF-8 as text of code page 1252. A character without a counterpart, and every byte that is no
/// well-formed UTF-8, becomes "?". `fromUtf8(toUtf8(text))` is `text` for all 256 bytes.
std::string fromUtf8(std::string_view text);

}  // namespace util
