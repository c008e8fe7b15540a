#pragma once

#include "platform/ports/quickbooks_session.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// A channel that appends every document sent and received to a file, each after a line
/// `<!-- sent -->` or `<!-- received -->`. The file holds company data: only its owner may read it.
/// A log that cannot be written never disturbs the exchange.
class LoggingChannel : public QBChannel {
public:
    /// @param logFile  native name of the file; made when it is missing.
    LoggingChannel(std::unique_ptr<QBChannel> channel, std::string logFile)
        : channel_(std::move(channel)),
          logFile_(std::move(logFile)) {}

    void open(const std::string& appId, const std::string& appName) override {
        channel_->open(appId, appName);
    }
    void begin(const std::string& companyFile, int openMode) override {
        channel_->begin(companyFile, openMode);
    }
    void end() override { channel_->end(); }
    void close() override { channel_->close(); }
    [[nodiscard]] std::vector<std::string> versions() override { return channel_->versions(); }
    std::string exchange(const std::string& document) override;

private:
    std::unique_ptr<QBChannel> channel_;
    std::string logFile_;
};

/// The channel itself, or one that logs it when the environment variable BREVANE_QBXML_LOG names a
/// file.
std::unique_ptr<QBChannel> withDocumentLog(std::unique_ptr<QBChannel> channel);

}  // namespace platform
