#pragma once

#include "platform/ports/quickbooks_session.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace testing_support {

/// What goes wrong with one exchange.
enum class FaultPoint {
    before,  ///< the call fails and nothing was done
    after,   ///< the work is done, then the call fails
    answer,  ///< the work is done, but another text comes back than the company file's answer
};

/// What a FaultChannel is to do, and what it saw. Shared with the test, because the channel belongs
/// to the session; it outlives sessions and counts over all of them.
class FaultPlan {
public:
    /// Lets the `n`-th exchange from now (1: the next) fail with `error`, once.
    /// @param containing  counts only documents that hold this text, as "<SalesReceiptAdd>".
    void
    failAt(int n, FaultPoint point, platform::PlatformError error, std::string containing = {});
    /// Lets the `n`-th exchange from now bring back `answer` instead of what was answered.
    void answerAt(int n, std::string answer, std::string containing = {});
    /// Lets the program be gone at the `n`-th exchange from now: ProgramEnd unwinds, no handler
    /// runs.
    void endProgramAt(int n, FaultPoint point, std::string containing);
    /// Lets the next `times` beginnings of a session fail with `error`.
    void refuseBegin(platform::PlatformError error, int times = 1);

    int exchanges = 0;                   ///< that reached the channel, failed ones included
    std::vector<std::string> documents;  ///< that the company file carried out, in order

private:
    friend class FaultChannel;
    struct Fault {
        int left;
        FaultPoint point;
        std::optional<platform::PlatformError> error;  ///< unset: the program ends
        std::string answer;
        std::string containing;
        void raise() const;
    };
    std::optional<Fault> due(const std::string& document);

    std::vector<Fault> faults_;
    std::vector<platform::PlatformError> refusals_;
};

/// A channel that fails as planned, around a real one.
class FaultChannel : public platform::QBChannel {
public:
    FaultChannel(std::unique_ptr<platform::QBChannel> channel, std::shared_ptr<FaultPlan> plan)
        : channel_(std::move(channel)),
          plan_(std::move(plan)) {}

    void open(const std::string& appId, const std::string& appName) override {
        channel_->open(appId, appName);
    }
    void begin(const std::string& companyFile, int openMode) override;
    void end() override { channel_->end(); }
    void close() override { channel_->close(); }
    [[nodiscard]] std::vector<std::string> versions() override { return channel_->versions(); }
    std::string exchange(const std::string& document) override;

private:
    std::unique_ptr<platform::QBChannel> channel_;
    std::shared_ptr<FaultPlan> plan_;
};

}  // namespace testing_support
