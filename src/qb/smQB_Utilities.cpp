#include "qb/smQB_Utilities.h"

#include "core/brvDBSM_Interface.h"
#include "platform/ports/platform.h"
#include "qb/clsQBAccount.h"
#include "qb/clsQBPO.h"
#include "qb/clsQBSales.h"
#include "qb/request_cycle.h"
#include "util/conversions.h"

#include <algorithm>
#include <array>
#include <cstdio>

std::unique_ptr<platform::IQBSessionManager> sessionManager;
std::shared_ptr<platform::IMsgSetRequest> requestMsgSet;
std::shared_ptr<platform::IMsgSetResponse> responseMsgSet;
std::shared_ptr<const std::vector<platform::IResponse>> responseList;
std::shared_ptr<const platform::IResponse> response;
LegacyBool gbSessionBegun = kNo;
LegacyBool gbConnectionReady = kNo;
LegacyBool gbQBReady = kNo;
std::string gsQBVersion;
std::string gsQBMajorVersion;
std::string gsQBMinorVersion;
std::string gsQBCountry;
std::int32_t gnRequestOnError = 0;
std::int32_t gnQBReturnedCount = 0;
std::string gsQBStatusMessage;
std::int32_t gnQBErrorNumber = 0;
std::string gsQBStatusSeverity;
std::string gsQBStatusCode;
std::string gsQBStatusDetail;
std::vector<std::string> gaQBSalesReps;

namespace {

constexpr char kApplicationId[] = "Nuv BRV";
constexpr int kSingleUser = 0;

/// "HRESULT" box of a failed open or close.
void showSessionError(
    const std::string& heading, std::int32_t number, const std::string& description
) {
    std::array<char, 16> hexadecimal{};
    std::snprintf(hexadecimal.data(), hexadecimal.size(), "%X", static_cast<std::uint32_t>(number));
    core::showMessage(
        heading + "\r\nHRESULT = " + std::to_string(number) + " (" + hexadecimal.data() +
        ") \r\n\r\n" + description
    );
}

/// An error that ends the program after its box.
[[noreturn]] void endAfter(const std::string& text) {
    core::showMessage(text);
    platform::ignoringErrors([] { qb::session().CloseConnection(); });
    gpApp_end();
}

void reportOpenError(std::int32_t number, const std::string& description) {
    switch (number) {
    case platform::kNoObjectLibrary:
        core::showMessage(
            "QBFC13.dll is missing, please reinstall them by using the QBFC13 installers",
            "Dll Missing"
        );
        return;
    case platform::kNotRunning:
        endAfter("You must have QuickBooks running with the company\r\n"
                 "file open to use this program.");
    case platform::kFileInUse:
        endAfter("This QuickBooks company file is open in single user mode and\r\n"
                 "another application is already accessing it.  Please exit the\r\n"
                 "other application and run this application again.");
    default:
        break;
    }
    showSessionError("Error in OpenConnectionBeginSession", number, description);
    if (gbSessionBegun != kNo) {
        platform::ignoringErrors([] { qb::session().EndSession(); });
    }
    platform::ignoringErrors([] { qb::session().CloseConnection(); });
}

void openSession(const std::string& appName) {
    platform::IQBSessionManager& manager = qb::session();
    manager.OpenConnection(kApplicationId, appName);
    manager.BeginSession(gsQBFileName, kSingleUser);
    const std::vector<std::string> versions = manager.QBXMLVersionsForSession();
    const bool canadian = std::find(versions.begin(), versions.end(), "CA3.0") != versions.end();
    gsQBCountry = canadian ? "Canada" : "US";
    gbConnectionReady = kYes;
    gbSessionBegun = kYes;
    gsQBVersion = util::trim(gfsQBXMLVersion_latest(manager));
    gsQBMajorVersion = gsQBVersion.substr(0, 1);
    gsQBMinorVersion = gsQBVersion.empty() ? "" : gsQBVersion.substr(gsQBVersion.size() - 1);
    requestMsgSet = gfoMsgSetRequest_latest(manager);
}

/// Failure of a send or of reading its answer.
void reportRequestError(std::int32_t number, const std::string& description) {
    gnQBErrorNumber = number;
    gsQBStatusMessage = "Error: " + std::to_string(number) + " " + description;
    core::showMessage(gsQBStatusMessage);
}

/// The first answer, kept alive by the whole of what came back.
std::shared_ptr<const platform::IResponse> firstAnswer() {
    if (responseList->empty()) {
        throw util::BasicError::of(9);
    }
    return {responseList, &responseList->front()};
}

bool readResponse() {
    responseList.reset();
    response.reset();
    if (responseMsgSet == nullptr) {
        throw util::BasicError::of(91);
    }
    if (!responseMsgSet->hasResponseList) {
        core::showMessage("Set responseList-Failed");
        return false;
    }
    responseList = {responseMsgSet, &responseMsgSet->ResponseList};
    response = firstAnswer();
    if (response->StatusCode == 0) {
        return true;
    }
    gsQBStatusMessage = response->StatusMessage;
    core::showMessage(gsQBStatusMessage + "Getting Request");
    return false;
}

struct VersionRow {
    const char* version;
    bool exactly;  ///< else: this version and everything above it, as text
    int major;
    int minor;
};

// Kept: the texts are compared as texts, and the package reports versions without a leading zero,
// so that all of them ("13.0", "2.0", "1.1") stand above the first row.
constexpr VersionRow kVersions[] = {
    {"06.0", false, 6, 0},
    {"05.0", false, 5, 0},
    {"04.0", false, 4, 0},
    {"03.0", false, 3, 0},
    {"02.0", true, 2, 0},
    {"1.1", true, 1, 1},
};

constexpr char kOldVersionWarning[] =
    "You are apparently running QuickBooks 2002 Release 1, we strongly recommend that you use "
    "QuickBooks' online update feature to obtain the latest fixes and enhancements";

}  // namespace

