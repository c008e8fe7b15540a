#include "store.h"

namespace {

using Structure = Store;

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
    EXPECT_EQ(failure("COMMIT TRANSACTION"), 3902) << message;
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

}  // namespace
