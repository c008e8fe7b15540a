#pragma once

#include "util/legacy_bool.h"

#include <string>

/// True when there is a file of that name; an error counts as none.
LegacyBool gfbFile_Exists(const std::string& fileName);

/// Deletes the file when it is there; errors are passed over.
void gpFile_Delete(const std::string& fileName);

/// Remote name of a drive letter, or "Drive Letter Not Found" when no network drive has it.
std::string gfsDrive_remote(const std::string& driveLetter);
