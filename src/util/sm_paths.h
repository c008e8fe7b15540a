#pragma once

#include "util/legacy_bool.h"

#include <string>

/// The path without one backslash at its end, when there is one; nothing is trimmed.
std::string gfsPath_noSlash(const std::string& path);

/// The folder that holds `path`: what stands in front of the last backslash (one at the end does
/// not count); empty when there is none. With `driveOnly` the first two characters of the path.
std::string gfsPath_parent(const std::string& path, LegacyBool driveOnly = kNo);

/// The file name with `extension` (with its point) in place of its own, or behind a name without
/// one. Extensions are four characters with the point, compared exactly: ".QBW" becomes ".qbw".
std::string gfsFile_extension_set(const std::string& fileName, const std::string& extension);
