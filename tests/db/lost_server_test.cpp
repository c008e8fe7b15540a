#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/nuvDBSM_Names.h"
#include "db/store_fixture.h"
#include "platform/ports/platform.h"

namespace {

/// The server goes away under an open engine.
class LostServer : public StoreTest {
protected:
    void SetUp() override {
        openStore();
        addName(1, "ADAMS", "Adams");
        addName(2, "ZULU", "Zulu");
        desktop.boxes.clear();
    }
    void loseServer() { testing_support::cutConnections(*GetParam().at, catalogName()); }
    /// Lets the server refuse the catalog, or take it again.
    void closeCatalog(bool isClosed) {
        testing_support::runOnServer(
            *GetParam().at,
            GetParam().at->isSqlServer()
                ? "ALTER DATABASE [" + catalogName() + "] SET " +
                      (isClosed ? "OFFLINE WITH ROLLBACK IMMEDIATE" : "ONLINE")
                : "ALTER DATABASE \"" + catalogName() + "\" ALLOW_CONNECTIONS " +
                      (isClosed ? "false" : "true")
        );
    }
};

INSTANTIATE_TEST_SUITE_P(
    Store, LostServer, ::testing::ValuesIn(testing_support::serverStores()), adapterName
);

struct DirectCase {
    const char* given;
    const char* statement;
    bool (*fails)(const std::string& statement);
};

TEST_P(LostServer, failsADirectStatementWithLogAndBox) {
    const DirectCase cases[] = {
        {"a change",
         "UPDATE Names SET CITY='Ogden' WHERE NameID=1",
         [](const std::string& statement) { return gfiDB_ExecuteSQL(statement) != 0; }},
        {"a query",
         "SELECT * FROM Names",
         [](const std::string& statement) {
             return gfbDB_OpenBySQL(statement, db::tableNames) == kNo;
         }},
    };
    for (const auto& [given, statement, fails] : cases) {
        SCOPED_TRACE(given);
        folder.write("PVSW.log", "");
        desktop.boxes.clear();
        DBFailureKind = 0;
        loseServer();
        EXPECT_TRUE(fails(statement));
        EXPECT_EQ(DBFailureKind, 3);
        EXPECT_EQ(
            desktop.boxTexts(),
            std::vector<std::string>{
                "An error occurred in executing SQL. View PVSW.log in datapath for details."}
        );
        const std::string log = fileText("PVSW.log");
        const std::string head = platform::processes().programName() + " [EXE FAIL]";
        EXPECT_TRUE(log.starts_with(head)) << log;
        EXPECT_TRUE(log.ends_with("\r\n" + std::string(statement) + "\r\n")) << log;
        if (!GetParam().at->isSqlServer()) {
            EXPECT_EQ(
                log,
                head +
                    "11 Description: General network error. Check your network documentation. "
                    "Source: PostgreSQL Unicode\r\n" +
                    statement + "\r\n"
            );
        }
        // The next opening of a table connects again, without a word.
        EXPECT_NE(gfbDB_OpenTable(db::tableNames), kNo);
        EXPECT_EQ(DBConnected, kYes);
        EXPECT_EQ(desktop.boxes.size(), 1U);
    }
    EXPECT_EQ(query("SELECT CITY FROM Names WHERE NameID=1"), std::string(20, ' '));
}

TEST_P(LostServer, givesTheErrorOfMovementAndUpdateToTheirCaller) {
    gNames.ARCode = "ADAMS";
    ASSERT_NE(gfiDB_Operation(db::tableNames, db::opEqual, db::keyNamesARCode), kNo);
    loseServer();
    EXPECT_THROW(
        gfiDB_Operation(db::tableNames, db::opGetNext, db::keyNamesARCode), platform::PlatformError
    );
    gNames.CITY = "Ogden";
    EXPECT_THROW(gfiDB_Operation(db::tableNames, db::opUpdate, 0), platform::PlatformError);
    EXPECT_EQ(gfiDB_Operation(db::tableNames, db::opInsert, 0), kNo);
    EXPECT_EQ(gNames.ARCode.trimmed(), "ADAMS");
    EXPECT_TRUE(desktop.boxes.empty());

    // The record still marks the place when the server is there again.
    EXPECT_NE(gfbDB_OpenTable(db::tableNames), kNo);
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opGetNext, db::keyNamesARCode), kNo);
    EXPECT_EQ(gNames.ARCode.trimmed(), "ZULU");

    // An update in hand is lost with the server.
    loseServer();
    gNames.CITY = "Ogden";
    EXPECT_THROW(gfiDB_Operation(db::tableNames, db::opUpdate, 0), platform::PlatformError);
    EXPECT_FALSE(DBConnection->isOpen());
    EXPECT_NE(gfbDB_OpenTable(db::tableNames), kNo);
    EXPECT_EQ(query("SELECT CITY FROM Names WHERE NameID=2"), std::string(20, ' '));
}

TEST_P(LostServer, thatStaysAwayIsToldAtEachOpening) {
    closeCatalog(true);
    loseServer();
    EXPECT_THROW(query("SELECT * FROM Names"), platform::PlatformError);
    for (std::size_t attempt = 1; attempt <= 2; ++attempt) {
        EXPECT_EQ(gfbDB_OpenTable(db::tableNames), kNo);
        ASSERT_EQ(desktop.boxes.size(), attempt);
        EXPECT_EQ(desktop.boxes.back().text, "Failed to connect to database. ");
        EXPECT_EQ(desktop.boxes.back().title, "Database Connection Error");
        EXPECT_EQ(DBFailureKind, 2);
        EXPECT_EQ(DBConnected, kNo);
    }
    closeCatalog(false);
    EXPECT_NE(gfbDB_OpenTable(db::tableNames), kNo);
    EXPECT_EQ(DBConnected, kYes);
}

}  // namespace
