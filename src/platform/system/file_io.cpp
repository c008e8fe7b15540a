#include "platform/system/file_io.h"

#include "platform/ports/platform_error.h"
#include "platform/system/file_names.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <limits>
#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t kOwnerMode = S_IRUSR | S_IWUSR;
constexpr mode_t kGroupMode = kOwnerMode | S_IRGRP;

/// What is larger is no file of settings or of a day's totals, and takes minutes to go through.
constexpr off_t kLargestFile = off_t{64} * 1024 * 1024;
constexpr std::string_view kTemporaryBegin = ".brevane-";
constexpr std::string_view kTemporaryEnd = ".tmp";
/// Other computers can write into a shared folder; none of them takes so long for a file.
constexpr std::time_t kLongestWriteSeconds = 3600;

/// Numbers and texts that the suite knows its file errors by.
struct FileError {
    int number;
    const char* description;
};

constexpr FileError kBadName = {52, "Bad file name or number"};
constexpr FileError kNotFound = {53, "File not found"};
constexpr FileError kDiskFull = {61, "Disk full"};
constexpr FileError kDenied = {70, "Permission denied"};
constexpr FileError kPathAccess = {75, "Path/File access error"};
constexpr FileError kPathNotFound = {76, "Path not found"};

struct ErrnoCase {
    int error;
    FileError meaning;
};

constexpr ErrnoCase kErrnoCases[] = {
    {ENOENT, kNotFound},
    {ENOTDIR, kPathNotFound},
    {ENAMETOOLONG, kBadName},
    {EINVAL, kBadName},
    {EILSEQ, kBadName},
    {ENOSPC, kDiskFull},
    {EDQUOT, kDiskFull},
    {EFBIG, kDiskFull},
    {EACCES, kDenied},
    {EPERM, kDenied},
};

/// An open file that closes itself.
class OpenFile {
public:
    OpenFile(std::string path, int flags, mode_t mode = 0)
        : path_(std::move(path)),
          handle_(::open(path_.c_str(), flags | O_CLOEXEC, mode)) {
        if (handle_ < 0) {
            failFile(errno, path_);
        }
    }
    ~OpenFile() {
        if (handle_ >= 0) {
            ::close(handle_);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    OpenFile(OpenFile&&) = delete;
    OpenFile& operator=(OpenFile&&) = delete;

    [[nodiscard]] int handle() const { return handle_; }

    [[nodiscard]] off_t size() const {
        struct stat status {};
        return ::fstat(handle_, &status) == 0 ? status.st_size : 0;
    }

    std::string readAll() {
        std::string bytes;
        std::array<char, 65536> block{};
        while (true) {
            const ssize_t count = ::read(handle_, block.data(), block.size());
            if (count > 0) {
                bytes.append(block.data(), static_cast<std::size_t>(count));
            } else if (count == 0) {
                return bytes;
            } else if (errno != EINTR) {
                failFile(errno, path_);
            }
        }
    }

    void writeAll(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::write(handle_, bytes.data(), bytes.size());
            if (count >= 0) {
                bytes.remove_prefix(static_cast<std::size_t>(count));
            } else if (errno != EINTR) {
                failFile(errno, path_);
            }
        }
    }

    void setMode(mode_t mode) {
        if (::fchmod(handle_, mode) != 0) {
            failFile(errno, path_);
        }
    }

    /// Some file systems tell of a full disk no earlier than here.
    void finish(bool toDisk) {
        // What cannot be synchronised (a device, a pipe) says so with EINVAL or EROFS.
        if (toDisk && ::fsync(handle_) != 0 && errno != EINVAL && errno != EROFS) {
            failFile(errno, path_);
        }
        if (::close(std::exchange(handle_, -1)) != 0 && errno != EINTR) {
            failFile(errno, path_);
        }
    }

private:
    std::string path_;
    int handle_;
};

std::optional<struct stat> statusOf(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return status;
}

bool isMarkedReadOnly(const std::string& path) {
    const auto status = statusOf(path);
    return status && (status->st_mode & kAnyWrite) == 0;
}

bool mayWrite(const std::string& path) {
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0 && !isMarkedReadOnly(path);
}

/// The file behind a symbolic link, so that the link stays a link.
std::string targetOf(const std::string& path) {
    std::error_code failure;
    const std::filesystem::path target = std::filesystem::canonical(path, failure);
    return failure ? path : target.string();
}

/// Name for the file that will take the place of another one in `folder`.
std::string temporaryName(const std::string& folder) {
    static unsigned counter = 0;
    return folder + "/" + std::string(kTemporaryBegin) + std::to_string(::getpid()) + "-" +
           std::to_string(++counter) + std::string(kTemporaryEnd);
}

/// Is it what a program left behind that was ended by force while it replaced a file?
bool isLeftBehind(const std::filesystem::path& path) {
    const std::string name = path.filename().string();
    if (!name.starts_with(kTemporaryBegin) || !name.ends_with(kTemporaryEnd)) {
        return false;
    }
    pid_t writer = 0;
    const char* const digits = name.data() + kTemporaryBegin.size();
    const auto parsed = std::from_chars(digits, name.data() + name.size(), writer);
    const auto status = statusOf(path.string());
    return parsed.ec == std::errc() && *parsed.ptr == '-' && writer > 0 && ::kill(writer, 0) != 0 &&
           errno == ESRCH && status && std::time(nullptr) - status->st_mtime > kLongestWriteSeconds;
}

/// Clears a folder of what programs left behind in it. What cannot be removed stays.
void removeLeftBehind(const std::string& folder) {
    std::error_code failure;
    std::filesystem::directory_iterator entries(folder, failure);
    const std::filesystem::directory_iterator end;
    for (; !failure && entries != end; entries.increment(failure)) {
        if (isLeftBehind(entries->path())) {
            std::error_code ignored;
            std::filesystem::remove(entries->path(), ignored);
        }
    }
}

void writeInPlace(const std::string& path, std::string_view bytes) {
    OpenFile file(path, O_WRONLY | O_TRUNC);
    file.writeAll(bytes);
    file.finish(false);
}

/// Writes a new file with the permissions of the one that it will replace.
void writeNew(
    const std::string& path,
    std::string_view bytes,
    const std::optional<struct stat>& replaced,
    Access access
) {
    const bool ownerOnly = access == Access::ownerOnly;
    OpenFile file(path, O_WRONLY | O_CREAT | O_EXCL, ownerOnly ? kOwnerMode : kGroupMode);
    if (replaced && !ownerOnly) {
        file.setMode(replaced->st_mode & kPermissions);
        // Only the superuser can hand a file to its former owner; for all others it is theirs.
        static_cast<void>(::fchown(file.handle(), replaced->st_uid, replaced->st_gid) == 0);
    }
    file.writeAll(bytes);
    file.finish(true);
}

}  // namespace

