#include "store.h"

#include <sys/wait.h>
#include <unistd.h>

namespace {

using Structure = Store;

struct FailureCase {
    const char* given;
    const char* statement;
    std::int32_t number;
    const char* message;  ///< its beginning
};

constexpr FailureCase kFailures[] = {
    {"a table that is not there",
     "SELECT TOP 1 * FROM nuv.Vendors",
     208,
     "Invalid object name 'nuv.Vendors'."},
    {"a column that is not there",
     "SELECT * FROM Names WHERE Zip='1'",
     207,
     "Invalid column name 'Zip'."},
    {"a table twice",
     "Create Table names (A CHAR(1))",
     2714,
     "There is already an object named 'names' in the database."},
    {"an index twice on one table",
     "Create Index idx_0 On Names(LASTNAME)",
     1913,
     "The operation failed because an index or statistics with name 'idx_0' already exists on "
     "table 'Names'."},
    {"an index on a table that is not there",
     "Create Index idx_0 On Nobody(A)",
     1088,
     "Cannot find the object \"Nobody\""},
    {"an index on a column that is not there",
     "Create Index idx_5 On Names(Zip)",
     1911,
     "Column name 'Zip' does not exist in the target table or view."},
    {"a column twice",
     "ALTER TABLE Names ADD lastname CHAR(3)",
     2705,
     "Column names in each table must be unique. Column name 'lastname' in table 'Names' is "
     "specified more than once."},
    {"a type that is none", "ALTER TABLE Names ADD X PICTURE", 2715, "Column, parameter, or"},
    {"an index to drop that is not there",
     "Drop index Names.idx_9",
     3701,
     "Cannot drop the index 'Names.idx_9', because it does not exist"},
    {"a column to change that is not there",
     "ALTER TABLE Names ALTER COLUMN Zip CHAR(9)",
     4924,
     "ALTER TABLE ALTER COLUMN failed because column 'Zip' does not exist in table 'Names'."},
    {"a column that gets too narrow",
     "ALTER TABLE Names ALTER COLUMN LASTNAME CHAR(2)",
     8152,
     "String or binary data would be truncated"},
    {"a column to rename that is not there",
     "sp_RENAME 'Names.Old', 'New ', 'COLUMN'",
     15248,
     "Either the parameter @objname is ambiguous"},
    {"a new name that is taken",
     "sp_RENAME 'Names.LASTNAME', 'nameid ', 'COLUMN'",
     15335,
     "Error: The new name 'nameid' is already in use"},
    {"a key twice",
     "INSERT INTO Names VALUES(1,'other','')",
     2601,
     "Cannot insert duplicate key row in object 'dbo.Names' with unique index 'idx_0'."},
    {"a text key twice, in other letters",
     "INSERT INTO Names VALUES(2,'Smith  ','')",
     2601,
     "Cannot insert duplicate key row in object 'dbo.Names' with unique index 'idx_1'."},
    {"the same by an update",
     "UPDATE Names SET ARCode = '~ROA' WHERE NameID=1",
     2601,
     "Cannot insert duplicate key row in object 'dbo.Names' with unique index 'idx_1'."},
    {"a unique index over equal rows",
     "Create Unique Index idx_7 On Names(LASTNAME)",
     1505,
     "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found"},
    {"values missing", "INSERT INTO Names VALUES(1)", 213, "Column name or number of supplied"},
    {"an open quote", "SELECT * FROM Names WHERE ARCode='O'Neil'", 105, "Unclosed quotation mark"},
    {"a commit without begin", "COMMIT TRANSACTION", 3902, "The COMMIT TRANSACTION request has no"},
    {"a word that is no statement",
     "Shutdown",
     102,
     "Incorrect syntax near 'Shutdown'. Statement: Shutdown"},
};

TEST_F(Structure, failuresCarryTheServersNumbersAndTexts) {
    db.execute("Create Table Names (NameID INTEGER NOT NULL, ARCode CHAR(15), LASTNAME CHAR(9));");
    db.execute("Create UNIQUE Index idx_0 On Names(NameID);");
    db.execute("Create UNIQUE CLUSTERED Index idx_1 On Names(ARCode)");
    db.execute("INSERT INTO Names VALUES(1,'SMITH','Smith')");
    db.execute("INSERT INTO Names VALUES(3,'~ROA','Smith')");
    db.execute("INSERT INTO Names VALUES(4,'~ROAL','Adams')");
    for (const auto& [given, statement, number, text] : kFailures) {
        SCOPED_TRACE(given);
        EXPECT_EQ(failure(statement), number);
        EXPECT_EQ(message.substr(0, std::string_view(text).size()), text);
    }
    EXPECT_EQ(first("SELECT COUNT(*) FROM Names"), "3");
}

TEST_F(Structure, anOlderInventoryIsWidened) {
    // Given
    db.execute(
        "Create Table Inventory (SL CHAR (8) NOT NULL, ItemID CHAR (15) NOT NULL DEFAULT ' ', "
        "Flg2 CHAR(1), RecordNum INTEGER)"
    );
    db.execute("Create UNIQUE Index idx_1 On Inventory(SL)");
    db.execute("Create UNIQUE Index idx_2 On Inventory(ItemID)");
    db.execute("INSERT INTO Inventory VALUES('B','  17','N',2)");
    db.execute("INSERT INTO Inventory VALUES('A','18','N',1)");
    ASSERT_EQ(first("SELECT TOP 1 * FROM Inventory", 1), "  17           ");
    // When
    db.execute("ALTER TABLE Inventory ADD BPL3 INTEGER ");
    db.execute("sp_RENAME 'Inventory.Flg2', 'NeverOrder ', 'COLUMN'");
    db.execute("UPDATE Inventory SET NeverOrder = ' '");
    db.execute("Drop index Inventory.idx_2");
    db.execute("ALTER TABLE Inventory ALTER COLUMN itemID CHAR(25)");
    db.execute("Create UNIQUE Index idx_2 On Inventory(ItemID)");
    // Then
    EXPECT_EQ(first("SELECT TOP 1 * FROM Inventory", 1), "  17                     ");
    EXPECT_EQ(first("SELECT SL FROM Inventory WHERE ltrim(ItemID)='17'"), "B       ");
    EXPECT_EQ(db.openRowSet("SELECT TOP 1 * FROM Inventory")->fieldName(2), "NeverOrder");
    EXPECT_EQ(failure("INSERT INTO Inventory VALUES('a','x','',3,0)"), 2601);
    EXPECT_EQ(failure("INSERT INTO Inventory VALUES('C','18','',3,0)"), 2601);
    EXPECT_EQ(
        otherProgram("SELECT group_concat(name||' '||type) FROM pragma_table_info('Inventory')"),
        "SL CHAR (8),ItemID CHAR(25),NeverOrder CHAR(1),RecordNum INTEGER,BPL3 INTEGER"
    );
}

TEST_F(Structure, otherProgramsWriteBesideAnOpenConnection) {
    db.execute("Create Table SalesHead (SALEID INTEGER, Invoice CHAR(7), Status CHAR(1) NOT NULL)");
    db.execute("Create UNIQUE Index idx_3 On SalesHead(Invoice)");
    EXPECT_EQ(otherProgram("INSERT INTO SalesHead VALUES(1,'0000001',' '),(2,'~2','C')"), "");
    EXPECT_EQ(
        first("SELECT  TOP 1 * FROM SalesHead WHERE Invoice>'~1' ORDER BY Invoice", 1), "~2     "
    );
    EXPECT_EQ(otherProgram("ALTER TABLE SalesHead ADD COLUMN Extra CHAR(2)"), "");
    EXPECT_EQ(db.openRowSet("SELECT * FROM SalesHead")->fieldCount(), 4);
    EXPECT_EQ(otherProgram("PRAGMA integrity_check"), "ok");
}

TEST_F(Structure, aCatalogOfAnotherProgramsMakingIsPreparedAtOpen) {
    otherProgram("CREATE TABLE Vendors (VendorID INTEGER, VENDCODE CHAR (15) NOT NULL, X TEXT)");
    otherProgram("CREATE TABLE SalesHead (SALEID INTEGER, Invoice CHAR(7))");
    otherProgram("CREATE UNIQUE INDEX code ON Vendors(VENDCODE)");
    otherProgram("INSERT INTO Vendors VALUES(1,'acme','long'),(2,'~X',NULL)");
    db.open(settings());
    EXPECT_EQ(failure("INSERT INTO Vendors VALUES(3,'ACME',NULL)"), 2601);
    EXPECT_EQ(
        message, "Cannot insert duplicate key row in object 'dbo.Vendors' with unique index 'code'."
    );
    EXPECT_EQ(
        otherProgram("SELECT count(*) FROM sqlite_master WHERE name='SalesHead.walk_Invoice'"), "1"
    );
    db.execute("Drop index Vendors.code");
    EXPECT_EQ(failure("INSERT INTO Vendors VALUES(3,'ACME',NULL)"), 0);
}

TEST_F(Structure, transactionsNestAndAClosedConnectionUndoesThem) {
    db.execute("Create Table T (N INTEGER)");
    db.execute("BEGIN TRANSACTION");
    db.execute("BEGIN TRAN");
    db.execute("INSERT INTO T VALUES(1)");
    db.execute("COMMIT TRANSACTION");
    EXPECT_EQ(otherProgram("SELECT count(*) FROM T"), "0");
    db.execute("COMMIT TRANSACTION");
    EXPECT_EQ(otherProgram("SELECT count(*) FROM T"), "1");
    db.execute("BEGIN TRANSACTION");
    db.execute("INSERT INTO T VALUES(2)");
    db.close();
    EXPECT_EQ(otherProgram("SELECT count(*) FROM T"), "1");
    EXPECT_THROW(db.execute("INSERT INTO T VALUES(3)"), platform::PlatformError);
}

TEST_F(Structure, aLockOfAnotherConnectionIsAnError) {
    db.execute("Create Table T (N INTEGER)");
    platform::SqliteConnection other([this] { return folder.str(); });
    other.open(settings());
    other.execute("BEGIN TRANSACTION");
    EXPECT_EQ(failure("INSERT INTO T VALUES(1)"), 1222);
    EXPECT_EQ(first("SELECT COUNT(*) FROM T"), "0");
    other.execute("COMMIT TRANSACTION");
    EXPECT_EQ(failure("INSERT INTO T VALUES(1)"), 0);
}

/// Inserts a hundred rows through a connection of its own; false when one failed.
bool insertHundred(const std::string& folder, int first) {
    platform::SqliteConnection db([folder] { return folder; });
    try {
        db.open({25, "embedded", "NUVDATA1", "", "", false});
        for (int row = first; row < first + 100; ++row) {
            db.execute("INSERT INTO T VALUES(" + std::to_string(row) + ")");
        }
    } catch (const platform::PlatformError&) {
        return false;
    }
    return true;
}

TEST_F(Structure, twoProcessesWriteAtOnce) {
    db.execute("Create Table T (N INTEGER)");
    db.execute("Create Unique Index idx_0 On T(N)");
    db.close();
    const pid_t child = fork();
    if (child == 0) {
        _exit(insertHundred(folder.str(), 0) ? 0 : 1);
    }
    EXPECT_TRUE(insertHundred(folder.str(), 100));
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(otherProgram("SELECT count(*) FROM T"), "200");
}

}  // namespace
