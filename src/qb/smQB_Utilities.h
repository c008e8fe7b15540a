#pragma once

#include "core/brv_op.h"
#include "platform/ports/quickbooks_session.h"
#include "util/legacy_bool.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The one session with the accounting package, and the four beats of every request: reset the
/// request set, append one request, send, read the first answer. One thread; every call that talks
/// to the package blocks until it has answered. Failures show a message box and leave their text in
/// `gsQBStatusMessage`. The company file to open is `gsQBFileName` (core/brv_op.h).

/// The session object; null until qb::session() made it.
extern std::unique_ptr<platform::IQBSessionManager> sessionManager;
/// The current request set. Every reset replaces it; a builder appends one request to it.
extern std::shared_ptr<platform::IMsgSetRequest> requestMsgSet;
/// What the last send returned.
extern std::shared_ptr<platform::IMsgSetResponse> responseMsgSet;
/// The answers of `responseMsgSet`, and the first of them: the only one that is looked at.
extern std::shared_ptr<const std::vector<platform::IResponse>> responseList;
extern std::shared_ptr<const platform::IResponse> response;

/// Set once the session is up; never cleared by its end.
extern LegacyBool gbSessionBegun;
/// Set with `gbSessionBegun`, cleared when an opening fails.
extern LegacyBool gbConnectionReady;
/// The session can be used; export engines test it. Windows set it after their own opening.
extern LegacyBool gbQBReady;
/// Highest version of the request format that the package reports, as "13.0"; its first and last
/// character; and "US" or "Canada".
extern std::string gsQBVersion;
extern std::string gsQBMajorVersion;
extern std::string gsQBMinorVersion;
extern std::string gsQBCountry;
/// 0: a set goes on after a failed request; 1: it is rolled back; 2: it stops there. Stays 0.
extern std::int32_t gnRequestOnError;
/// Count of elements in the last list that a search read.
extern std::int32_t gnQBReturnedCount;
/// Text of the last failure, or status text of the last answer; empty after a success.
extern std::string gsQBStatusMessage;
/// Error number that goes with `gsQBStatusMessage`; 0 for a refused request.
extern std::int32_t gnQBErrorNumber;
/// Severity and code of the last status; only the purchase-order search fills them.
extern std::string gsQBStatusSeverity;
extern std::string gsQBStatusCode;
/// Cleared with the others; nothing fills it.
extern std::string gsQBStatusDetail;

/// Initials of the sales reps of the company file, from index 1 (index 0 is unused).
extern std::vector<std::string> gaQBSalesReps;

/// Opens the connection and the session with `gsQBFileName`, and settles the version.
/// @param appName  name that the package shows; an empty one becomes the application's title.
/// @return kNo after a failure, which was told in a box ("Dll Missing", or the error's number).
/// @throws platform::ProgramEnd when the package is not running with a company file, or another
/// program holds the file: both end the program after their box.
LegacyBool gfbOpenConnectionBeginSession(std::string& appName);

/// Ends the session and closes the connection when a session was ever begun; clears `gbQBReady`. A
/// failure is told in a box, and `gbQBReady` stays.
void EndSessionCloseConnection();  // NOLINT(readability-identifier-naming): fixed name

/// Opens the session again and again until it stands and `gbQBReady` is set. Gives up, with
/// `gbQBReady` kNo, when Stop was requested or no operator is left who could answer the box.
void gpSessionReady_ensure();

/// Highest version of the request format that the package reports; empty when it reports none.
/// Costs one exchange. @throws PlatformError, BasicError 91 when the answer holds no host record.
std::string gfsQBXMLVersion_latest(platform::IQBSessionManager& session);

/// A new request set for the version that gfsQBXMLVersion_latest gives. Costs one exchange.
/// @throws PlatformError, BasicError as there.
std::shared_ptr<platform::IMsgSetRequest>
gfoMsgSetRequest_latest(platform::IQBSessionManager& session);

/// Replaces `requestMsgSet` by a new, empty set and clears the status. Costs one exchange.
/// @return kNo when there is no set. @throws PlatformError, BasicError to the builder's handler.
LegacyBool gfbRequestMsgSet_reset();

/// Sends `requestMsgSet` and keeps what came back in `responseMsgSet`.
/// @return kNo after a failure, told in a box and in `gsQBStatusMessage` as "Error: number text".
LegacyBool gfbRequests_do();

/// Takes the first answer of what came back into `response`.
/// @return kYes when its status is 0. Every other status is told in a box (also 1, not found) and
/// gives kNo, with the status text in `gsQBStatusMessage`.
LegacyBool gfbResponse_get();

/// Empties the status texts and the error number.
void gpQBStatus_clear();

namespace qb {

/// The session object, made on first use. @throws PlatformError kNoObjectLibrary when there is
/// none.
platform::IQBSessionManager& session();

/// Fills `gaQBSalesReps` with the active sales reps of the company file, by one query. A failure
/// leaves the list without entries; its text stays in `gsQBStatusMessage`.
void querySalesReps();

/// Puts the state of the whole gateway back to its start values.
void resetGateway();

}  // namespace qb