LegacyBool gfbOpenConnectionBeginSession(std::string& appName) {
    LegacyBool result = kYes;
    qb::onLanguageError(
        [&] {
            if (appName.empty()) {
                appName = core::kApplicationTitle;
            }
            openSession(appName);
        },
        [&](std::int32_t number, const std::string& description) {
            gbConnectionReady = kNo;
            result = kNo;
            reportOpenError(number, description);
        }
    );
    return result;
}

void EndSessionCloseConnection() {
    qb::onLanguageError(
        [] {
            // Kept: the flag stays set, so a second call tells its failure in a box.
            if (gbSessionBegun != kNo) {
                qb::session().EndSession();
                qb::session().CloseConnection();
            }
            gbQBReady = kNo;
        },
        [](std::int32_t number, const std::string& description) {
            showSessionError("Error in EndSessionCloseConnection", number, description);
        }
    );
}

void gpSessionReady_ensure() {
    while (gbQBReady == kNo) {
        std::string appName;
        if (gfbOpenConnectionBeginSession(appName) != kNo) {
            requestMsgSet->ClearRequests();
            requestMsgSet->setOnError(platform::OnError::continueOn);
            gbQBReady = kYes;
        } else if (gbStopRequested != kNo || !platform::desktop().hasOperator()) {
            return;
        }
    }
}

std::string gfsQBXMLVersion_latest(platform::IQBSessionManager& session) {
    const auto request = session.CreateMsgSetRequest("US", 1, 0);
    request->append("HostQuery");
    const auto answer = session.DoRequests(*request);
    if (answer == nullptr || answer->ResponseList.empty() ||
        !answer->ResponseList.front().Detail.has("HostRet")) {
        throw util::BasicError::of(91);
    }
    std::string latest;
    double best = 0;
    const auto& host = answer->ResponseList.front().Detail.find("HostRet");
    for (const platform::QBElement* version : host.all("SupportedQBXMLVersion")) {
        const double number = util::val(version->text());
        if (number > best) {
            best = number;
            latest = version->text();
        }
    }
    return latest;
}

