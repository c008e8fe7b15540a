#include "platform/system/file_names.h"

#include "platform/ports/platform_error.h"
#include "util/conversions.h"
#include "util/text_codec.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include <sys/stat.h>

namespace platform {

namespace {

constexpr int kBadName = 52;

/// A part of a name without the blanks and points at its end; "." and ".." are parts of their own.
std::string cleanPart(const std::string& part) {
    if (part == "." || part == "..") {
        return part;
    }
    return part.substr(0, part.find_last_not_of(" .") + 1);
}

bool exists(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}

/// The entry of a folder that bears the name in other letter case; of several the first one by
/// character codes.
std::optional<std::string> otherCase(const std::string& folder, const std::string& part) {
    std::optional<std::string> best;
    std::error_code failure;
    std::filesystem::directory_iterator entries(folder, failure);
    const std::filesystem::directory_iterator end;
    for (; !failure && entries != end; entries.increment(failure)) {
        const std::string entry = entries->path().filename().string();
        if (util::sameName(util::fromUtf8(entry), part) && (!best || entry < *best)) {
            best = entry;
        }
    }
    return best;
}

std::string join(const std::string& folder, const std::string& part) {
    if (folder.empty()) {
        return part;
    }
    return folder.ends_with('/') ? folder + part : folder + "/" + part;
}

}  // namespace

std::string nativeName(std::string_view name) {
    if (name.find('\0') != std::string_view::npos || util::trim(name).empty()) {
        throw PlatformError(kBadName, "Bad file name or number");
    }
    const std::string slashed = util::replaceAll(name, "\\", "/");
    std::string path = slashed.starts_with('/') ? "/" : "";
    for (const std::string& given : util::split(slashed, '/')) {
        const std::string part = cleanPart(given);
        if (part.empty()) {
            continue;
        }
        const std::string exact = join(path, util::toUtf8(part));
        if (exists(exact)) {
            path = exact;
            continue;
        }
        const auto other = otherCase(path.empty() ? "." : path, part);
        path = other ? join(path, *other) : exact;
    }
    return path.empty() ? "." : path;
}

std::string parentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string executableFile() {
    std::error_code failure;
    return std::filesystem::read_symlink("/proc/self/exe", failure).string();
}

std::string userFolder(const char* variable, const char* fallback) {
    // The variables are read while the program has one thread.
    const char* const own = std::getenv(variable);  // NOLINT(concurrency-mt-unsafe)
    if (own != nullptr && *own == '/') {
        return join(own, "brevane");
    }
    const char* const home = std::getenv("HOME");  // NOLINT(concurrency-mt-unsafe)
    if (home == nullptr || *home == '\0') {
        return {};
    }
    return join(join(home, fallback), "brevane");
}

}  // namespace platform
