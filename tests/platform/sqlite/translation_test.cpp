#include "one_table.h"
#include "platform/ports/platform_error.h"
#include "platform/sql_dialect/server_order.h"

#include <gtest/gtest.h>

using platform::Stored;

namespace {

struct TranslationCase {
    const char* given;
    const char* statement;
    const char* text;
};

constexpr char kAll[] = "SELECT rowid,\"Code\",\"Town\",\"N\",\"LIMIT\" FROM \"T\"";

const TranslationCase kTranslations[] = {
    {"the first row as it comes", "SELECT TOP 1 * FROM T", "@ LIMIT 1"},
    {"two blanks before TOP, a prefix, a column of numbers",
     "SELECT  TOP 1 * FROM nuv.t WHERE N>'5' ORDER BY N",
     "@ WHERE \"N\">? ORDER BY \"N\",rowid LIMIT 1"},
    {"a text is bounded by its key and compared exactly",
     "SELECT TOP 1 * FROM T WHERE Code<='b' ORDER BY code DESC",
     "@ WHERE KEY(\"Code\")<=? AND \"Code\"~<=? ORDER BY KEY(\"Code\") DESC,\"Code\"~ "
     "DESC,rowid DESC LIMIT 1"},
    {"leading blanks off: no bound",
     "SELECT TOP 1 * FROM T WHERE ltrim(Code)='b' ORDER BY ltrim(Code)",
     "@ WHERE ltrim(\"Code\")~=? ORDER BY ltrim(\"Code\")~,rowid LIMIT 1"},
    {"no bound below OR and NOT",
     "SELECT * FROM T WHERE (Code='a' OR NOT Town='b') AND N IS NULL",
     "@ WHERE (\"Code\"~=? OR NOT (\"Town\"~=?)) AND \"N\" IS NULL"},
    {"the alternatives of a step one after the other",
     "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM T WHERE Code='a') > 1 AND Code='a' AND "
     "N>'1' OR Code>'a' ORDER BY Code,N",
     "SELECT * FROM (@ WHERE (SELECT COUNT(*) FROM (SELECT 1 FROM \"T\" WHERE KEY(\"Code\")=? AND "
     "\"Code\"~=? LIMIT 2))>? AND KEY(\"Code\")=? AND \"Code\"~=? AND \"N\">? ORDER BY "
     "\"N\",rowid LIMIT 1) UNION ALL SELECT * FROM (@ WHERE KEY(\"Code\")>=? AND \"Code\"~>? ORDER "
     "BY KEY(\"Code\"),\"Code\"~,\"N\",rowid LIMIT 1) LIMIT 1"},
    {"alternatives that overlap stay one condition",
     "SELECT  TOP 1 * FROM T WHERE Code='a' AND N>'1' OR Code>'b' ORDER BY Code,N",
     "@ WHERE (\"Code\"~=? AND \"N\">? OR \"Code\"~>?) ORDER BY KEY(\"Code\"),\"Code\"~,\"N\","
     "rowid LIMIT 1"},
    {"a count", "SELECT COUNT(*) FROM T", "SELECT COUNT(*) FROM \"T\""},
    {"a reserved name",
     "UPDATE T SET limit= 1.5 ,N = 2  WHERE N=3",
     "UPDATE \"T\" SET \"LIMIT\"=?,\"N\"=? WHERE \"N\"=?"},
    {"one column from another",
     "UPDATE T SET Code = Town where Town > ' '",
     "UPDATE \"T\" SET \"Code\"=\"Town\" WHERE KEY(\"Town\")>=? AND \"Town\"~>?"},
    {"a row", "INSERT INTO T VALUES('O''Neil',' ',-1,NULL)", nullptr},
    {"a short row", "INSERT INTO T VALUES('a','b',1,2.345)", "INSERT INTO \"T\" VALUES(?,?,?,?)"},
    {"a delete", "DELETE FROM T WHERE N=1;", "DELETE FROM \"T\" WHERE \"N\"=?"},
    {"a table",
     "Create Table U (A CHAR( 20) NOT NULL, D DATE DEFAULT '12:00:00 AM');",
     "CREATE TABLE \"U\" (\"A\" CHAR( 20) NOT NULL, \"D\" DATE DEFAULT '12:00:00 AM')"},
    {"an index of the table's own name",
     "Create UNIQUE CLUSTERED Index idx_1 on T(N, Code)",
     "CREATE UNIQUE INDEX \"T.idx_1\" ON \"T\" (\"N\",KEY(\"Code\"),ID(\"Code\"))"},
    {"an index goes", "Drop index T.idx_0", "DROP INDEX \"T.idx_0\""},
    {"a column more",
     "ALTER TABLE T ADD QA1 CHAR(20) DEFAULT  ' '",
     "ALTER TABLE \"T\" ADD COLUMN \"QA1\" CHAR(20) DEFAULT ' '"},
    {"a new name, trimmed",
     "sp_RENAME 'T.town', 'City ', 'COLUMN'",
     "ALTER TABLE \"T\" RENAME COLUMN \"Town\" TO \"City\""},
    {"transactions", "BEGIN TRANSACTION", "BEGIN IMMEDIATE"},
};

TEST(Translation, speaksTheEmbeddedDialect) {
    const OneTable schema;
    for (const auto& [given, statement, text] : kTranslations) {
        SCOPED_TRACE(given);
        if (text == nullptr) {
            EXPECT_THROW(
                platform::translate(statement, schema, readable()), platform::PlatformError
            );
            continue;
        }
        std::string expected(text);
        for (auto at = expected.find('@'); at != std::string::npos; at = expected.find('@')) {
            expected.replace(at, 1, kAll);
        }
        EXPECT_EQ(platform::translate(statement, schema, readable()).text, expected);
    }
}

TEST(Translation, bindsValuesInTheColumnsForm) {
    const OneTable schema;
    const auto insert =
        platform::translate("INSERT INTO T VALUES('a'' ','b',-1,2.345)", schema, readable());
    EXPECT_EQ(insert.values, (std::vector<Stored>{"a'", "b", std::int64_t{-1}, 2.35}));
    const auto select =
        platform::translate("SELECT * FROM T WHERE Code>'\xe9t~' AND N='7'", schema, readable());
    EXPECT_EQ(select.values, (std::vector<Stored>{"E{", "\xe9t~", std::int64_t{7}}));
}

TEST(Translation, refusesWhatItDoesNotKnowWithTheStatement) {
    const OneTable schema;
    for (const auto* statement : {
             "MERGE T USING U",
             "SELECT TOP 1 * FROM T WHERE  ORDER BY Code",
             "SELECT TOP 1 * FROM T ORDER BY ",
             "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM "
             "T WHERE N='1') > 1 AND  ORDER BY N",
             "DELETE FROM T; DELETE FROM T",
         }) {
        try {
            platform::translate(statement, schema, readable());
            ADD_FAILURE() << statement;
        } catch (const platform::PlatformError& error) {
            EXPECT_EQ(error.number(), 102);
            EXPECT_NE(error.description().find(statement), std::string::npos);
        }
    }
}

TEST(ServerOrder, sortsSignsDigitsLettersAndAccents) {
    const std::vector<std::string> sorted = {
        "",
        " a",
        "!",
        "/",
        ":",
        "_",
        "~NONSTK",
        "~ROA",
        "~roal",
        "0",
        "100",
        "17",
        "9",
        "A",
        "a b",
        "A/",
        "A:",
        "A1",
        "AB",
        "AZ",
        "\xe0",
        "B",
        "\xe7"
        "a",
        "d",
        "E",
        "eZ",
        "\xe9",
        "\xca",
        "f",
        "O'Neil",
        "ONEIL",
        "Z",
    };
    for (std::size_t at = 0; at + 1 < sorted.size(); ++at) {
        const auto& low = sorted[at];
        const auto& high = sorted[at + 1];
        EXPECT_LT(platform::compareServerOrder(low, high), 0) << low << " " << high;
        EXPECT_LE(platform::serverOrderKey(low), platform::serverOrderKey(high)) << low;
    }
    EXPECT_EQ(platform::compareServerOrder("\xc9t\xe9", "\xe9T\xc9   "), 0);
    EXPECT_NE(platform::compareServerOrder("e", "\xe9"), 0);
}

}  // namespace
