#include "support/store_adapters.h"

#include "platform/odbc/odbc_connection.h"
#include "platform/odbc/odbc_management.h"
#include "platform/odbc/odbc_session.h"
#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_management.h"
#include "support/postgres_server.h"
#include "util/conversions.h"

#include <cstdlib>
#include <ostream>

#include <unistd.h>

namespace testing_support {

namespace {

constexpr int kTimeoutSeconds = 30;

std::string textOf(const platform::Stored& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*whole);
    }
    const auto* text = std::get_if<std::string>(&value);
    return text == nullptr ? "" : *text;
}

/// The setting "Driver" for the connection text: the driver's name, then all other keywords.
std::optional<std::string> namedSqlServer() {
    const char* given = std::getenv("BREVANE_TEST_SQLSERVER");
    if (given == nullptr || *given == '\0') {
        return std::nullopt;
    }
    std::string driver;
    std::string rest;
    for (const std::string& word : util::split(given, ';')) {
        const std::size_t sign = word.find('=');
        if (sign != std::string::npos && util::sameName(word.substr(0, sign), "Driver")) {
            driver = util::replaceAll(util::replaceAll(word.substr(sign + 1), "{", ""), "}", "");
        } else if (!word.empty()) {
            rest += ";" + word;
        }
    }
    return driver + rest;
}

}  // namespace

platform::OdbcOptions StoreServer::options() const {
    if (isSqlServer()) {
        return {driver, port};
    }
    return {PostgresServer::driver(), port.empty() ? PostgresServer::running().port() : port};
}

std::unique_ptr<platform::DataConnection> StoreAdapter::makeConnection(const std::string& folder
) const {
    if (isEmbedded()) {
        return std::make_unique<platform::SqliteConnection>([folder] { return folder; });
    }
    return std::make_unique<platform::OdbcConnection>([options = at->options()] { return options; }
    );
}

std::unique_ptr<platform::ManagementSession> StoreAdapter::makeManagement(const std::string& folder
) const {
    if (isEmbedded()) {
        return std::make_unique<platform::SqliteManagement>([folder] { return folder; });
    }
    return std::make_unique<platform::OdbcManagement>([options = at->options()] { return options; }
    );
}

platform::ConnectionSettings StoreAdapter::settings(const std::string& catalog) const {
    return {kTimeoutSeconds, server, catalog, PostgresServer::kOwner, "", false};
}

void StoreAdapter::makeCatalog(const std::string& folder, const std::string& catalog) const {
    const auto management = makeManagement(folder);
    management->connect(server, PostgresServer::kOwner, "", false);
    platform::CatalogFiles files;
    files.name = catalog;
    if (isEmbedded()) {
        files.dataFile = folder + "\\" + catalog + ".mdf";
        files.logFile = folder + "\\" + catalog + ".ldf";
        files.logicalLog = "Log" + catalog;
    }
    management->addCatalog(files);
}

void StoreAdapter::dropCatalog(const std::string& catalog) const {
    if (isEmbedded()) {
        return;
    }
    platform::ignoringErrors([&] {
        if (at->isSqlServer()) {
            cutConnections(*at, catalog);
            runOnServer(*at, "DROP DATABASE [" + catalog + "]");
        } else {
            runOnServer(*at, "DROP DATABASE IF EXISTS \"" + catalog + "\" WITH (FORCE)");
        }
    });
}

std::string StoreAdapter::newCatalogName() const {
    static int count = 0;
    return isEmbedded() ? "NUVDATA1"
                        : "NUVDATA_" + std::to_string(getpid()) + "_" + std::to_string(++count);
}

std::vector<StoreAdapter> embeddedStore() {
    return {{"embedded", "embedded", "Server Status = 0\r\n", std::nullopt}};
}

std::vector<StoreAdapter> serverStores() {
    constexpr char kServer[] = "127.0.0.1\\NUV";
    constexpr char kRuns[] = "Server Status = 1\r\nServer Name = 127.0.0.1\r\nTime verified\r\n";
    std::vector<StoreAdapter> adapters = {{"postgres", kServer, kRuns, StoreServer{}}};
    if (const auto sqlServer = namedSqlServer()) {
        adapters.push_back({"sqlserver", kServer, kRuns, StoreServer{*sqlServer}});
    }
    return adapters;
}

std::vector<StoreAdapter> storeAdapters() {
    std::vector<StoreAdapter> all = embeddedStore();
    for (StoreAdapter& adapter : serverStores()) {
        all.push_back(std::move(adapter));
    }
    return all;
}

std::string adapterName(const ::testing::TestParamInfo<StoreAdapter>& info) {
    return info.param.name;
}

// NOLINTNEXTLINE(readability-identifier-naming): as declared
void PrintTo(const StoreAdapter& adapter, std::ostream* out) {
    *out << adapter.name;
}

std::string runOnServer(const StoreServer& server, const std::string& statement) {
    platform::ConnectionSettings settings;
    settings.userId = PostgresServer::kOwner;
    settings.dataSource = "127.0.0.1";
    settings.initialCatalog = server.isSqlServer() ? "master" : "postgres";
    const platform::ConnectionText text =
        platform::connectionText(settings, server.options(), platform::installedDrivers());
    platform::OdbcSession session(
        platform::serverKind(text.driver), text.driver, text.text, kTimeoutSeconds
    );
    const platform::OdbcResult result = session.run(statement);
    return result.rows.size() == 0 ? "" : textOf(result.rows.row(0).front());
}

void cutConnections(const StoreServer& server, const std::string& catalog) {
    if (server.isSqlServer()) {
        const std::string alter = "ALTER DATABASE [" + catalog + "] SET ";
        runOnServer(server, alter + "SINGLE_USER WITH ROLLBACK IMMEDIATE");
        runOnServer(server, alter + "MULTI_USER");
        return;
    }
    runOnServer(
        server,
        "SELECT count(pg_terminate_backend(pid, 5000)) FROM pg_stat_activity WHERE datname='" +
            catalog + "'"
    );
}

}  // namespace testing_support
