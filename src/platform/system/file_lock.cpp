#include "platform/system/file_lock.h"

#include "platform/system/file_io.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t kMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP;

/// The system gives a file free when its descriptor is closed, at the end of the program at last.
class HeldFile : public FileLock {
public:
    explicit HeldFile(int descriptor) : descriptor_(descriptor) {}
    ~HeldFile() override { ::close(descriptor_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    HeldFile(HeldFile&&) = delete;
    HeldFile& operator=(HeldFile&&) = delete;

private:
    int descriptor_;
};

}  // namespace

std::unique_ptr<FileLock> holdFile(const std::string& path) {
    const int descriptor =
        ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kMode);  // NOLINT: the system's call
    if (descriptor < 0) {
        failFile(errno, path);
    }
    auto held = std::make_unique<HeldFile>(descriptor);
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        return held;
    }
    if (errno != EWOULDBLOCK) {
        failFile(errno, path);
    }
    return nullptr;
}

}  // namespace platform
