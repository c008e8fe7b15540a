#include "each_store.h"
#include "platform/odbc/connection_text.h"
#include "platform/odbc/server_kind.h"

#include <algorithm>

namespace {

using testing_support::runOnServer;

/// A management session with a server, and a catalog on it.
class ServerManagement : public EachStore {
protected:
    ServerManagement() : management(GetParam().makeManagement(folder.str())) {
        management->connect(GetParam().server, "qz", "", false);
    }
    [[nodiscard]] const platform::CatalogInfo* find(const std::string& name) {
        listed = management->catalogs();
        const auto found = std::find_if(listed.begin(), listed.end(), [&](const auto& each) {
            return each.name == name;
        });
        return found == listed.end() ? nullptr : &*found;
    }

    std::unique_ptr<platform::ManagementSession> management;
    std::vector<platform::CatalogInfo> listed;
};

INSTANTIATE_TEST_SUITE_P(
    Store,
    ServerManagement,
    testing::ValuesIn(testing_support::serverStores()),
    testing_support::adapterName
);

TEST_P(ServerManagement, makesFindsAndListsCatalogs) {
    EXPECT_EQ(management->status(), 1);
    const std::string own = GetParam().at->isSqlServer() ? "master" : "postgres";
    ASSERT_TRUE(find(catalog) != nullptr && find(own) != nullptr);
    EXPECT_FALSE(find(catalog)->isSystem);
    EXPECT_TRUE(find(own)->isSystem);
    execute("Create Table Names (N INTEGER)");
    auto tables = management->tables(catalog);
    std::erase_if(tables, [](const auto& table) { return table.isSystem; });
    ASSERT_EQ(tables.size(), 1U);
    EXPECT_EQ(tables.front().name, "Names");
}

TEST_P(ServerManagement, tellsWhyItCannot) {
    platform::CatalogFiles files;
    files.name = catalog;
    EXPECT_EQ(errorOf([&] { management->addCatalog(files); }), 1801);
    EXPECT_EQ(
        message, "Database '" + catalog + "' already exists. Choose a different database name."
    );
    EXPECT_EQ(errorOf([&] { static_cast<void>(management->tables("Nobody")); }), 4060) << message;
    const auto opened = GetParam().makeConnection(folder.str());
    EXPECT_EQ(errorOf([&] { opened->open(GetParam().settings("Nobody")); }), 4060) << message;
    EXPECT_TRUE(message.starts_with("Cannot open database \"Nobody\"")) << message;
    const auto closed = GetParam().makeManagement(folder.str());
    EXPECT_EQ(closed->status(), 0);
    EXPECT_NE(errorOf([&] { static_cast<void>(closed->catalogs()); }), 0);
}

/// The server of the tests' own, on which logins can be made.
class OwnLogins : public ServerManagement {
protected:
    OwnLogins() { runOnServer(*GetParam().at, "CREATE ROLE guarded LOGIN PASSWORD 'right;=}'"); }
    ~OwnLogins() override { runOnServer(*GetParam().at, "DROP ROLE guarded"); }
};

INSTANTIATE_TEST_SUITE_P(
    Store,
    OwnLogins,
    testing::Values(testing_support::serverStores().front()),
    testing_support::adapterName
);

struct Login {
    const char* password;
    std::int32_t number;
};

TEST_P(OwnLogins, needTheirPassword) {
    static constexpr Login kLogins[] = {{"wrong", 18456}, {"", 18456}, {"right;=}", 0}};
    platform::ConnectionSettings settings = GetParam().settings(catalog);
    settings.userId = "guarded";
    for (const auto& [password, number] : kLogins) {
        SCOPED_TRACE(password);
        settings.password = password;
        EXPECT_EQ(errorOf([&] { newConnection()->open(settings); }), number);
        const auto connect = [&, given = password] {
            management->connect(GetParam().server, "guarded", given, false);
        };
        EXPECT_EQ(errorOf(connect), number);
    }
}

struct TextCase {
    const char* given;
    platform::OdbcOptions options;
    const char* server;
    bool isIntegrated;
    const char* text;
};

TEST(ConnectionText, namesDriverServerAndLogin) {
    const std::vector<std::string> none;
    const std::vector<std::string> both = {"FreeTDS", "ODBC Driver 18 for SQL Server"};
    const TextCase cases[] = {
        {"FreeTDS finds the instance's port by itself",
         {"FreeTDS", ""},
         "SHOP\\NUV",
         false,
         "Driver={FreeTDS};ClientCharset=UTF-8;TDS_Version=7.4;Server=SHOP\\NUV;"
         "Database=NUVDATA1;UID=qz;PWD={a;b};"},
        {"a port makes the instance needless",
         {"FreeTDS", "14330"},
         "SHOP\\NUV",
         false,
         "Driver={FreeTDS};ClientCharset=UTF-8;TDS_Version=7.4;Server=SHOP;Port=14330;"
         "Database=NUVDATA1;UID=qz;PWD={a;b};"},
        {"the vendor's driver takes the port behind a comma",
         {"ODBC Driver 17 for SQL Server", "14330"},
         "SHOP\\NUV",
         false,
         "Driver={ODBC Driver 17 for SQL Server};Server=SHOP,14330;Database=NUVDATA1;UID=qz;"
         "PWD={a;b};"},
        {"the system's own login",
         {"SQL Server", ""},
         "(local)",
         true,
         "Driver={SQL Server};Server={(local)};Database=NUVDATA1;Trusted_Connection=Yes;"},
        {"keywords behind the driver's name stand in for ours",
         {"FreeTDS;Server=10.0.0.5;TDS_Version=7.1;Encryption=require", ""},
         "SHOP\\NUV",
         false,
         "Driver={FreeTDS};ClientCharset=UTF-8;TDS_Version=7.1;Server=10.0.0.5;"
         "Database=NUVDATA1;UID=qz;PWD={a;b};Encryption=require;"},
        {"the best driver that is there",
         {"", ""},
         "SHOP\\NUV",
         false,
         "Driver={ODBC Driver 18 for SQL Server};Server=SHOP\\NUV;Database=NUVDATA1;UID=qz;"
         "PWD={a;b};"},
    };
    for (const auto& [given, options, server, isIntegrated, text] : cases) {
        SCOPED_TRACE(given);
        const platform::ConnectionSettings settings = {
            25, server, "NUVDATA1", "qz", "a;b", isIntegrated};
        EXPECT_EQ(platform::connectionText(settings, options, both).text, text);
    }
    EXPECT_EQ(platform::connectionText({}, {}, none).driver, "FreeTDS");
}

TEST(SqlServer, isToldHowToMakeOrAttachACatalog) {
    struct Case {
        bool attachData;
        bool attachLog;
        const char* text;
    };
    constexpr Case kCases[] = {
        {false,
         false,
         "CREATE DATABASE [C7] ON PRIMARY (NAME=[C7], FILENAME='D:\\C7.mdf', FILEGROWTH=0) LOG ON "
         "(NAME=[LogC7], FILENAME='D:\\C7.ldf')"},
        {true, false, "CREATE DATABASE [C7] ON (FILENAME='D:\\C7.mdf') FOR ATTACH"},
        {true,
         true,
         "CREATE DATABASE [C7] ON (FILENAME='D:\\C7.mdf'), (FILENAME='D:\\C7.ldf') FOR ATTACH"},
    };
    for (const auto& [attachData, attachLog, text] : kCases) {
        const platform::CatalogFiles files{
            "C7", "D:\\C7.mdf", "D:\\C7.ldf", "LogC7", attachData, attachLog};
        EXPECT_EQ(
            platform::serverKind("FreeTDS").makeCatalog(files), std::vector<std::string>{text}
        );
    }
}

TEST(SqlServer, isTestedWhenTheEnvironmentNamesOne) {
    if (testing_support::serverStores().size() < 2) {
        GTEST_SKIP() << "no SQL Server: set BREVANE_TEST_SQLSERVER to an ODBC connection text "
                        "without a catalog, as Driver=FreeTDS;Server=host;Port=1433;UID=sa;PWD=...";
    }
}

}  // namespace
