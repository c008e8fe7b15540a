#include "platform/system/native_files.h"

#include "platform/system/file_io.h"
#include "platform/system/file_lock.h"
#include "platform/system/file_names.h"
#include "util/conversions.h"
#include "util/text_codec.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t kFolderMode = S_IRWXU | S_IRWXG;

std::string defaultProgramFolder() {
    const char* const named =
        std::getenv("BREVANE_PROGRAM_FOLDER");  // NOLINT(concurrency-mt-unsafe)
    if (named != nullptr && *named != '\0') {
        return util::fromUtf8(named);
    }
    return util::fromUtf8(parentOf(executableFile()));
}

bool isThere(const std::string& name, bool folder) {
    if (util::trim(name).empty() || name.find('\0') != std::string::npos) {
        return false;
    }
    struct stat status {};
    if (::stat(nativeName(name).c_str(), &status) != 0) {
        return false;
    }
    const bool isFolder = S_ISDIR(status.st_mode);
    return isFolder == folder;
}

/// Does `name` fit a pattern of letters, "?" for one character and "*" for any number?
bool fits(std::string_view name, std::string_view pattern) {
    std::size_t position = 0;
    std::size_t place = 0;
    std::size_t star = std::string_view::npos;
    std::size_t afterStar = 0;  // where the text that the last "*" stands for ends
    while (position < name.size()) {
        if (place < pattern.size() && pattern[place] == '*') {
            star = place++;
            afterStar = position;
        } else if (place < pattern.size() && (pattern[place] == '?' || pattern[place] == name[position])) {
            ++place;
            ++position;
        } else if (star != std::string_view::npos) {
            place = star + 1;
            position = ++afterStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', place) == std::string_view::npos;
}

/// Names of what a folder holds and `isWanted` takes, sorted without regard to letter case.
std::vector<std::string>
entriesOf(const std::string& path, const std::function<bool(const std::string&, bool)>& isWanted) {
    std::error_code failure;
    std::filesystem::directory_iterator entries(path, failure);
    const std::filesystem::directory_iterator end;
    std::vector<std::string> names;
    for (; !failure && entries != end; entries.increment(failure)) {
        const std::string name = util::fromUtf8(entries->path().filename().string());
        std::error_code ignored;
        if (isWanted(name, entries->is_directory(ignored))) {
            names.push_back(name);
        }
    }
    if (failure) {
        // A folder that is missing is a missing path, whatever else is there.
        failFile(failure.value() == ENOENT ? ENOTDIR : failure.value(), path);
    }
    std::sort(names.begin(), names.end(), [](const std::string& left, const std::string& right) {
        const std::string small = util::lower(left);
        const std::string other = util::lower(right);
        return small != other ? small < other : left < right;
    });
    return names;
}

std::string withoutSlash(std::string folder) {
    while (folder.ends_with('\\') || folder.ends_with('/')) {
        folder.pop_back();
    }
    return folder;
}

}  // namespace

NativeFiles::NativeFiles(std::string programFolder)
    : programFolder_(
          withoutSlash(programFolder.empty() ? defaultProgramFolder() : std::move(programFolder))
      ) {}

bool NativeFiles::fileExists(const std::string& name) const {
    return isThere(name, false);
}

bool NativeFiles::folderExists(const std::string& name) const {
    return isThere(name, true);
}

void NativeFiles::makeFolder(const std::string& name) {
    const std::string path = nativeName(name);
    requireChangeable(path);
    if (::mkdir(path.c_str(), kFolderMode) != 0) {
        failFile(errno, path);
    }
}

void NativeFiles::remove(const std::string& name) {
    const std::string path = nativeName(name);
    requireChangeable(path);
    if (::unlink(path.c_str()) != 0) {
        failFile(errno, path);
    }
}

void NativeFiles::copy(const std::string& from, const std::string& to) {
    replaceFile(nativeName(to), readFile(nativeName(from)));
}

std::string NativeFiles::read(const std::string& name) const {
    return readFile(nativeName(name));
}

void NativeFiles::write(const std::string& name, const std::string& bytes) {
    replaceFile(nativeName(name), bytes);
}

void NativeFiles::append(const std::string& name, const std::string& bytes) {
    appendFile(nativeName(name), bytes);
}

void NativeFiles::truncate(const std::string& name, bool ownerOnly) {
    emptyFile(nativeName(name), ownerOnly ? Access::ownerOnly : Access::group);
}

std::vector<std::string>
NativeFiles::list(const std::string& folder, const std::string& pattern) const {
    // "*.*" is the suite's way to ask for all files, those without a point included.
    const std::string wanted = pattern == "*.*" ? "*" : util::lower(pattern);
    return entriesOf(nativeName(folder), [&](const std::string& name, bool isFolder) {
        return !isFolder && fits(util::lower(name), wanted);
    });
}

std::vector<std::string> NativeFiles::folders(const std::string& folder) const {
    return entriesOf(nativeName(folder), [](const std::string& name, bool isFolder) {
        return isFolder && !name.starts_with('.');
    });
}

bool NativeFiles::isWritable(const std::string& name) const {
    const bool isName = !util::trim(name).empty() && name.find('\0') == std::string::npos;
    return isName && canReplace(nativeName(name));
}

std::unique_ptr<FileLock> NativeFiles::lock(const std::string& name) {
    return holdFile(nativeName(name));
}

std::string NativeFiles::traceFolder() const {
    if (canReplace(nativeName(programFolder_ + "\\BRV.txt"))) {
        return programFolder_;
    }
    const std::string own = userFolder("XDG_STATE_HOME", ".local/state");
    std::error_code failure;
    std::filesystem::create_directories(own, failure);
    return own.empty() || failure ? programFolder_ : util::fromUtf8(own);
}

std::optional<std::string> NativeFiles::driveRemote(char letter) const {
    static_cast<void>(letter);  // network folders of this platform bear no letters
    return std::nullopt;
}

}  // namespace platform
