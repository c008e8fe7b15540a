#include "config/clsDataPath.h"

#include "config/clsINI_Services.h"
#include "config/nuvDataPath_Ops.h"
#include "config/sm_SafeStub.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"
#include "util/sm_paths.h"

clsDataPath gDataPath;

namespace {

constexpr char kSection[] = "DATABASE";
constexpr char kNetworkKey[] = "NETWORK";
constexpr char kBoxTitle[] = "Validation";

/// The stored values that are texts.
struct StoredText {
    const char* key;
    std::string clsDataPath::*text;
};

constexpr StoredText kStoredTexts[] = {
    {"STATION", &clsDataPath::Station},
    {"STATIONPATH", &clsDataPath::StationPath},
    {"DATAPATH", &clsDataPath::DataPath},
    {"TESTDATA", &clsDataPath::TestPath},
};

platform::BoxAnswer
tell(const std::string& text, platform::BoxButtons buttons, platform::BoxIcon icon) {
    return platform::desktop().messageBox(text, kBoxTitle, buttons, icon);
}

void makeFolder(const std::string& path) {
    try {
        platform::files().makeFolder(gfsPath_noSlash(path));
    } catch (const platform::PlatformError&) {
        tell("Unable To Create Path", platform::BoxButtons::ok, platform::BoxIcon::exclamation);
    }
}

/// Tests a folder; one that is missing may be made, if the operator agrees.
bool isFolder(const std::string& path, const std::string& label, bool mayCreate) {
    if (platform::files().folderExists(path)) {
        return true;
    }
    if (!mayCreate || util::trim(path).empty()) {
        return false;
    }
    const auto answer = tell(
        label + " Path Does Not Exist\r\n\r\nDo you want to create it?",
        platform::BoxButtons::yesNo,
        platform::BoxIcon::question
    );
    if (answer == platform::BoxAnswer::yes) {
        makeFolder(path);
    }
    return platform::files().folderExists(path);
}

std::string fileIn(const std::string& folder, const std::string& name) {
    return gfsPath_noSlash(folder) + "\\" + name;
}

}  // namespace

std::string clsDataPath::StationLabel() const {
    return "Station " + Station + " of " + std::to_string(MaxStations);
}

LegacyBool clsDataPath::gfb_FileExists(const std::string& name) const {  // NOLINT
    bool exists = false;
    platform::ignoringErrors([&] { exists = platform::files().fileExists(name); });
    return legacyBool(exists);
}

void clsDataPath::Save() {
    DataPath = gfsPath_noSlash(DataPath);
    platform::SettingsStore& settings = platform::settings();
    settings.save(AppLabel, kSection, kNetworkKey, util::booleanWord(Network != kNo));
    for (const auto& [key, text] : kStoredTexts) {
        settings.save(AppLabel, kSection, key, this->*text);
    }
    gIni.WriteData("MISCELLANEOUS", "Datapath", DataPath);  // which a closed file takes in silence
}

void clsDataPath::Delete() {
    platform::settings().remove(AppLabel, kSection, kNetworkKey);
    for (const StoredText& stored : kStoredTexts) {
        platform::settings().remove(AppLabel, kSection, stored.key);
    }
}

void clsDataPath::Read(LegacyBool fromSettings, const std::string& label) {
    if (!label.empty()) {
        AppLabel = label;
    }
    if (fromSettings == kNo) {
        return;
    }
    const platform::SettingsStore& settings = platform::settings();
    const std::string network = settings.get(AppLabel, kSection, kNetworkKey, "");
    Network = legacyBool(!util::trim(network).empty() && util::toBoolean(network));
    for (const auto& [key, text] : kStoredTexts) {
        this->*text = settings.get(AppLabel, kSection, key, "");
    }
    DataPath = util::trim(DataPath);
}

void clsDataPath::Validate() {
    valid_ = kYes;
    fieldKey_.clear();
    using Check = void (clsDataPath::*)();
    constexpr Check kChecks[] = {
        &clsDataPath::checkStation,
        &clsDataPath::checkStationPath,
        &clsDataPath::checkDataPath,
        &clsDataPath::checkStationFile,
        &clsDataPath::checkDataFile,
    };
    for (const Check check : kChecks) {
        (this->*check)();
        if (valid_ == kNo) {
            return;
        }
    }
}

void clsDataPath::fail(
    const std::string& fieldKey, const std::string& what, const std::string& remedy
) {
    valid_ = kNo;
    fieldKey_ = fieldKey;
    tell(what + "\r\n\r\n" + remedy, platform::BoxButtons::ok, platform::BoxIcon::exclamation);
}

void clsDataPath::checkStation() {
    if (util::val(Station) > MaxStations) {
        const std::string station = Station;
        Station = "1";
        fail(
            "STATION",
            "Station " + station + " Not Valid.",
            "Select a Station from 1 to " + std::to_string(MaxStations) + "."
        );
    }
}

void clsDataPath::checkStationPath() {
    if (StationPathEnabled != kNo && !isFolder(StationPath, "Station", CreatePath != kNo)) {
        fail(
            "STATIONPATH", "Station Path Not Found.", "Use the Browse method to find a valid path."
        );
    }
}

void clsDataPath::checkDataPath() {
    if (!isFolder(DataPath, "Data", CreatePath != kNo)) {
        fail("DATAPATH", "Data Path Not Found.", "Use the Browse method to find a valid path.");
    }
}

void clsDataPath::checkStationFile() {
    if (StationPathEnabled == kNo || SupressFileCheck != kNo) {
        return;
    }
    StationFile = "STA" + Station + ".NUV";
    if (gfb_FileExists(fileIn(StationPath, StationFile)) == kNo) {
        fail(
            "STATION",
            "Station " + Station + " not in Station Path.",
            "Select another Station or change the Station Path."
        );
    }
}

void clsDataPath::checkDataFile() {
    if (!CheckFile.empty() && gfb_FileExists(fileIn(DataPath, CheckFile)) == kNo) {
        fail(
            "DATAPATH",
            "Primary Data File Not Found.",
            "There is no '" + CheckFile + "' file in the specified data path."
        );
    }
}

LegacyBool clsDataPath::gfbNUV_DataPath_open(  // NOLINT
    LegacyBool ask,
    std::int32_t maxStations,
    const std::string& defaultPath,
    LegacyBool unused
) {
    static_cast<void>(unused);
    return ::gfbNUV_DataPath_open(ask, maxStations, defaultPath.empty() ? "C:\\KV" : defaultPath);
}

LegacyBool clsDataPath::gfbNUV_DataPath_change() {  // NOLINT
    return ::gfbNUV_DataPath_change();
}

void clsDataPath::gpDataPathRead() {
    Read(kYes, config::kAppLabel);
}

namespace config {

std::function<void()>& dataPathWindow() {
    static std::function<void()> window;
    return window;
}

void showDataPathWindow() {
    if (dataPathWindow()) {
        dataPathWindow()();
    } else {
        gDataPath.Cancelled = kYes;
    }
}

void resetConfig() {
    gDataPath = {};
    gIni = {};
    localMode() = false;
}

}  // namespace config
