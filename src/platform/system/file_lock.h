#pragma once

#include "platform/ports/system.h"

#include <memory>
#include <string>

namespace platform {

/// Holds the file at a native path, made when it is missing; null while another holder has it.
/// @throws PlatformError with the numbers of the file port when it cannot be opened, or when its
/// file system knows no locks.
std::unique_ptr<FileLock> holdFile(const std::string& path);

}  // namespace platform
