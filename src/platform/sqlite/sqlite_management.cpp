#include "platform/sqlite/sqlite_management.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sqlite/catalog_files.h"
#include "platform/sqlite/catalog_schema.h"
#include "platform/sqlite/database.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t kOwnerAndGroup = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP;

/// Makes the empty file before the store does, for its rights.
void makeFile(const std::string& file) {
    const int descriptor = ::open(file.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, kOwnerAndGroup);
    if (descriptor < 0) {
        throw serverError(errorFileCreate, {file, std::strerror(errno)});
    }
    ::close(descriptor);
}

}  // namespace

SqliteManagement::SqliteManagement(std::function<std::string()> folder)
    : folder_(std::move(folder)) {}

void SqliteManagement::connect(
    const std::string& /*server*/,
    const std::string& /*login*/,
    const std::string& /*password*/,
    bool /*integrated*/
) {}

void SqliteManagement::setLoginTimeout(int seconds) {
    timeoutSeconds_ = seconds;
}

int SqliteManagement::status() const {
    return 0;
}

std::vector<CatalogInfo> SqliteManagement::catalogs() const {
    std::vector<CatalogInfo> found;
    for (const auto& name : catalogNames(folder_())) {
        found.push_back({name, false});
    }
    return found;
}

void SqliteManagement::addCatalog(const CatalogFiles& files) {
    const std::string file = nativeFile(files.dataFile);
    std::error_code failed;
    if (!std::filesystem::exists(file, failed)) {
        makeFile(file);
    }
    const Database database(file, files.name, timeoutSeconds_, Database::Mode::create);
}

std::vector<TableInfo> SqliteManagement::tables(const std::string& catalog) const {
    const std::string file = catalogFile(folder_(), catalog);
    std::error_code failed;
    if (!std::filesystem::exists(file, failed)) {
        throw serverError(errorNoCatalog, {catalog, "no file " + file});
    }
    const Database database(file, catalog, timeoutSeconds_, Database::Mode::existing);
    std::vector<TableInfo> found;
    for (const auto& name : tableNames(database)) {
        found.push_back({name, false});
    }
    return found;
}

}  // namespace platform
