#include "util/sm_paths.h"

#include "util/conversions.h"

#include <algorithm>

std::string gfsPath_noSlash(const std::string& path) {
    // A blank behind the backslash protects it: only the very last character is looked at.
    return path.ends_with('\\') ? path.substr(0, path.size() - 1) : path;
}

std::string gfsPath_parent(const std::string& path, LegacyBool driveOnly) {
    if (driveOnly != kNo) {
        return path.substr(0, 2);
    }
    const std::string plain = gfsPath_noSlash(path);
    const std::size_t slash = plain.rfind('\\');
    return slash == std::string::npos ? "" : plain.substr(0, slash);
}

std::string gfsFile_extension_set(const std::string& fileName, const std::string& extension) {
    constexpr std::size_t kExtensionLength = 4;
    const std::size_t stem = fileName.size() - std::min(kExtensionLength, fileName.size());
    if (fileName.find('.', stem) == std::string::npos) {
        return fileName + extension;
    }
    return fileName.substr(0, stem) + extension;
}
