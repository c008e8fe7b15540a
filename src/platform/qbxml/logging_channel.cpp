#include "platform/qbxml/logging_channel.h"

#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

void writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// Appends one document; nothing happens when the file cannot be had for its owner alone.
void append(const std::string& name, const char* heading, const std::string& document) {
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, kOwnerOnly);
    if (file < 0) {
        return;
    }
    struct stat status {};
    const bool isPlain = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    if (!isPlain || ::fchmod(file, kOwnerOnly) == 0) {
        const bool endsLine = !document.empty() && document.back() == '\n';
        writeAll(file, std::string(heading) + "\n" + document + (endsLine ? "" : "\n"));
    }
    ::close(file);
}

}  // namespace

std::string LoggingChannel::exchange(const std::string& document) {
    append(logFile_, "<!-- sent -->", document);
    std::string answer = channel_->exchange(document);
    append(logFile_, "<!-- received -->", answer);
    return answer;
}

std::unique_ptr<QBChannel> withDocumentLog(std::unique_ptr<QBChannel> channel) {
    const char* const logFile = std::getenv("BREVANE_QBXML_LOG");
    if (logFile == nullptr || *logFile == '\0') {
        return channel;
    }
    return std::make_unique<LoggingChannel>(std::move(channel), logFile);
}

}  // namespace platform
