#pragma once

#include "platform/odbc/connection_text.h"
#include "platform/ports/data.h"
#include "platform/ports/management.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace testing_support {

/// A database server that tests run on.
struct StoreServer {
    std::string driver{};  ///< setting "Driver"; empty: the PostgreSQL server of the tests' own
    std::string port{};    ///< setting "Port"; empty: the server's own
    [[nodiscard]] bool isSqlServer() const { return !driver.empty(); }
    /// Starts the server when it is the tests' own and nobody asked before.
    [[nodiscard]] platform::OdbcOptions options() const;
};

/// A data adapter under which tests run.
struct StoreAdapter {
    std::string name;               ///< as part of a test's name
    std::string server;             ///< setting "Server"
    std::string traceOfStatus;      ///< end of the start's trace
    std::optional<StoreServer> at;  ///< none: the embedded store, in the folder

    [[nodiscard]] bool isEmbedded() const { return !at.has_value(); }
    [[nodiscard]] std::unique_ptr<platform::DataConnection> makeConnection(const std::string& folder
    ) const;
    [[nodiscard]] std::unique_ptr<platform::ManagementSession>
    makeManagement(const std::string& folder) const;
    /// What a connection to the catalog is opened with.
    [[nodiscard]] platform::ConnectionSettings settings(const std::string& catalog) const;
    /// Makes an empty catalog of that name.
    void makeCatalog(const std::string& folder, const std::string& catalog) const;
    /// Takes a catalog away from its server; a folder's goes with the folder.
    void dropCatalog(const std::string& catalog) const;
    /// A name that no other test gives a catalog on a server; always the same in a folder.
    [[nodiscard]] std::string newCatalogName() const;
};

/// The embedded store alone, for what only catalogs made of files can show.
std::vector<StoreAdapter> embeddedStore();
/// The adapters with a server: one of the tests' own, and the SQL Server that the environment's
/// BREVANE_TEST_SQLSERVER names (an ODBC connection text without a catalog).
std::vector<StoreAdapter> serverStores();
/// All of them.
std::vector<StoreAdapter> storeAdapters();

/// Name of the adapter, for the test's name.
std::string adapterName(const ::testing::TestParamInfo<StoreAdapter>& info);
/// GoogleTest shows it by this. NOLINTNEXTLINE(readability-identifier-naming): the name is its own
void PrintTo(const StoreAdapter& adapter, std::ostream* out);

/// Runs a statement in the server's own words in its home catalog. @return first value, as text.
std::string runOnServer(const StoreServer& server, const std::string& statement);
/// Ends all connections to the catalog, as the end of the server would.
void cutConnections(const StoreServer& server, const std::string& catalog);

}  // namespace testing_support
