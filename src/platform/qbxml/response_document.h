#pragma once

#include "platform/ports/quickbooks_session.h"

#include <memory>
#include <string>

namespace platform {

/// Number of an answer that cannot be read: whether the requests were carried out is not known.
inline constexpr std::int32_t kUnreadableAnswer = static_cast<std::int32_t>(0x80040402);

/// Reads an answer document. A document without an answer set has no response list.
/// @throws PlatformError kUnreadableAnswer when it is empty, no XML, no qbXML answer, or holds an
/// answer without a numeric status.
std::shared_ptr<IMsgSetResponse> readResponseDocument(const std::string& document);

}  // namespace platform