void failFile(int error, const std::string& path) {
    FileError meaning = kPathAccess;
    for (const ErrnoCase& entry : kErrnoCases) {
        if (entry.error == error) {
            meaning = entry.meaning;
        }
    }
    if (error == ENOENT && !statusOf(parentOf(path))) {
        meaning = kPathNotFound;
    }
    throw PlatformError(meaning.number, meaning.description);
}

std::string readFile(const std::string& path) {
    OpenFile file(path, O_RDONLY);
    if (file.size() > kLargestFile) {
        failFile(EIO, path);
    }
    return file.readAll();
}

void replaceFile(const std::string& path, std::string_view bytes, Access access) {
    const std::string target = targetOf(path);
    const auto replaced = statusOf(target);
    if (replaced && !S_ISREG(replaced->st_mode)) {
        writeInPlace(target, bytes);
        return;
    }
    requireChangeable(target);
    removeLeftBehind(parentOf(target));
    const std::string temporary = temporaryName(parentOf(target));
    try {
        writeNew(temporary, bytes, replaced, access);
        if (::rename(temporary.c_str(), target.c_str()) != 0) {
            failFile(errno, target);
        }
    } catch (const PlatformError&) {
        ::unlink(temporary.c_str());
        throw;
    }
}

void appendFile(const std::string& path, std::string_view bytes) {
    requireChangeable(path);
    OpenFile file(path, O_WRONLY | O_APPEND | O_CREAT, kGroupMode);
    file.writeAll(bytes);
    file.finish(false);
}

void emptyFile(const std::string& path, Access access) {
    requireChangeable(path);
    const bool ownerOnly = access == Access::ownerOnly;
    OpenFile file(path, O_WRONLY | O_CREAT | O_TRUNC, ownerOnly ? kOwnerMode : kGroupMode);
    if (ownerOnly) {
        file.setMode(kOwnerMode);
    }
    file.finish(false);
}

bool canReplace(const std::string& path) {
    const std::string target = targetOf(path);
    const auto status = statusOf(target);
    if (status && S_ISDIR(status->st_mode)) {
        return false;
    }
    if (status && !mayWrite(target)) {
        return false;
    }
    const bool isDevice = status && !S_ISREG(status->st_mode);
    return isDevice || mayWrite(parentOf(target));
}

void requireChangeable(const std::string& path) {
    const auto status = statusOf(path);
    const bool isDevice = status && !S_ISREG(status->st_mode) && !S_ISDIR(status->st_mode);
    if (!isDevice && (isMarkedReadOnly(path) || isMarkedReadOnly(parentOf(path)))) {
        throw PlatformError(kPathAccess.number, kPathAccess.description);
    }
}

}  // namespace platform
