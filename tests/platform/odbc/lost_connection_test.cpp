#include "each_store.h"
#include "platform/odbc/odbc_connection.h"
#include "platform/odbc/odbc_management.h"
#include "support/answer_cutter.h"

#include <thread>

namespace {

constexpr std::int32_t kNetworkError = 11;
constexpr std::int32_t kNoServerError = 17;
constexpr std::int32_t kClosedError = 3704;

/// The server goes away under an open connection.
class LostConnection : public EachStore {
protected:
    LostConnection() {
        execute("Create Table T (N INTEGER NOT NULL, Note CHAR(10))");
        execute("Create UNIQUE Index idx_0 On T(N)");
        execute("INSERT INTO T VALUES(1,'')");
    }
    void lose() { testing_support::cutConnections(*GetParam().at, catalog); }
    void reopen() { connection->open(GetParam().settings(catalog)); }
    /// First value of a query on the sessions that wait for a lock in the catalog.
    [[nodiscard]] std::string ofWaiting(const std::string& what) const {
        return testing_support::runOnServer(
            *GetParam().at,
            "SELECT " + what + " FROM pg_stat_activity WHERE wait_event_type='Lock' AND datname='" +
                catalog + "'"
        );
    }
    using Step = void (*)(platform::DataConnection& connection, platform::RowSet& rows);
    /// What happens when the server is lost in front of a step, in order.
    std::string loseBefore(Step step) {
        const auto isOpen = [&](const char* open, const char* closed) {
            return std::string(connection->isOpen() ? open : closed) + "; ";
        };
        const auto rows = rowsOf("SELECT * FROM T");
        lose();
        std::string story = isOpen("open", "closed");  // nobody has asked the server yet
        const std::int32_t number = errorOf([&] { step(*connection, *rows); });
        const bool isLoss = number == kNetworkError || GetParam().at->isSqlServer();
        story += isLoss ? "lost; " : std::to_string(number) + "; ";
        story += isOpen("open", "closed") + std::to_string(failure("SELECT * FROM T")) + "; ";
        story += "row " + text(rows->value(0)) + "; ";  // what was read stays readable
        reopen();
        story += isOpen("opened", "closed");
        story += "row " + first("SELECT N FROM T WHERE Note=''") + "; ";
        return story + std::to_string(errorOf([&] { rows->remove(); }));
    }
    /// A connection that goes through `way`.
    std::unique_ptr<platform::DataConnection> through(const testing_support::AnswerCutter& way) {
        platform::OdbcOptions options = GetParam().at->options();
        options.port = way.port();
        auto opened = std::make_unique<platform::OdbcConnection>([options] { return options; });
        opened->open(GetParam().settings(catalog));
        return opened;
    }
};

INSTANTIATE_TEST_SUITE_P(
    Store,
    LostConnection,
    testing::ValuesIn(testing_support::serverStores()),
    testing_support::adapterName
);

struct LossCase {
    const char* given;
    void (*step)(platform::DataConnection& connection, platform::RowSet& rows);
};

constexpr LossCase kSteps[] = {
    {"a statement", [](auto& connection, auto&) { connection.execute("UPDATE T SET Note='x'"); }},
    {"a query", [](auto& connection, auto&) { connection.openRowSet("SELECT * FROM T"); }},
    {"an update of a row in hand",
     [](auto&, auto& rows) {
         rows.setValue(1, util::Value(std::string("x")));
         rows.update();
     }},
    {"a delete of a row in hand", [](auto&, auto& rows) { rows.remove(); }},
};

TEST_P(LostConnection, closesAtTheNextStatementAndOpensAgain) {
    for (const auto& [given, step] : kSteps) {
        SCOPED_TRACE(given);
        EXPECT_EQ(loseBefore(step), "open; lost; closed; 3704; row 1; opened; row 1; 3704");
    }
}

/// The server of the tests' own, which can be asked what it is doing.
using OwnServer = LostConnection;

INSTANTIATE_TEST_SUITE_P(
    Store,
    OwnServer,
    testing::Values(testing_support::serverStores().front()),
    testing_support::adapterName
);

TEST_P(OwnServer, lostWithinAStatementLeavesTheRowAsItWas) {
    // Given: a statement that waits for the other station's change
    const auto other = newConnection();
    other->execute("BEGIN TRANSACTION");
    other->execute("UPDATE T SET Note='theirs' WHERE N=1");
    std::int32_t number = 0;
    std::thread waiting([&] { number = failure("UPDATE T SET Note='ours' WHERE N=1"); });
    // When
    while (ofWaiting("count(pg_terminate_backend(pid, 5000))") != "1") {}
    waiting.join();
    other->execute("ROLLBACK");
    // Then
    EXPECT_EQ(number, kNetworkError);
    EXPECT_FALSE(connection->isOpen());
    reopen();
    EXPECT_EQ(first("SELECT COUNT(*) FROM T WHERE Note=''"), "1");
}

TEST_P(OwnServer, lostBehindAStatementFailsItAlthoughItWasDone) {
    testing_support::AnswerCutter way(std::stoi(GetParam().at->options().port));
    const auto cut = through(way);
    cut->openRowSet("SELECT * FROM T");
    way.cutNextAnswer();
    EXPECT_EQ(errorOf([&] { cut->execute("INSERT INTO T VALUES(2,'')"); }), kNetworkError);
    EXPECT_FALSE(cut->isOpen());
    // The row is there, and there once: sent again, it is refused.
    EXPECT_EQ(failure("INSERT INTO T VALUES(2,'')"), 2601);
    EXPECT_EQ(first("SELECT COUNT(*) FROM T WHERE N=2"), "1");
}

TEST_P(LostConnection, toAServerThatNeverAnswersEndsAtItsTime) {
    platform::ConnectionSettings settings = GetParam().settings(catalog);
    settings.timeoutSeconds = 1;
    for (const std::string& driver : {GetParam().at->options().driver, std::string("FreeTDS")}) {
        SCOPED_TRACE(driver);
        const testing_support::AnswerCutter silence(0);
        const platform::OdbcOptions options{driver + ";Server=127.0.0.1", silence.port()};
        platform::OdbcConnection mute([&] { return options; });
        EXPECT_NE(errorOf([&] { mute.open(settings); }), 0);
        EXPECT_FALSE(mute.isOpen());
        platform::OdbcManagement management([&] { return options; });
        management.setLoginTimeout(1);
        EXPECT_NE(errorOf([&] { management.connect("127.0.0.1\\X", "qz", "", false); }), 0);
        EXPECT_EQ(management.status(), 0);
    }
}

TEST_P(LostConnection, toAPortThatNobodyServesIsNoServer) {
    std::string port;
    {
        const testing_support::AnswerCutter gone(0);
        port = gone.port();
    }
    platform::OdbcOptions options = GetParam().at->options();
    options.port = port;
    platform::OdbcConnection nobody([&] { return options; });
    const std::int32_t number = errorOf([&] { nobody.open(GetParam().settings(catalog)); });
    EXPECT_EQ(number, GetParam().at->isSqlServer() ? number : kNoServerError) << message;
}

}  // namespace
