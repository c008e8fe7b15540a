#include "config/clsINI_Services.h"
#include "config/nuvDataPath_Ops.h"
#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/recorded_processes.h"
#include "db/store_fixture.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"

namespace {

/// A connection that notes what it was to be opened with, and stays closed.
class NotedConnection : public testing_support::WatchedConnection {
public:
    NotedConnection(
        std::unique_ptr<platform::DataConnection> inner,
        testing_support::StoreWatch& watch,
        platform::ConnectionSettings& noted
    )
        : WatchedConnection(std::move(inner), watch),
          noted_(noted) {}

    void open(const platform::ConnectionSettings& settings) override {
        noted_ = settings;
        throw platform::PlatformError(17, "No server.");
    }

private:
    platform::ConnectionSettings& noted_;
};

class Connection : public StoreTest {
protected:
    static void connectAlone() {
        std::string message;
        gfbDB_Connect(message);
    }
    [[nodiscard]] std::string trace() const { return fileText("program/52.txt"); }

    RecordedProcesses processes;
};

INSTANTIATE_TEST_SUITE_P(Store, Connection, ::testing::ValuesIn(storeAdapters()), adapterName);

TEST_P(Connection, tracesItsWayAndKeepsTheTraceToItsOwner) {
    setSetting("Password", " secret ");
    connect();
    const std::string server = GetParam().server;
    EXPECT_EQ(
        trace(),
        catalogName() + "\r\nServername = " + server + "\r\nset Server \r\nServer set \r\n" +
            "Connect now " + server + " qz secret\r\n" + GetParam().traceOfStatus
    );
    const auto permissions =
        std::filesystem::status(folder.path() / "program/52.txt").permissions();
    EXPECT_EQ(permissions & std::filesystem::perms::group_all, std::filesystem::perms::none);
    EXPECT_EQ(permissions & std::filesystem::perms::others_all, std::filesystem::perms::none);
    EXPECT_EQ(desktop.yields, 1);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Connection, endsInSilenceWhenTheConfigurationNamesNoServer) {
    platform::current().processes = &processes;
    setSetting("Server", "  ");
    EXPECT_TRUE(endsProgram(connectAlone));
    EXPECT_TRUE(desktop.boxes.empty());
    const std::string program = folder.str() + "/program\\NUVDataConfiguration.exe ";
    EXPECT_EQ(processes.lines, std::vector<std::string>{program});

    processes.onRun = [this] { setSetting("Server", GetParam().server); };
    setSetting("DBName", "");
    EXPECT_NE(gfbDB_ConnectServer(), kNo);
    EXPECT_TRUE(trace().starts_with("\r\nServername = ")) << trace();
}

TEST_P(Connection, endsWithABoxWithoutACatalog) {
    EXPECT_TRUE(endsProgram(connectAlone));
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(
        desktop.boxes[0].text,
        "Database not found.\r\nIf you are trying to connect to an existing database then run the "
        "Database Configuration.\r\nTo create a new database or convert files from Pervasive run "
        "Kelvane"
    );
    EXPECT_EQ(desktop.boxes[0].title, "");
    EXPECT_TRUE(trace().ends_with("Database Create\r\n"));
}

TEST_P(Connection, takesTheNameOfTheDataFile) {
    connect();
    endProgram();
    setSetting("DBName", "");
    EXPECT_FALSE(endsProgram(connectAlone));
    EXPECT_EQ(DBName, catalogName());
}

TEST_P(Connection, goesOnWithoutAServerThatAnswers) {
    watch.connectFailure = platform::PlatformError(17, "No server.");
    watch.refusesToOpen = true;
    EXPECT_FALSE(endsProgram(connectAlone));
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].text, "No server.17");
    EXPECT_EQ(desktop.boxes[0].title, "NUV MSDE");

    EXPECT_EQ(gfbDB_OpenTable(db::tableCommon), kNo);
    ASSERT_EQ(desktop.boxes.size(), 2U);
    EXPECT_EQ(desktop.boxes[1].text, "Failed to connect to database. ");
    EXPECT_EQ(desktop.boxes[1].title, "Database Connection Error");
    EXPECT_EQ(DBFailureKind, 2);
    EXPECT_EQ(DBConnected, kNo);
}

TEST_P(Connection, opensAgainAfterItWasLost) {
    openStore();
    db::connection().close();
    EXPECT_NE(gfbDB_OpenTable(db::tableCommon), kNo);
    EXPECT_EQ(DBConnected, kYes);

    db::connection().close();
    EXPECT_EQ(gfbDB_CreateTable(db::tableCommon), kNo);
    EXPECT_TRUE(db::connection().isOpen());
}