std::shared_ptr<platform::IMsgSetRequest>
gfoMsgSetRequest_latest(platform::IQBSessionManager& session) {
    const std::string version = gfsQBXMLVersion_latest(session);
    for (const VersionRow& row : kVersions) {
        if (row.exactly ? version == row.version : version >= row.version) {
            return session.CreateMsgSetRequest("US", row.major, row.minor);
        }
    }
    platform::desktop().messageBox(
        kOldVersionWarning,
        core::kApplicationTitle,
        platform::BoxButtons::ok,
        platform::BoxIcon::exclamation
    );
    return session.CreateMsgSetRequest("US", 1, 0);
}

LegacyBool gfbRequestMsgSet_reset() {
    using platform::OnError;
    constexpr std::array kOnError = {OnError::continueOn, OnError::rollback, OnError::stop};
    gpQBStatus_clear();
    requestMsgSet = gfoMsgSetRequest_latest(qb::session());
    if (requestMsgSet == nullptr) {
        return kNo;
    }
    if (gnRequestOnError >= 0 && static_cast<std::size_t>(gnRequestOnError) < kOnError.size()) {
        requestMsgSet->setOnError(kOnError[static_cast<std::size_t>(gnRequestOnError)]);
    }
    return kYes;
}

LegacyBool gfbRequests_do() {
    LegacyBool result = kYes;
    gpQBStatus_clear();
    qb::onLanguageError(
        [] {
            if (requestMsgSet == nullptr) {
                throw util::BasicError::of(91);
            }
            responseMsgSet = qb::session().DoRequests(*requestMsgSet);
        },
        [&](std::int32_t number, const std::string& description) {
            result = kNo;
            reportRequestError(number, description);
        }
    );
    return result;
}

LegacyBool gfbResponse_get() {
    LegacyBool result = kNo;
    gpQBStatus_clear();
    qb::onLanguageError([&] { result = legacyBool(readResponse()); }, reportRequestError);
    return result;
}

void gpQBStatus_clear() {
    gsQBStatusDetail.clear();
    gsQBStatusMessage.clear();
    gsQBStatusSeverity.clear();
    gsQBStatusCode.clear();
    gnQBErrorNumber = 0;
}

namespace qb {

platform::IQBSessionManager& session() {
    if (sessionManager == nullptr) {
        sessionManager = platform::current().makeSessionManager();
    }
    return *sessionManager;
}

void querySalesReps() {
    gaQBSalesReps.assign(1, std::string());
    handled("SalesRepQuery ", "", [] {
        if (gfbRequestMsgSet_reset() == kNo) {
            return false;
        }
        requestMsgSet->append("SalesRepQuery");
        if (gfbRequests_do() == kNo) {
            return false;
        }
        for (const platform::IResponse& answer : responseMsgSet->ResponseList) {
            gsQBStatusMessage = answer.StatusCode == 0 ? "" : answer.StatusMessage;
            for (const platform::QBElement* rep : answer.Detail.all("SalesRepRet")) {
                gaQBSalesReps.push_back(rep->find("Initial").text());
            }
        }
        return true;
    });
}

void resetGateway() {
    gpQBStatus_clear();
    response.reset();
    responseList.reset();
    responseMsgSet.reset();
    requestMsgSet.reset();
    sessionManager.reset();
    gbSessionBegun = gbConnectionReady = gbQBReady = kNo;
    for (std::string* text : {&gsQBVersion, &gsQBMajorVersion, &gsQBMinorVersion, &gsQBCountry}) {
        text->clear();
    }
    gnRequestOnError = 0;
    gnQBReturnedCount = 0;
    gaQBSalesReps.clear();
    gaQBAccounts.clear();
    gaSaleLines.clear();
    gaQBPOLines.clear();
    goQBPO.reset();
}

}  // namespace qb
