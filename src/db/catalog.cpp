#include "config/clsDataPath.h"
#include "config/clsINI_Services.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/sm_Shell.h"
#include "db/connection.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"

#include <algorithm>

/// The catalog: its name, whether the server has it, and how it is made.

namespace {

constexpr std::string_view kCatalogStem = "NUVDATA";
constexpr char kTrainingCatalog[] = "Training";
constexpr char kRemoteFile[] = "c:\\nuvsafe\\NUVRemote.mdf";
constexpr std::string_view kDataFileEnding = ".mdf";

/// Takes `name` as the catalog when its data file is there.
bool takeWhenFilePresent(const std::string& name, const std::string& file) {
    if (!platform::files().fileExists(util::upper(util::trim(file)))) {
        return false;
    }
    DBName = name;
    return true;
}

/// Names the catalog after the lowest of the data files in the data folder.
void takeNameOfDataFile() {
    const std::vector<std::string> files =
        platform::files().list(gDataPath.DataPath, std::string(kCatalogStem) + "*.mdf");
    if (!files.empty()) {
        DBName = files.front().substr(0, files.front().size() - kDataFileEnding.size());
    }
}

/// Decides the catalog's name. @return false when its file is missing.
bool decideName() {
    if (db::worksLocally() && !takeWhenFilePresent(db::kRemoteCatalog, kRemoteFile)) {
        return false;
    }
    if (DBTrainingMode != kNo &&
        !takeWhenFilePresent(kTrainingCatalog, gDataPath.DataPath + "\\Training.mdf")) {
        return false;
    }
    if (!db::worksLocally() && DBTrainingMode == kNo && util::trim(DBName).empty()) {
        takeNameOfDataFile();
    }
    return !util::trim(DBName).empty();
}

/// The data folder by its network name, when its drive is a mapped one.
std::string networkFolder() {
    const std::string& folder = gDataPath.DataPath;
    if (folder.size() < 2 || folder[1] != ':') {
        return folder;
    }
    const std::optional<std::string> remote = platform::files().driveRemote(folder[0]);
    return remote ? *remote + folder.substr(2) : folder;
}

/// Runs the conversion of the older files when the data folder holds them. Ends the program when
/// the conversion asks for a new start.
void convertOldFiles(const std::string& folder) {
    if (!platform::files().fileExists(gDataPath.DataPath + "\\common.nuv")) {
        return;
    }
    db::traceStart("Found Common");
    if (DBConvertRun != kNo) {
        return;
    }
    db::traceStart("Run Convert");
    SyncShell(folder + "\\CONVERT_bt.EXE  " + folder);
    const std::string version = gIni.getvalue("NUV Version", "Version Name", "");
    DBName = platform::settings().get(db::kSettingsApplication, db::kSettingsSection, "DBName", "");
    if (version == "Pro 9") {
        core::showMessage("Please Restart Kelvane", "Data Conversion Completed");
        gpApp_end();
    }
}

void nameNewCatalog(const std::string& suffix) {
    if (DBTrainingMode != kNo) {
        DBName = kTrainingCatalog;
    } else if (db::worksLocally()) {
        DBName = db::kRemoteCatalog;
    } else if (util::trim(DBName).empty()) {
        DBName = std::string(kCatalogStem) + suffix;
    }
}

void makeCatalog(const std::string& folder) {
    const std::string suffix = gfiDB_NextDataSuffix();
    db::traceStart("Databases= " + suffix);
    nameNewCatalog(suffix);
    db::traceStart("database Name " + DBName);
    platform::CatalogFiles files;
    files.name = DBName;
    db::traceStart("database Name " + DBName);
    files.dataFile = folder + "\\" + DBName + std::string(kDataFileEnding);
    files.attachData = platform::files().fileExists(files.dataFile);
    db::traceStart("PhysicalName " + files.dataFile);
    files.logicalLog = "Log" + DBName;
    files.logFile = folder + "\\" + DBName + ".ldf";
    files.attachLog = platform::files().fileExists(files.logFile);
    db::traceStart("LogName " + files.logFile);
    DBServerSession->addCatalog(files);
    if (DBTrainingMode == kNo && DBLocalMode == kNo) {
        platform::settings().save(db::kSettingsApplication, db::kSettingsSection, "DBName", DBName);
    }
}

LegacyBool showCreateError(int number, const std::string& description) {
    platform::desktop().messageBox(
        "Error creating database " + std::to_string(number) + description,
        core::kApplicationTitle,
        platform::BoxButtons::ok,
        platform::BoxIcon::error
    );
    return kNo;
}

void refuseToCreate() {
    platform::desktop().messageBox(
        "Database not found.\r\n"
        "If you are trying to connect to an existing database then run the Database "
        "Configuration.\r\n"
        "To create a new database or convert files from Pervasive run Kelvane",
        "",
        platform::BoxButtons::ok,
        platform::BoxIcon::error
    );
    gpApp_end();
}

}  // namespace

LegacyBool gfbDB_DatabaseExists() {
    if (!decideName()) {
        return kNo;
    }
    const std::string wanted = util::upper(util::trim(DBName));
    const std::vector<platform::CatalogInfo> catalogs = DBServerSession->catalogs();
    return legacyBool(std::any_of(
        catalogs.begin(),
        catalogs.end(),
        [&](const platform::CatalogInfo& catalog) {
            return !catalog.isSystem && util::upper(util::trim(catalog.name)) == wanted;
        }
    ));
}

LegacyBool gfbDB_CreateDatabase() {
    const std::string folder = networkFolder();
    if (DBAllowCreate == kNo) {
        refuseToCreate();
    }
    db::traceStart("Path= " + folder);
    convertOldFiles(folder);
    try {
        makeCatalog(folder);
        return kYes;
    } catch (const platform::PlatformError& error) {
        return showCreateError(error.number(), error.description());
    } catch (const util::BasicError& error) {
        return showCreateError(error.number(), error.what());
    }
}

std::string gfiDB_NextDataSuffix() {
    std::int16_t highest = 0;
    for (const platform::CatalogInfo& catalog : DBServerSession->catalogs()) {
        const std::string name = util::upper(catalog.name);
        if (catalog.isSystem || !name.starts_with(kCatalogStem)) {
            continue;
        }
        const std::string suffix = name.substr(kCatalogStem.size());
        if (util::isNumeric(suffix)) {
            highest = std::max(highest, util::toInteger(suffix));
        }
    }
    return std::to_string(highest);
}
