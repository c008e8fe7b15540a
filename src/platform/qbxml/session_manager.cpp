#include "platform/qbxml/session_manager.h"

#include "platform/qbxml/request_document.h"
#include "platform/qbxml/response_document.h"

namespace platform {

namespace {

void require(bool condition, std::int32_t number, const char* description) {
    if (!condition) {
        throw PlatformError(number, description);
    }
}

constexpr char kNoSessionText[] = "A request was made without a session that has begun.";

}  // namespace

void QbxmlSessionManager::OpenConnection(const std::string& appId, const std::string& appName) {
    require(!open_, kConnectionOpenedTwice, "The connection is open already.");
    channel_->open(appId, appName);
    open_ = true;
}

void QbxmlSessionManager::BeginSession(const std::string& qbFile, int openMode) {
    require(open_, kNoConnection, "A session was begun without an open connection.");
    require(!begun_, kSessionBegunTwice, "A session has begun already.");
    channel_->begin(qbFile, openMode);
    begun_ = true;
}

void QbxmlSessionManager::EndSession() {
    require(begun_, kSessionOver, "The session has ended, or it was never begun.");
    begun_ = false;  // whatever the channel says: its ticket is of no more use
    channel_->end();
}

void QbxmlSessionManager::CloseConnection() {
    if (!open_) {
        return;
    }
    if (begun_) {
        ignoringErrors([&] { EndSession(); });
    }
    open_ = false;
    channel_->close();
}

std::vector<std::string> QbxmlSessionManager::QBXMLVersionsForSession() {
    require(begun_, kNoSession, kNoSessionText);
    return channel_->versions();
}

std::shared_ptr<IMsgSetRequest>
QbxmlSessionManager::CreateMsgSetRequest(const std::string& country, int major, int minor) {
    const std::string version = std::to_string(major) + "." + std::to_string(minor);
    return std::make_shared<QbxmlRequestSet>(country == "US" ? version : country + version);
}

std::shared_ptr<IMsgSetResponse> QbxmlSessionManager::DoRequests(const IMsgSetRequest& requests) {
    require(begun_, kNoSession, kNoSessionText);
    const auto& set = dynamic_cast<const QbxmlRequestSet&>(requests);
    return readResponseDocument(channel_->exchange(set.document()));
}

}  // namespace platform
