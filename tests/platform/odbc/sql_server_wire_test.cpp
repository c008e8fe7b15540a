#include "platform/odbc/odbc_connection.h"
#include "platform/odbc/odbc_management.h"
#include "support/tds_server.h"

#include <map>

#include <gtest/gtest.h>

namespace {

using testing_support::TdsAnswer;
using testing_support::TdsColumn;
using testing_support::TdsServer;
namespace tds = testing_support::tds;

/// FreeTDS and the protocol of SQL Server on loopback; the test plays the server's part.
class SqlServerWire : public testing::Test {
protected:
    /// Answers by the beginning of the statement.
    std::map<std::string, TdsAnswer> answers;
    TdsServer server{[this](const std::string& statement) { return answerTo(statement); }};

    [[nodiscard]] platform::OdbcOptions options() const {
        return {"FreeTDS;Server=127.0.0.1", server.port()};
    }
    std::unique_ptr<platform::OdbcConnection> open() {
        auto connection = std::make_unique<platform::OdbcConnection>([this] { return options(); });
        connection->open({5, "SHOP\\NUV", "NUVDATA1", "qz", "", false});
        return connection;
    }
    /// Statements that the link sent; those that the driver adds by itself begin with "SET ".
    [[nodiscard]] std::vector<std::string> sent() const {
        std::vector<std::string> all = server.statements();
        std::erase_if(all, [](const std::string& text) {
            return text.starts_with("SET ") || text.starts_with("set ");
        });
        return all;
    }
    static std::pair<std::int32_t, std::string> errorOf(const std::function<void()>& step) {
        try {
            step();
        } catch (const platform::PlatformError& error) {
            return {error.number(), error.description()};
        }
        return {0, ""};
    }

private:
    [[nodiscard]] TdsAnswer answerTo(const std::string& statement) const {
        for (const auto& [beginning, answer] : answers) {
            if (statement.starts_with(beginning)) {
                return answer;
            }
        }
        return {};
    }
};

TdsAnswer oneNumber(std::int64_t number) {
    return {{TdsColumn::integer("", 4)}, {{tds::integer(number, 4)}}};
}

TEST_F(SqlServerWire, carriesStatementsLetterForLetter) {
    const std::vector<std::string> statements = {
        "SELECT  TOP 1 * FROM Names WHERE (SELECT COUNT(*) FROM Names WHERE LASTNAME='O''Neil') > "
        "1 "
        "AND LASTNAME='O''Neil' AND FIRSTNAME> 'Pat' OR LASTNAME>'O''Neil' ORDER BY "
        "LASTNAME,FIRSTNAME",
        "Create Table Names (NameID INTEGER NOT NULL, LIMIT DECIMAL(18,2));",
        "Create UNIQUE CLUSTERED Index idx_1 On Names(ARCode)",
        "sp_RENAME 'Names.Old', 'New ', 'COLUMN'",
        "INSERT INTO Names VALUES(1,'{fn x} ? caf\xe9 \x80','')",
        "UPDATE Inventory SET Spare1 = PriceFactor where PriceFactor > ' '",
    };
    const auto connection = open();
    for (const std::string& statement : statements) {
        connection->execute(statement);
    }
    EXPECT_EQ(sent(), statements);
}

TEST_F(SqlServerWire, bringsValuesWithoutLoss) {
    answers["SELECT"] = {
        {TdsColumn::character("Name ", 10),
         TdsColumn::variable("Free", 10),
         TdsColumn::integer("Big", 8),
         TdsColumn::decimal("Price", 18, 2),
         TdsColumn::single("Rate"),
         TdsColumn::moment("Seen"),
         TdsColumn::integer("Small", 2)},
        {{tds::text("caf\xe9 \x80    "),
          tds::text("x"),
          tds::integer(9007199254740993, 8),
          tds::decimal(92233720368547758, true),
          tds::single(0.0725F),
          tds::moment(38746, 50709),
          tds::integer(-32768, 2)},
         {tds::text("unpadded"),
          tds::noText(),
          tds::none(),
          tds::none(),
          tds::none(),
          tds::none(),
          tds::none()}}};
    const auto rows = open()->openRowSet("SELECT * FROM Names");
    ASSERT_EQ(rows->recordCount(), 2);
    EXPECT_EQ(rows->fieldName(0), "Name");  // a rename leaves a blank behind a name
    const std::vector<util::Value> first = {
        std::string("caf\xe9 \x80    "),
        std::string("x"),
        std::int64_t{9007199254740993},
        util::Money::fromRaw(-9223372036854775800),
        0.0725F,
        util::DateTime{38748, 50709},
        std::int64_t{-32768}};
    for (std::size_t at = 0; at < first.size(); ++at) {
        EXPECT_EQ(rows->value(static_cast<int>(at)), first[at]) << at;
    }
    rows->moveNext();
    EXPECT_EQ(rows->value(0), util::Value(std::string("unpadded  ")));
    for (int at = 1; at < rows->fieldCount(); ++at) {
        EXPECT_EQ(rows->value(at), util::Value()) << at;
    }
}

TEST_F(SqlServerWire, tellsErrorsWithTheServersNumberAndWords) {
    answers["SELECT"] = {{}, {}, 0, 208, "Invalid object name 'Names'."};
    answers["INSERT"] = {
        {},
        {},
        0,
        2601,
        "Cannot insert duplicate key row in object 'Names' with unique index 'idx_1'."};
    answers["sp_RENAME"] = {
        {}, {}, 0, 0, "Caution: Changing any part of an object name could break scripts."};
    const auto connection = open();
    EXPECT_EQ(
        errorOf([&] { connection->openRowSet("SELECT TOP 1 * FROM Names"); }),
        std::pair(208, std::string("Invalid object name 'Names'."))
    );
    const auto [number, text] =
        errorOf([&] { connection->execute("INSERT INTO Names VALUES(1)"); });
    EXPECT_EQ(number, 2601);
    EXPECT_EQ(text.substr(0, 23), "Cannot insert duplicate");
    EXPECT_EQ(errorOf([&] { connection->execute("sp_RENAME 'a.b', 'c ', 'COLUMN'"); }).first, 0);
    EXPECT_TRUE(connection->isOpen());
}

TEST_F(SqlServerWire, changesARowByItsKeyAndItsOldValues) {
    answers["SELECT TOP 1"] = {
        {TdsColumn::integer("NameID", 4),
         TdsColumn::character("CITY", 10),
         TdsColumn::decimal("BALANCE", 18, 2),
         TdsColumn::single("Rate")},
        {{tds::integer(7, 4), tds::text("O'Neil    "), tds::decimal(110, false), tds::none()}}};
    answers["SELECT i.name"] = {
        {TdsColumn::variable("name", 128),
         TdsColumn::integer("", 4),
         TdsColumn::variable("c", 128)},
        {{tds::text("idx_0"), tds::integer(1, 4), tds::text("NameID")},
         {tds::text("idx_9"), tds::integer(0, 4), tds::text("CITY")}}};
    answers["UPDATE"] = {{}, {}, 1};
    const auto connection = open();
    const auto rows = connection->openRowSet("SELECT TOP 1 * FROM nuv.Names");
    rows->setValue(1, util::Value(std::string("Ogden")));
    rows->setValue(3, util::Value(0.1F));
    rows->update();
    EXPECT_EQ(
        sent().back(),
        "UPDATE [nuv].[Names] SET [CITY]='Ogden',[Rate]=0.1 WHERE [NameID]=7 AND "
        "[CITY]='O''Neil' AND [Rate] IS NULL"
    );
    rows->setValue(2, util::Value(util::Money::fromRaw(-5)));
    rows->update();
    EXPECT_EQ(
        sent().back(),
        "UPDATE [nuv].[Names] SET [BALANCE]=-0.0005 WHERE [NameID]=7 AND [BALANCE]=1.10"
    );
    answers["UPDATE"] = {{}, {}, 0};
    rows->setValue(1, util::Value(std::string("Austin")));
    EXPECT_EQ(errorOf([&] { rows->update(); }).first, platform::kRowChangedError);
    answers["DELETE"] = {{}, {}, 1};
    rows->remove();
    EXPECT_EQ(sent().back(), "DELETE FROM [nuv].[Names] WHERE [NameID]=7");
}

TEST_F(SqlServerWire, thatBreaksClosesTheConnection) {
    answers["SELECT COUNT"] = oneNumber(3);
    answers["UPDATE"].hangsUp = true;
    const auto connection = open();
    EXPECT_EQ(
        connection->openRowSet("SELECT COUNT(*) FROM Names")->value(0), util::Value(std::int64_t{3})
    );
    EXPECT_NE(errorOf([&] { connection->execute("UPDATE Names SET CITY=''"); }).first, 0);
    EXPECT_FALSE(connection->isOpen());
    connection->open({5, "SHOP\\NUV", "NUVDATA1", "qz", "", false});
    EXPECT_TRUE(connection->isOpen());
}

TEST_F(SqlServerWire, tellsWhyALoginIsRefused) {
    answers[TdsServer::kLogin] = {{}, {}, 0, 18456, "Login failed for user 'qz'."};
    EXPECT_EQ(
        errorOf([&] { open(); }), std::pair(18456, std::string("Login failed for user 'qz'."))
    );
    // FreeTDS's own numbers, which the configuration tool puts into words
    platform::OdbcOptions gone = options();
    gone.port = "1";
    platform::OdbcConnection nobody([&] { return gone; });
    try {
        nobody.open({2, "SHOP\\NUV", "NUVDATA1", "qz", "", false});
        FAIL() << "somebody is there";
    } catch (const platform::PlatformError& error) {
        EXPECT_EQ(error.number(), 20009);
        EXPECT_FALSE(error.description().starts_with("[")) << error.description();
        EXPECT_EQ(error.source(), "FreeTDS");
    }
}

TEST_F(SqlServerWire, manages) {
    answers["SELECT name, CASE WHEN"] = {
        {TdsColumn::variable("name", 128), TdsColumn::integer("", 4)},
        {{tds::text("master"), tds::integer(1, 4)}, {tds::text("NUVDATA1"), tds::integer(0, 4)}}};
    answers["SELECT name, CASE xtype"] = {
        {TdsColumn::variable("name", 128), TdsColumn::integer("", 4)},
        {{tds::text("Names"), tds::integer(0, 4)}, {tds::text("sysfiles"), tds::integer(1, 4)}}};
    platform::OdbcManagement management([this] { return options(); });
    management.connect("SHOP\\NUV", "qz", "", false);
    EXPECT_EQ(management.status(), 1);
    ASSERT_EQ(management.catalogs().size(), 2U);
    EXPECT_TRUE(management.catalogs()[0].isSystem);
    EXPECT_FALSE(management.catalogs()[1].isSystem);
    ASSERT_EQ(management.tables("NUVDATA1").size(), 2U);
    EXPECT_EQ(management.tables("NUVDATA1")[0].name, "Names");
    EXPECT_TRUE(management.tables("NUVDATA1")[1].isSystem);
    management.addCatalog({"NUVDATA2", "D:\\NUVDATA2.mdf", "D:\\NUVDATA2.ldf", "LogNUVDATA2"});
    EXPECT_TRUE(sent().back().starts_with("CREATE DATABASE [NUVDATA2] ON PRIMARY"));
}

}  // namespace
