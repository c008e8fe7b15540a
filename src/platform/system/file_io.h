#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

// Files by their native names. All calls throw PlatformError with the numbers of the file port.

namespace platform {

/// Who may read a file that is made: its owner and group (less what the umask takes), or the owner.
enum class Access { group, ownerOnly };

/// Throws the error of the file port that stands for `error`, an errno; a path that lacks its
/// folder is told from a missing file.
[[noreturn]] void failFile(int error, const std::string& path);

/// The whole file. One above 64 MB, which no file of the link is, is refused: 75.
std::string readFile(const std::string& path);

/// Replaces a file as a whole by way of a new one in its folder; a file keeps its permissions,
/// unless `access` is ownerOnly. What programs that were ended by force left behind in the folder
/// an hour ago or longer is removed. A device, which cannot be replaced, is written in place.
void replaceFile(const std::string& path, std::string_view bytes, Access access = Access::group);

/// Adds bytes at the end of a file, which is made when it is missing.
void appendFile(const std::string& path, std::string_view bytes);

/// Empties a file, or makes it.
void emptyFile(const std::string& path, Access access);

/// False for a file that cannot be replaced or made: it, or its folder, is marked read-only (nobody
/// has the permission to write, which counts for the superuser too) or refuses this user.
bool canReplace(const std::string& path);

/// Throws when a file or its folder is marked read-only.
void requireChangeable(const std::string& path);

}  // namespace platform
