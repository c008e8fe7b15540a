#pragma once

#include "platform/ports/quickbooks_session.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// Numbers of calls that come in the wrong order.
inline constexpr std::int32_t kNoSession = static_cast<std::int32_t>(0x8004040C);
inline constexpr std::int32_t kSessionOver = static_cast<std::int32_t>(0x8004040D);
inline constexpr std::int32_t kNoConnection = static_cast<std::int32_t>(0x8004040F);
inline constexpr std::int32_t kSessionBegunTwice = static_cast<std::int32_t>(0x80040411);
inline constexpr std::int32_t kConnectionOpenedTwice = static_cast<std::int32_t>(0x80040412);

/// The session over a channel that carries documents: writes each request set as one document,
/// reads the answer, and keeps the order of calls (open, begin, requests, end, close). Closing a
/// connection ends its session; closing one that is not open does nothing.
class QbxmlSessionManager : public IQBSessionManager {
public:
    explicit QbxmlSessionManager(std::unique_ptr<QBChannel> channel)
        : channel_(std::move(channel)) {}

    void OpenConnection(const std::string& appId, const std::string& appName) override;
    void BeginSession(const std::string& qbFile, int openMode) override;
    void EndSession() override;
    void CloseConnection() override;
    [[nodiscard]] std::vector<std::string> QBXMLVersionsForSession() override;
    [[nodiscard]] std::shared_ptr<IMsgSetRequest>
    CreateMsgSetRequest(const std::string& country, int major, int minor) override;
    /// Takes the sets of this adapter only.
    std::shared_ptr<IMsgSetResponse> DoRequests(const IMsgSetRequest& requests) override;

private:
    std::unique_ptr<QBChannel> channel_;
    bool open_ = false;
    bool begun_ = false;
};

}  // namespace platform
