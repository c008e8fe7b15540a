#include "config/sm_SafeStub.h"

#include "config/clsDataPath.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"

namespace {

constexpr char kLocalFolder[] = "C:\\nuvsafe";

/// False only when the folder is known to be missing: any other trouble does not stop the program.
bool isReached(const std::string& folder) {
    try {
        return platform::files().folderExists(folder);
    } catch (const platform::PlatformError& error) {
        constexpr int kBadFileName = 52;
        return error.number() != kBadFileName;
    }
}

/// A question that nobody is left to answer counts as answered by No.
bool wantsRetry() {
    const auto answer = platform::desktop().messageBox(
        "Server not found. Check Server and Network Connections.\r\n Retry?",
        "Network Error",
        platform::BoxButtons::yesNo,
        platform::BoxIcon::question
    );
    return answer == platform::BoxAnswer::yes && platform::desktop().hasOperator();
}

}  // namespace

namespace config {

bool& localMode() {
    static bool isLocal = false;
    return isLocal;
}

}  // namespace config

LegacyBool gfbServer_Safe() {
    if (config::localMode()) {
        return kYes;
    }
    while (!isReached(gDataPath.DataPath)) {
        if (util::sameName(gDataPath.DataPath, kLocalFolder)) {
            config::localMode() = true;
            return kNo;
        }
        if (!wantsRetry()) {
            return kNo;
        }
    }
    return kYes;
}
