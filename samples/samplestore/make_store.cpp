#include "companyfile/company_file.h"
#include "config/clsDataPath.h"
#include "db/NuvDBSM_MSDE.h"
#include "platform/ports/platform.h"
#include "samplestore/store_writer.h"
#include "util/text_codec.h"

#include <filesystem>
#include <fstream>

namespace samplestore {

namespace {

namespace fs = std::filesystem;

constexpr char kCatalog[] = "NUVDATA1";
constexpr int kExistsAlready = 58;
constexpr int kPathAccess = 75;

void writeText(const fs::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.flush();
    if (!stream) {
        throw platform::PlatformError(kPathAccess, file.string() + " cannot be written");
    }
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
}

void writeSettings(const Options& options) {
    auto& settings = platform::settings();
    settings.save(db::kSettingsApplication, db::kSettingsSection, "Server", "embedded");
    settings.save(db::kSettingsApplication, db::kSettingsSection, "DBName", kCatalog);
    gDataPath.AppLabel = config::kAppLabel;
    gDataPath.Station = "1";
    gDataPath.DataPath = util::fromUtf8(options.folder);
    gDataPath.Save();
}

void connect(const Options& options) {
    platform::CatalogFiles files;
    files.name = kCatalog;
    files.dataFile = util::fromUtf8(options.folder) + "/" + kCatalog + ".mdf";
    platform::current().makeManagement()->addCatalog(files);
    std::string message;
    if (gfbDB_Connect(message) == kNo) {
        throw platform::PlatformError(0, "the catalog cannot be opened: " + message);
    }
}

void copyTools(const Options& options) {
    if (options.toolsFolder.empty()) {
        return;
    }
    for (const char* tool : {"reports.exe", "POSummaryRpt.exe"}) {
        fs::copy_file(
            fs::path(options.toolsFolder) / tool, fs::path(options.folder) / "program" / tool
        );
    }
}

}  // namespace

void prepareFolder(const std::string& folder) {
    std::error_code failure;
    const bool isNew = fs::create_directories(folder, failure);
    const bool isEmpty = !failure && fs::is_empty(folder, failure);
    if (failure) {
        throw platform::PlatformError(
            kPathAccess, "the folder " + folder + " cannot be used: " + failure.message()
        );
    }
    if (!isEmpty) {
        throw platform::PlatformError(
            kExistsAlready, folder + " holds something already: a store is made in an empty folder"
        );
    }
    if (isNew) {
        fs::permissions(folder, fs::perms::owner_all);  // company data is the owner's only
    }
}

int makeStore(const Options& options) {
    const fs::path folder = options.folder;
    if (fs::exists(folder / (std::string(kCatalog) + ".mdf"))) {
        throw platform::PlatformError(kExistsAlready, options.folder + " holds a store already");
    }
    fs::create_directories(folder / "config" / "brevane");
    fs::create_directories(folder / "program");
    writeSettings(options);
    connect(options);
    const int rows = writeTables(options);
    const std::string companyFile = (folder / "company.qbw").string();
    const std::string fileName = util::fromUtf8(companyFile);
    const std::string setup = linkSetupText(fileName);
    writeText(folder / "QBLINK.NUV", setup);
    if (options.summary) {
        writeText(folder / "NUV.INI", summarySetupText(fileName, options.firstDay));
        companyfile::CompanyFile::create(companyFile, "retail-summary", setup);
    } else {
        companyfile::createRetail(companyFile, setup);
    }
    copyTools(options);
    return rows;
}

}  // namespace samplestore