TEST_P(Connection, isOpenedByLoginOrByTheSystemsOwn) {
    struct Case {
        const char* given;
        LegacyBool isIntegrated;
        const char* source;
        const char* login;
        const char* password;
    };
    constexpr Case kCases[] = {
        {"login and password", kNo, "SHOP\\NUV", "clerk", "secret"},
        {"the system's own login", kYes, "(local)", "", ""},
    };
    platform::ConnectionSettings noted;
    const auto make = platform::current().makeConnection;
    platform::current().makeConnection = [&] {
        return std::make_unique<NotedConnection>(make(), watch, noted);
    };
    DBName = "NUVDATA7";
    DBServerName = "SHOP\\NUV";
    DBUserName = "clerk";
    DBPassword = "secret";
    for (const auto& [given, isIntegrated, source, login, password] : kCases) {
        SCOPED_TRACE(given);
        DBIntegrated = isIntegrated;
        std::string catalog;
        gpDB_OpenConnection(catalog);
        EXPECT_EQ(catalog, "NUVDATA7");
        EXPECT_EQ(noted.initialCatalog, "NUVDATA7");
        EXPECT_EQ(noted.timeoutSeconds, 25);
        EXPECT_EQ(noted.integratedSecurity, isIntegrated != kNo);
        EXPECT_EQ(noted.dataSource, source);
        EXPECT_EQ(noted.userId, login);
        EXPECT_EQ(noted.password, password);
        EXPECT_EQ(DBFailureKind, 2);
    }
}

TEST_P(Connection, thatIsOpenStaysSoWhenItCannotBeOpenedAgain) {
    connect();
    watch.refusesToOpen = true;
    std::string catalog;
    gpDB_OpenConnection(catalog);
    EXPECT_EQ(DBFailureKind, 1);
    EXPECT_EQ(DBConnected, kYes);
}

TEST_P(Connection, ofAServerWithoutInstanceHasNoHost) {
    connect();
    desktop.boxes.clear();
    watch.serverStatus = 1;
    setSetting("Server", "SHOPSERVER");
    EXPECT_EQ(gfbDB_ConnectServer(), kNo);
    EXPECT_EQ(desktop.boxTexts(), std::vector<std::string>{"Invalid procedure call or argument5"});
}

struct ClockCase {
    const char* given;
    std::string host;
    std::vector<std::string> commands;
};

TEST_P(Connection, followsTheClockOfAnotherComputer) {
    const ClockCase cases[] = {
        {"another computer", "SHOPSERVER", {"NET time \\\\SHOPSERVER /set /Y"}},
        {"this computer, in small letters", util::lower(gfsComputer_name()), {}},
    };
    platform::current().processes = &processes;
    watch.serverStatus = 1;
    for (const auto& [given, host, commands] : cases) {
        SCOPED_TRACE(given);
        processes.lines.clear();
        setSetting("Server", host + "\\NUV");
        EXPECT_NE(gfbDB_ConnectServer(), kNo);
        EXPECT_EQ(processes.lines, commands);
        EXPECT_TRUE(trace().ends_with("Server Name = " + host + "\r\nTime verified\r\n"));
    }
}

TEST_P(Connection, ofALocalStationGoesToItsOwnServer) {
    struct Case {
        const char* given;
        LegacyBool& mode;
        const char* key;
    };
    const Case cases[] = {
        {"a database of its own", DBLocalMode, "SERVERNAMELOCAL"},
        {"the remote copy", DBRemoteMode, "SERVERNAME"},
    };
    const std::string server = gfsComputer_name() + "\\NUVSERVER";
    for (const auto& [given, mode, key] : cases) {
        SCOPED_TRACE(given);
        folder.write("NUV.INI", "[DATABASE]\r\n");
        gIni.File(folder.file("NUV.INI"));
        mode = kYes;
        EXPECT_NE(gfbDB_ConnectServer(), kNo);
        EXPECT_EQ(DBServerName, server);
        EXPECT_EQ(DBName, "NUVRemote");
        EXPECT_EQ(folder.read("NUV.INI"), "[DATABASE]\r\n" + (key + ("=" + server)) + "\r\n");
        mode = kNo;
    }
    setSetting("TrainingDB", "Drill");
    DBTrainingMode = kYes;
    EXPECT_NE(gfbDB_ConnectServer(), kNo);
    EXPECT_EQ(DBName, "Drill");
}

}  // namespace
