#include "each_store.h"
#include "platform/sql_dialect/dialect.h"
#include "platform/sql_dialect/server_error.h"

namespace {

class Refusals : public EachStore {
protected:
    Refusals() {
        execute("Create Table T (N INTEGER NOT NULL, Small SMALLINT, Code CHAR(5), Seen DATETIME)");
        execute("Create UNIQUE Index idx_0 On T(N, Code)");
        execute("INSERT INTO T VALUES(1,2,'AB',NULL)");
        execute("INSERT INTO T VALUES(1,3,'~ROA',NULL)");
        execute("Create Table Twins (N INTEGER)");
        execute("INSERT INTO Twins VALUES(1)");
        execute("INSERT INTO Twins VALUES(1)");
    }
};

INSTANTIATE_TEST_SUITE_P(
    Store,
    Refusals,
    testing::ValuesIn(testing_support::storeAdapters()),
    testing_support::adapterName
);

struct RefusalCase {
    const char* given;
    const char* statement;
    std::int32_t number;
    const char* beginning;  ///< of the text
};

constexpr RefusalCase kRefusals[] = {
    {"no such table", "SELECT TOP 1 * FROM Nobody", 208, "Invalid object name 'Nobody'."},
    {"no such owner", "SELECT TOP 1 * FROM nuv.Nobody", 208, "Invalid object name 'nuv.Nobody'."},
    {"no such column", "SELECT * FROM T WHERE Nothing='1'", 207, "Invalid column name 'Nothing'."},
    {"a row that is there, in other letters",
     "INSERT INTO T VALUES(1,2,'ab ',NULL)",
     2601,
     "Cannot insert duplicate key row in object 'dbo.T' with unique index 'idx_0'."},
    {"an index that the rows do not allow",
     "Create UNIQUE Index idx_1 On Twins(N)",
     1505,
     "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the "
     "object "
     "name 'dbo.Twins' and the index name 'idx_1'."},
    {"an index name that the table has", "Create Index idx_0 On T(Small)", 1913, "The operation"},
    {"a table that is there", "Create Table t (N INTEGER)", 2714, "There is already an object"},
    {"a column that is there", "ALTER TABLE T ADD small SMALLINT", 2705, "Column names in each"},
    {"a type that is none", "ALTER TABLE T ADD X PICTURE", 2715, "Column, parameter, or"},
    {"an index on no table", "Create Index idx_0 On Nobody(A)", 1088, "Cannot find the object"},
    {"an index on no column",
     "Create Index idx_5 On T(Zip)",
     1911,
     "Column name 'Zip' does not exist in the target table or view."},
    {"no column to change",
     "ALTER TABLE T ALTER COLUMN Zip CHAR(9)",
     4924,
     "ALTER TABLE ALTER COLUMN failed because column 'Zip' does not exist in table 'T'."},
    {"a column that gets too narrow", "ALTER TABLE T ALTER COLUMN Code CHAR(1)", 8152, "String or"},
    {"a new name that is taken",
     "sp_RENAME 'T.Seen', 'small ', 'COLUMN'",
     15335,
     "Error: The new name 'small' is already in use"},
    {"a key twice by an update",
     "UPDATE T SET Code='AB' WHERE Small=3",
     2601,
     "Cannot insert duplicate key row in object 'dbo.T' with unique index 'idx_0'."},
    {"no value where one must be",
     "INSERT INTO T VALUES(NULL,2,'B',NULL)",
     515,
     "Cannot insert the value NULL into column 'N', table 'dbo.T'; column does not allow nulls."},
    {"too long a text", "UPDATE T SET Code='sixsix'", 8152, "String or binary data"},
    {"too large a number",
     "UPDATE T SET Small=40000",
     220,
     "Arithmetic overflow error for data type smallint, value = 40000."},
    {"letters for a number",
     "UPDATE T SET N='x'",
     245,
     "Conversion failed when converting the varchar value 'x' to data type int."},
    {"a day that is none", "UPDATE T SET Seen='20060231'", 241, "Conversion failed"},
    {"too few values", "INSERT INTO T VALUES(1)", 213, "Column name or number"},
    {"nothing to rename", "sp_RENAME 'T.Nothing', 'New ', 'COLUMN'", 15248, "Either the parameter"},
    {"nothing to drop", "Drop index T.idx_7", 3701, "Cannot drop the index 'T.idx_7', because"},
    {"an open quote", "SELECT * FROM T WHERE Code='O'Neil'", 105, "Unclosed quotation mark"},
    {"no statement", "Shutdown", 102, "Incorrect syntax near 'Shutdown'. Statement: Shutdown"},
};

TEST_P(Refusals, haveTheServersNumbersAndWords) {
    for (const auto& [given, statement, number, beginning] : kRefusals) {
        SCOPED_TRACE(given);
        EXPECT_EQ(failure(statement), number);
        EXPECT_EQ(message.substr(0, std::string_view(beginning).size()), beginning);
    }
    EXPECT_EQ(first("SELECT COUNT(*) FROM T"), "2");
}

struct StateCase {
    const char* state;
    const char* text;
    std::int32_t number;
};

TEST(PostgresErrors, haveTheServersNumbers) {
    static constexpr StateCase kCases[] = {
        {"40P01", "deadlock detected", platform::errorDeadlock},
        {"55P03", "canceling statement due to lock timeout", platform::errorLockTimeout},
        {"53100", "could not extend file: No space left on device", platform::errorCatalogFull},
        {"25006", "cannot execute UPDATE in a read-only transaction", platform::errorReadOnly},
        {"42501", "permission denied for table Names", platform::errorNoPermission},
        {"57P01", "terminating connection", platform::errorNetwork},
        {"22003", "numeric field overflow", platform::errorNumericOverflow},
        {"XX000", "cache lookup failed", platform::errorUnspecified},
    };
    for (const auto& [state, text, number] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(platform::postgresError(state, text).number(), number);
    }
    EXPECT_EQ(
        platform::postgresError("XX000", "cache lookup failed").description(), "cache lookup failed"
    );
}

}  // namespace
