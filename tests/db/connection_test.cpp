#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/store_fixture.h"
#include "platform/ports/platform.h"

namespace {

class Connection : public StoreTest {
protected:
    /// Runs the connect; true when it ended the program.
    static bool endsProgram() {
        try {
            std::string message;
            gfbDB_Connect(message);
            return false;
        } catch (const platform::ProgramEnd&) {
            return true;
        }
    }
    [[nodiscard]] std::string trace() const { return fileText("program/52.txt"); }
};

INSTANTIATE_TEST_SUITE_P(Store, Connection, ::testing::ValuesIn(storeAdapters()), adapterName);

TEST_P(Connection, tracesItsWayAndKeepsTheTraceToItsOwner) {
    setSetting("Password", " secret ");
    connect();
    EXPECT_EQ(
        trace(),
        "NUVDATA1\r\nServername = embedded\r\nset Server \r\nServer set \r\n"
        "Connect now embedded qz secret\r\nServer Status = 0\r\n"
    );
    const auto permissions =
        std::filesystem::status(folder.path() / "program/52.txt").permissions();
    EXPECT_EQ(permissions & std::filesystem::perms::group_all, std::filesystem::perms::none);
    EXPECT_EQ(permissions & std::filesystem::perms::others_all, std::filesystem::perms::none);
    EXPECT_EQ(desktop.yields, 1);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Connection, endsInSilenceWithoutAServer) {
    setSetting("Server", "  ");
    EXPECT_TRUE(endsProgram());
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Connection, endsWithABoxWithoutACatalog) {
    EXPECT_TRUE(endsProgram());
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
    EXPECT_FALSE(endsProgram());
    EXPECT_EQ(DBName, catalogName());
}

TEST_P(Connection, goesOnWithoutAServerThatAnswers) {
    watch.connectFailure = platform::PlatformError(17, "No server.");
    watch.refusesToOpen = true;
    EXPECT_FALSE(endsProgram());
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
}

TEST_P(Connection, ofAServerWithoutInstanceHasNoHost) {
    connect();
    desktop.boxes.clear();
    watch.serverStatus = 1;
    EXPECT_EQ(gfbDB_ConnectServer(), kNo);
    EXPECT_EQ(desktop.boxTexts(), std::vector<std::string>{"Invalid procedure call or argument5"});
}

TEST_P(Connection, ofAServerOnThisComputerLeavesTheClockAlone) {
    setSetting("Server", platform::processes().computerName() + "\\NUV");
    watch.serverStatus = 1;
    EXPECT_NE(gfbDB_ConnectServer(), kNo);
    EXPECT_TRUE(trace().ends_with("Time verified\r\n"));
}

TEST_P(Connection, makesACatalogWhereThatIsAllowed) {
    setSetting("DBName", "");
    watch.moreCatalogs = {
        {"NUVDATA7", false}, {"nuvdata12", false}, {"NUVDATAX", false}, {"NUVDATA99", true}};
    DBAllowCreate = kYes;
    EXPECT_FALSE(endsProgram());
    EXPECT_EQ(DBName, "NUVDATA12");
    EXPECT_TRUE(folder.has("NUVDATA12.mdf"));
    EXPECT_EQ(
        platform::settings().get(db::kSettingsApplication, db::kSettingsSection, "DBName", ""),
        "NUVDATA12"
    );
    EXPECT_TRUE(trace().ends_with("\\NUVDATA12.ldf\r\n")) << trace();
}

}  // namespace
