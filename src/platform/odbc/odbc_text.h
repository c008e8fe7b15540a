#pragma once

#include <string>
#include <string_view>

namespace platform {

/// UTF-8 in the form in which drivers take texts.
std::u16string utf16FromUtf8(std::string_view utf8);

/// A driver's text in code page 1252; a character without a counterpart becomes "?".
std::string textFromUtf16(std::u16string_view utf16);

}  // namespace platform
