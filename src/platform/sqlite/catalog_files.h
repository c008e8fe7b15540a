#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The file of this machine behind one of the suite's names: backslashes part folders, blanks and
/// points at the end do not count, a part that is not there in its own letter case is looked for in
/// any.
std::string nativeFile(std::string_view name);

/// The file of `catalog` in `folder` (a name of the suite); it need not exist.
std::string catalogFile(const std::string& folder, const std::string& catalog);

/// Names of the catalogs whose files lie in `folder`, sorted.
std::vector<std::string> catalogNames(const std::string& folder);

}  // namespace platform
