#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The native name (UTF-8, slashes) of a file by its name in the suite (code page 1252,
/// backslashes). A part that is not there in its own letter case is looked for in any; blanks and
/// points at the end of a part do not count. Parts that are not there stay as they were given.
/// @throws PlatformError 52 for an empty name and one with a code 0.
std::string nativeName(std::string_view name);

/// The folder of a native name: "." for a bare name.
std::string parentOf(const std::string& path);

/// Full native name of the running program's file.
std::string executableFile();

/// A folder of the user's own: `<variable>/brevane`, or `brevane` below `fallback` in the home
/// folder; empty when there is neither.
std::string userFolder(const char* variable, const char* fallback);

}  // namespace platform
