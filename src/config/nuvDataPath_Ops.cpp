#include "config/nuvDataPath_Ops.h"

#include "config/clsDataPath.h"
#include "config/sm_SafeStub.h"
#include "platform/ports/platform.h"
#include "util/sm_paths.h"

namespace {

constexpr std::int32_t kFewestStations = 50;
constexpr char kLocalFolder[] = "C:\\nuvsafe";
constexpr char kSortTable[] = "\\upper.alt";

void prepareDataPath(std::int32_t maxStations, const std::string& defaultPath) {
    gDataPath.AppLabel = config::kAppLabel;
    gDataPath.CreatePath = kNo;
    gDataPath.DefaultNetwork = kNo;
    gDataPath.MaxStations = maxStations > kFewestStations ? maxStations : kFewestStations;
    gDataPath.DefaultStation = "1";
    gDataPath.DefaultDataPath = defaultPath;
    gDataPath.StationNumberEnabled = kYes;
    gDataPath.DataPath.clear();
}

/// Programs of the suite need the table in the data folder; a folder that cannot be written has to
/// do without.
void supplySortTable() {
    platform::ignoringErrors([] {
        platform::FilePort& files = platform::files();
        const std::string own = files.programFolder() + kSortTable;
        const std::string wanted = gDataPath.DataPath + kSortTable;
        if (!files.fileExists(wanted) && files.fileExists(own)) {
            files.copy(own, wanted);
        }
    });
}

void keepValidPath() {
    if (gDataPath.DataPath.empty()) {
        return;
    }
    if (platform::files().folderExists(kLocalFolder)) {
        gfbServer_Safe();
    }
    gDataPath.Validate();
    if (gDataPath.Valid() != kNo) {
        supplySortTable();
    } else {
        gDataPath.DataPath.clear();
    }
}

bool isYes(const std::string& question) {
    const auto answer = platform::desktop().messageBox(
        question, gDataPath.Title, platform::BoxButtons::yesNo, platform::BoxIcon::question
    );
    return answer == platform::BoxAnswer::yes;
}

bool askForPath() {
    if (!isYes("A path to the NUV Data Files has not been defined\r\n\r\n"
               "Do you want to define it now?")) {
        return false;
    }
    gDataPath.CreatePath = kYes;
    gDataPath.StationNumberEnabled = kYes;
    config::showDataPathWindow();
    platform::desktop().pendingEvents();
    return !gDataPath.DataPath.empty();
}

}  // namespace

LegacyBool
gfbNUV_DataPath_open(LegacyBool ask, std::int32_t maxStations, const std::string& defaultPath) {
    prepareDataPath(maxStations, defaultPath);
    gDataPath.Read(kYes);
    gDataPath.DataPath = gfsPath_noSlash(gDataPath.DataPath);
    keepValidPath();
    if (!gDataPath.DataPath.empty()) {
        return kYes;
    }
    if (gDataPath.Network != kNo) {
        platform::desktop().messageBox(
            "The network is currently down or is not set up properly. "
            "Please contact your network administrator for help.",
            "Network Not Found",
            platform::BoxButtons::ok,
            platform::BoxIcon::exclamation
        );
        return kNo;
    }
    return legacyBool(ask != kNo && askForPath());
}

LegacyBool gfbNUV_DataPath_change() {
    gDataPath.AppLabel = config::kAppLabel;
    gDataPath.Cancelled = kNo;
    config::showDataPathWindow();
    return legacyBool(gDataPath.Cancelled == kNo);
}

void gpDataPathRead() {
    gDataPath.Read(kYes, config::kAppLabel);
}

std::string gfsComputer_name() {
    constexpr std::size_t kLongestName = 255;
    std::string name;
    platform::ignoringErrors([&name] { name = platform::processes().computerName(); });
    return name.substr(0, kLongestName);
}
