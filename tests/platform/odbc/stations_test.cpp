#include "each_store.h"

#include <sys/wait.h>
#include <unistd.h>

namespace {

using Stations = EachStore;

INSTANTIATE_TEST_SUITE_P(
    Store,
    Stations,
    testing::ValuesIn(testing_support::storeAdapters()),
    testing_support::adapterName
);

constexpr int kRounds = 25;

/// Adds 1 to the counter of row 1 again and again; a conflict is tried once more with the row as it
/// is then. @return true when every round came to its end.
bool countUp(platform::DataConnection& connection) {
    int conflicts = 0;
    for (int round = 0; round < kRounds && conflicts < 10000;) {
        const auto rows = connection.openRowSet("SELECT TOP 1 * FROM T WHERE N='1'");
        rows->setValue(1, util::Value(std::get<std::int64_t>(rows->value(1)) + 1));
        try {
            rows->update();
            ++round;
        } catch (const platform::PlatformError& error) {
            if (error.number() != platform::kRowChangedError) {
                return false;
            }
            ++conflicts;
        }
    }
    return true;
}

TEST_P(Stations, ofTwoProcessesLoseNoneOfTheirUpdates) {
    // Given
    execute("Create Table T (N INTEGER NOT NULL, Hits INTEGER, Note CHAR(10))");
    execute("Create UNIQUE Index idx_0 On T(N)");
    execute("INSERT INTO T VALUES(1,0,'')");
    // When
    const pid_t other = fork();
    if (other == 0) {
        bool isDone = false;
        platform::ignoringErrors([&] { isDone = countUp(*newConnection()); });
        _exit(isDone ? 0 : 1);
    }
    EXPECT_TRUE(countUp(*connection));
    int status = -1;
    waitpid(other, &status, 0);
    // Then
    EXPECT_EQ(status, 0);
    EXPECT_EQ(first("SELECT Hits FROM T"), std::to_string(2 * kRounds));
}

TEST_P(Stations, ofATableWithoutAKeyChangeOneOfTwoAlikeRowsOrNone) {
    execute("Create Table T (N INTEGER NOT NULL, Hits INTEGER, Note CHAR(10))");
    execute("INSERT INTO T VALUES(1,0,'')");
    execute("INSERT INTO T VALUES(1,0,'')");
    const auto rows = rowsOf("SELECT * FROM T");
    rows->setValue(1, util::Value(std::int64_t{5}));
    const std::int32_t error = errorOf([&] { rows->update(); });
    if (GetParam().isEmbedded()) {
        EXPECT_EQ(error, 0);  // it knows its rows by number
        EXPECT_EQ(first("SELECT COUNT(*) FROM T WHERE Hits=5"), "1");
        return;
    }
    EXPECT_EQ(error, -2147467259);
    EXPECT_EQ(first("SELECT COUNT(*) FROM T WHERE Hits=5"), "0");
    execute("UPDATE T SET Note='first' WHERE Hits=0");
    execute("INSERT INTO T VALUES(2,0,'')");
    const auto single = rowsOf("SELECT * FROM T WHERE N='2'");
    single->setValue(1, util::Value(std::int64_t{6}));
    single->update();
    EXPECT_EQ(first("SELECT COUNT(*) FROM T WHERE Hits=6"), "1");
}

TEST_P(Stations, seeEachOthersChangesOfTheTables) {
    execute("Create Table T (N INTEGER NOT NULL)");
    EXPECT_EQ(rowsOf("SELECT * FROM T")->fieldCount(), 1);
    const auto other = newConnection();
    other->execute("ALTER TABLE T ADD Note CHAR(10)");
    other->execute("Create Table U (N INTEGER)");
    execute("INSERT INTO T VALUES(1,'new')");
    EXPECT_EQ(first("SELECT Note FROM T"), "new       ");
    EXPECT_EQ(failure("Create Table U (N INTEGER)"), 2714);
    other->execute("DROP TABLE T");
    EXPECT_EQ(failure("SELECT * FROM T"), 208);
    EXPECT_EQ(message, "Invalid object name 'T'.");
}

}  // namespace
