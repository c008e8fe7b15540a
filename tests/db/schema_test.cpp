#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"
#include "db/connection.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_Notes.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "db/nuvDBSM_Vendors.h"
#include "db/record_fields.h"
#include "db/store_fixture.h"
#include "support/expected_file.h"
#include "util/conversions.h"

#include <algorithm>

namespace {

constexpr std::int16_t kHighestKey = 13;
constexpr std::string_view kQuestionColumns =
    ", ResetQ1 SMALLINT NOT NULL, QA1 CHAR (20) DEFAULT ' ', ResetQ2 SMALLINT NOT NULL, QA2 CHAR "
    "(20) DEFAULT ' ', ResetQ3 SMALLINT NOT NULL, QA3 CHAR (20) DEFAULT ' '";

class Schema : public StoreTest {
protected:
    /// The create text of a bound table in an older layout.
    static void makeOlder(
        std::int16_t table,
        const std::vector<std::pair<std::string_view, std::string_view>>& replacements
    ) {
        TableDescriptor& descriptor = DBTableDescriptors[table];
        execute("DROP TABLE " + descriptor.TableName);
        const std::string create = descriptor.CreateSQL;
        for (const auto& [from, to] : replacements) {
            ASSERT_NE(descriptor.CreateSQL.find(from), std::string::npos) << from;
            descriptor.CreateSQL = util::replaceAll(descriptor.CreateSQL, from, to);
        }
        gfbDB_CreateTable(table);
        descriptor.CreateSQL = create;
    }
    /// Statements of the watch that change the catalog or its rows.
    [[nodiscard]] std::vector<std::string> changes() const {
        return watch.beginningWith(
            {"Create", "ALTER", "UPDATE", "sp_RENAME", "Drop", "INSERT", "DELETE"}
        );
    }
    /// The keys of a bound table, a line for each.
    static std::string keys(std::int16_t table) {
        const std::vector<std::string> names = db::columnNames(DBTableDescriptors[table].TableName);
        std::string text;
        for (std::int16_t key = 0; key <= kHighestKey; ++key) {
            std::int16_t& parts = DBTableDescriptors[table].KeyParts;
            parts = 0;
            db_pRecordKey_prepare(table, key);
            text += parts == 0 ? "" : "key " + std::to_string(key) + ":";
            for (std::int16_t part = 0; part < parts; ++part) {
                const auto ordinal =
                    static_cast<std::size_t>(DBKeyFields.at(static_cast<std::size_t>(part)));
                const bool isColumn = ordinal < names.size();
                text += " " + (isColumn ? names[ordinal] : std::to_string(ordinal));
            }
            text += parts == 0 ? "" : "\n";
        }
        return text;
    }
    static std::string lines(const std::vector<std::string>& statements) {
        std::string text;
        for (const std::string& statement : statements) {
            text += statement + "\n";
        }
        return text;
    }
    static std::string columns(const std::string& table) {
        std::string text;
        for (const std::string& name : db::columnNames(table)) {
            text += name + " ";
        }
        return text;
    }
};

INSTANTIATE_TEST_SUITE_P(Store, Schema, ::testing::ValuesIn(storeAdapters()), adapterName);

TEST_P(Schema, textsAreTheTablesOwn) {
    openStore();
    db::bindNotes();
    std::string text;
    constexpr std::int16_t kTables[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 99};
    for (const std::int16_t table : kTables) {
        const TableDescriptor& descriptor = DBTableDescriptors[table];
        text += descriptor.TableUpper + "\n" + descriptor.CreateSQL + "\n" +
                util::replaceAll(descriptor.IndexSQL, ";", ";\n") + keys(table);
    }
    testing_support::expectFile("db/schema.txt", text);
}

TEST_P(Schema, isMadeAtTheFirstStartAndLeftAloneAtTheSecond) {
    openStore();
    EXPECT_EQ(gsStoreNumber, "3");
    EXPECT_TRUE(desktop.boxes.empty());
    // What follows the last index statement is no statement.
    EXPECT_EQ(std::count(watch.statements.begin(), watch.statements.end(), ""), 0);
    endProgram();
    watch.statements.clear();
    ASSERT_NE(db_fbInterface_open(), kNo);
    ASSERT_NE(db_fbAllTables_open(), kNo);
    EXPECT_EQ(changes(), std::vector<std::string>());
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Schema, opensNothingElseWhenCommonHasNoRow) {
    connect();
    EXPECT_NE(db_fbInterface_open(), kNo);
    EXPECT_EQ(DBTableDescriptors[db::tableInventory].TableName, "");
    EXPECT_EQ(db_fbAllTables_open(), kNo);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Schema, ofAnOlderInventoryIsBroughtUpToDateOnce) {
    // Given
    openStore();
    makeOlder(
        db::tableInventory,
        {{"ItemID CHAR (25)", "ItemID CHAR (15)"},
         {"PriceFactor CHAR(6)", "Spare1 CHAR(6)"},
         {"NotUsed CHAR (1)", "PriceFactor CHAR (6)"},
         {"NeverOrder", "Flg2"},
         {", PenLiqorUnit SMALLINT DEFAULT 0, BPL3 INTEGER DEFAULT 0", ""}}
    );
    execute("INSERT INTO Inventory (SL, ItemID, RecordNum, PriceFactor) "
            "VALUES('0001', 'LONG-CODE', 1, 'F')");
    endProgram();
    watch.statements.clear();
    // When
    ASSERT_NE(db_fbInterface_open(), kNo);
    // Then
    testing_support::expectFile("db/inventory_upgrade.txt", lines(changes()));
    ASSERT_NE(db_fbAllTables_open(), kNo);
    EXPECT_EQ(gfiDB_FieldCount(db::tableInventory), 57);
    EXPECT_EQ(gfvDB_GetFieldName(db::tableInventory, 16), "NotUsed");
    EXPECT_EQ(gfvDB_GetFieldName(db::tableInventory, 47), "NeverOrder");
    EXPECT_EQ(gfvDB_GetFieldName(db::tableInventory, 50), "PriceFactor");
    EXPECT_EQ(db::statementText(gfvDB_GetField(db::tableInventory, 1)).size(), 25U);
    EXPECT_EQ(query("SELECT PriceFactor FROM Inventory").substr(0, 1), "F");

    endProgram();
    watch.statements.clear();
    desktop.boxes.clear();
    ASSERT_NE(db_fbInterface_open(), kNo);
    EXPECT_EQ(changes(), std::vector<std::string>());
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Schema, ofOlderNamesAndSalesCodesIsBroughtUpToDate) {
    openStore();
    makeOlder(db::tableNames, {{"LayawayBalance", "ConSalesTotal"}});
    makeOlder(db::tableSalesCode, {{kQuestionColumns, ""}});
    execute("INSERT INTO Names (NameID, ARCode, ConSalesTotal) VALUES(1, 'A', 5)");
    execute("INSERT INTO SalesCode (UserID, SalesCode, StoreNumber) VALUES(1, 'A', 1)");
    endProgram();
    watch.statements.clear();
    ASSERT_NE(db_fbInterface_open(), kNo);
    EXPECT_TRUE(desktop.boxes.empty());
    testing_support::expectFile("db/names_upgrade.txt", lines(changes()));
    EXPECT_TRUE(columns("SalesCode").ends_with("Status ResetQ1 QA1 ResetQ2 QA2 ResetQ3 QA3 "));
    EXPECT_EQ(query("SELECT ResetQ3 FROM SalesCode"), "0");
    EXPECT_EQ(db::moneyFrom(query("SELECT LayawayBalance FROM Names")), util::Money());
    EXPECT_FALSE(db::hasColumn("Vendor", "COUNTRY"));
    EXPECT_TRUE(db::hasColumn("vendor", "expensecd"));
}

TEST_P(Schema, ofOlderSalesCodesWithoutRowsHasNoAnswersToFill) {
    openStore();
    makeOlder(db::tableSalesCode, {{kQuestionColumns, ""}});
    watch.statements.clear();
    db::bindSalesCodes();
    ASSERT_EQ(changes().size(), 7U);
    EXPECT_EQ(changes().back(), "UPDATE SalesCode SET resetQ1= 0 ,resetQ2= 0,resetQ3= 0  ");
}

TEST_P(Schema, makesATableThatIsMissingAtItsOpening) {
    openStore();
    execute("DROP TABLE Vendor");
    EXPECT_NE(gfbDB_OpenTable(db::tableVendors), kNo);
    EXPECT_EQ(DBTableDescriptors[db::tableVendors].IsOpen, kYes);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Schema, leavesATableAloneThatOnlyTheConnectionKnows) {
    openStore();
    execute("DELETE FROM TenderTypes WHERE TenderID > 5");
    folder.write("program/DefaultSalesCodes.txt", "1|HOUSE|1|H\r\n");
    DBServerSession.reset();
    watch.statements.clear();
    db::bindTenderTypes();
    db::bindSalesCodes();
    EXPECT_EQ(changes(), std::vector<std::string>());
}

struct OpenFailure {
    const char* given;
    platform::PlatformError error;
    std::vector<std::string> boxes;
};

TEST_P(Schema, tellsWhyATableDoesNotOpen) {
    openStore();
    const OpenFailure cases[] = {
        {"the file of the table is not known", {3078, "no such file"}, {}},
        {"another error", {4, "disk on fire"}, {"4    Open Table Error    disk on fire"}},
        {"the table stays unknown",
         {208, "Invalid object name 'Names'."},
         {"208    Open Table Error    Invalid object name 'Names'."}},
    };
    for (const auto& [given, error, boxes] : cases) {
        SCOPED_TRACE(given);
        desktop.boxes.clear();
        watch.failures = {
            {"SELECT TOP 1 * FROM Names", error}, {"SELECT TOP 1 * FROM nuv.Names", error}};
        EXPECT_EQ(gfbDB_OpenTable(db::tableNames), kNo);
        EXPECT_EQ(DBTableDescriptors[db::tableNames].IsOpen, kNo);
        EXPECT_EQ(desktop.boxTexts(), boxes);
    }
}

TEST_P(Schema, addsAColumnAndSaysSoTheOtherWayRound) {
    openStore();
    EXPECT_EQ(gfbDB_AddColumn(db::tableNames, "Extra", "SMALLINT"), kNo);
    EXPECT_TRUE(db::hasColumn("Names", "extra"));
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(gfbDB_AddColumn(db::tableNames, "Extra", "SMALLINT"), kYes);
    EXPECT_EQ(desktop.boxes.size(), 1U);
    // An error number whose low word is 0 passes for none.
    watch.failures = {{"ALTER TABLE Names", {-2147221504, "odd"}}};
    EXPECT_EQ(gfbDB_AddColumn(db::tableNames, "More", "SMALLINT"), kNo);
    desktop.boxes.pop_back();
    EXPECT_EQ(gfbDB_RenameColumn("Names", "NoSuch", "Other"), kNo);
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

TEST_P(Schema, ofTheHubHasNamesOfItsOwn) {
    openStore();
    constexpr std::int16_t kHubTable = 20;
    db::bindSalesItem(kHubTable, "SalesHubItem");
    const TableDescriptor& descriptor = DBTableDescriptors[kHubTable];
    EXPECT_EQ(descriptor.TableUpper, "SALEHUBITEM");
    EXPECT_TRUE(descriptor.FileName.ends_with("\\SaleItemHub.NUV"));
    EXPECT_TRUE(descriptor.CreateSQL.starts_with("Create Table SalesHubItem (SaleID INTEGER"));
    EXPECT_NE(gfbDB_TableExists(descriptor), kNo);
    EXPECT_EQ(DBTableDescriptors[db::tableSalesItem].TableName, "SalesItem");
    db::bindSalesHead(kHubTable, "SalesHubHead");
    EXPECT_EQ(descriptor.TableUpper, "SALESHUBHEAD");
    EXPECT_TRUE(descriptor.IndexSQL.starts_with("Create UNIQUE Index idx_0 On SalesHubHead (STORE")
    );
}

TEST_P(Schema, takesFirstSalesCodesFromTheProgramsFile) {
    folder.write(
        "program/DefaultSalesCodes.txt",
        "1|HOUSE|1| H |House\r\n3|FAR|99999|F\r\n\r\n2|D'ARCY|1|D\r\n2|TWICE|1|T\r\n"
    );
    openStore();
    EXPECT_EQ(
        desktop.boxTexts(),
        std::vector<std::string>{"DefaultSalesCodes.txt: Overflow\r\n3|FAR|99999|F"}
    );
    std::string name = "SalesCode";
    EXPECT_EQ(gfiDB_RecordCount(db::tableSalesCode, name), 2);
    gSalesCode.UserID = 1;
    ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opEqual, db::keySalesCodeUserID), kNo);
    EXPECT_EQ(gSalesCode.FullName.trimmed(), "House");
    EXPECT_EQ(gSalesCode.ResetPwdDate, (util::DateTime{36526, 0}));
    gSalesCode.UserID = 2;
    ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opEqual, db::keySalesCodeUserID), kNo);
    EXPECT_EQ(gSalesCode.SalesCode.trimmed(), "D'ARCY");
    EXPECT_EQ(gSalesCode.Permissions.view(), std::string(250, ' '));
}

}  // namespace
