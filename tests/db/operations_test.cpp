#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"
#include "db/clear_record.h"
#include "db/connection.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "db/nuvDBSM_SecurLog.h"
#include "db/record_fields.h"
#include "db/store_fixture.h"

namespace {

class Operations : public StoreTest {
protected:
    void SetUp() override { openStore(); }
};

INSTANTIATE_TEST_SUITE_P(Store, Operations, ::testing::ValuesIn(storeAdapters()), adapterName);

LegacyBool find(const std::string& code) {
    gNames.ARCode = code;
    return gfiDB_Operation(db::tableNames, db::opEqual, db::keyNamesARCode);
}

TEST_P(Operations, writeReadChangeAndDeleteARecord) {
    // Given
    gNames = db::NamesRecord();
    gNames.NameID = 7;
    gNames.ARCode = "ONEIL";
    gNames.BUSINESS = "O'Neil's Books";
    gNames.ADDRESS = "5 King's Road";
    gNames.BALANCE = util::Money::fromRaw(-125000);
    gNames.DISCOUNT = -3;
    ASSERT_NE(gfiDB_Operation(db::tableNames, db::opInsert, 0), kNo);
    EXPECT_EQ(gNames.BUSINESS.trimmed(), "O'Neil's Books");
    // When
    gNames = db::NamesRecord();
    ASSERT_NE(find("oneil"), kNo);
    // Then
    EXPECT_EQ(gNames.NameID, 7);
    EXPECT_EQ(gNames.ARCode.view(), "ONEIL          ");
    EXPECT_EQ(gNames.BUSINESS.trimmed(), "O'Neil's Books");
    EXPECT_EQ(gNames.ADDRESS.trimmed(), "5 King s Road");
    EXPECT_EQ(gNames.BALANCE.text(2), "-12.50");
    EXPECT_EQ(gNames.DISCOUNT, -3);
    EXPECT_EQ(gNames.CITY.view(), std::string(20, ' '));

    gNames.CITY = "Ogden";
    gNames.BALANCE = util::Money::fromWhole(3);
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opUpdate, 0), kNo);
    EXPECT_EQ(query("SELECT CITY FROM Names WHERE NameID=7").substr(0, 5), "Ogden");

    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opDelete, 0), kNo);
    EXPECT_EQ(find("ONEIL"), kNo);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Operations, refuseADuplicateKeyInSilence) {
    addName(1, "SMITH", "Smith");
    gNames.ARCode = "smith";
    gNames.NameID = 2;
    EXPECT_EQ(gfiDB_Operation(db::tableNames, db::opInsert, 0), kNo);
    std::string name;
    EXPECT_EQ(gfiDB_RecordCount(db::tableNames, name), 1);
    EXPECT_EQ(name, "Names");
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(fileText("PVSW.log"), "");
}

TEST_P(Operations, passOnTheConflictOfAnUpdate) {
    addName(1, "SMITH", "Smith");
    ASSERT_NE(find("SMITH"), kNo);
    execute("UPDATE Names SET CITY='Elsewhere' WHERE NameID=1");
    gNames.CITY = "Ogden";
    try {
        gfiDB_Operation(db::tableNames, db::opUpdate, 0);
        FAIL() << "the other station's change is lost";
    } catch (const platform::PlatformError& error) {
        EXPECT_EQ(error.number(), platform::kRowChangedError);
        EXPECT_EQ(
            error.description(),
            "Row cannot be located for updating. Some values may have been changed since it was "
            "last read."
        );
    }
}

TEST_P(Operations, leaveTheRecordAloneWhenNothingIsFound) {
    addName(1, "ADAMS", "Adams");
    addName(2, "ZULU", "Zulu");
    ASSERT_NE(find("ZULU"), kNo);
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(gfiDB_Operation(db::tableNames, db::opGetNext, db::keyNamesARCode), kNo);
        EXPECT_EQ(gNames.ARCode.trimmed(), "ZULU");
        EXPECT_EQ(db::statementText(gfvDB_GetField(db::tableNames, 1)), "ADAMS          ");
    }
    // A deleted row still marks the place.
    execute("DELETE FROM Names WHERE NameID=2");
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opGetPrevious, db::keyNamesARCode), kNo);
    EXPECT_EQ(gNames.ARCode.trimmed(), "ADAMS");
}

TEST_P(Operations, thatMeanNothingSucceedWithoutAStatement) {
    watch.statements.clear();
    DBTableDescriptors[db::tableNames].OperationFlag = 5;
    constexpr std::int16_t kOperations[] = {0, 1, 14, 19, 20, 21, 99, -3};
    for (const std::int16_t operation : kOperations) {
        EXPECT_EQ(gfiDB_Operation(db::tableNames, operation, 0), kYes) << operation;
    }
    EXPECT_TRUE(watch.statements.empty());
    EXPECT_EQ(DBTableDescriptors[db::tableNames].OperationFlag, 0);
    EXPECT_EQ(db::operationName(35), "Get Previous");
    EXPECT_EQ(db::operationName(14), "");
}

TEST_P(Operations, ofAKeyWithAnOrdinalBeyondTheRowGiveItsError) {
    addName(1, "ADAMS", "Adams");
    constexpr std::int16_t kKeyOfCity = 6;
    try {
        gfiDB_Operation(db::tableNames, db::opEqual, kKeyOfCity);
        FAIL() << "found by a column that is not there";
    } catch (const platform::PlatformError& error) {
        EXPECT_EQ(error.number(), platform::kNoSuchFieldError);
    }
}

TEST_P(Operations, onTheRowLeaveKeyAndRecordAlone) {
    addName(1, "ADAMS", "Adams");
    addName(2, "ZULU", "Zulu");
    ASSERT_NE(find("ZULU"), kNo);
    watch.statements.clear();
    constexpr std::int16_t kServersOrder = -1;
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opGetFirst, kServersOrder, kYes), kNo);
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opGetLast, kServersOrder, kYes), kNo);
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opGetPrevious, db::keyNamesARCode, kYes), kNo);
    const std::string statement = "SELECT * FROM Names WHERE NameID=1";
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opBySQL, 0, kNo, kNo, statement), kNo);
    const std::vector<std::string> sent = {
        "SELECT TOP 1 * FROM Names",
        "SELECT TOP 1 * FROM Names ORDER BY NameID DESC",
        "SELECT  TOP 1 * FROM Names WHERE ARCode<'ZULU           ' ORDER BY ARCode DESC",
        statement,
    };
    EXPECT_EQ(watch.statements, sent);
    EXPECT_EQ(db::longFrom(gfvDB_GetField(db::tableNames, "NameID")), 1);
    EXPECT_EQ(gNames.NameID, 2);

    gNames.CITY = "Austin";
    gpDB_SetField(db::tableNames, "BUSINESS", std::string("O'Neil"));
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opUpdate, 0, kYes), kNo);
    EXPECT_EQ(query("SELECT CITY FROM Names WHERE NameID=1").substr(0, 1), " ");
    constexpr std::int16_t kBusiness = 2;
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opEqual, kBusiness, kYes), kNo);
    EXPECT_TRUE(watch.last().starts_with("SELECT TOP 1 * FROM Names WHERE BUSINESS='O''Neil "));

    DBKeyAlways = kYes;
    gfiDB_Operation(db::tableNames, db::opEqual, kBusiness, kYes);
    EXPECT_EQ(DBTableDescriptors[db::tableNames].KeyParts, 3);
}

TEST_P(Operations, ofAConversionKeepRowsThatCannotBeInserted) {
    addName(1, "SMITH", "Smith");
    DBConvertRun = kYes;
    EXPECT_NE(gfiDB_Operation(db::tableNames, db::opInsert, 0), kNo);
    EXPECT_EQ(DBInsertErrors, 1);
    EXPECT_TRUE(fileText("program/InsertErr.txt").starts_with("INSERT INTO Names VALUES(1,'SMITH"));
}

TEST_P(Operations, fillItemCodesWithoutLeadingBlanks) {
    watch.statements.clear();
    gfiDB_Operation(db::tableInventory, db::opLessEqual, db::keyInventoryItemID);
    const std::string blanks(25, ' ');
    EXPECT_EQ(
        watch.statements.front(),
        "SELECT TOP 1 * FROM Inventory WHERE ltrim(ItemID)<='" + blanks +
            "' ORDER BY ltrim(ItemID) DESC"
    );
    watch.statements.clear();
    gfiDB_Operation(db::tableInventory, db::opGetNext, db::keyInventoryItemID);
    EXPECT_EQ(
        watch.statements.front(),
        "SELECT  TOP 1 * FROM Inventory WHERE ItemID>'" + blanks + "' ORDER BY ItemID"
    );
}

TEST_P(Operations, readReservedItemsAndLinesOfASale) {
    gInventory = db::clearedInventory();
    gInventory.SL = "~ROA";
    gInventory.RecordNum = 2;
    ASSERT_NE(gfiDB_Operation(db::tableInventory, db::opInsert, 0), kNo);
    gInventory = db::InventoryRecord();
    EXPECT_NE(gfbInventory_ReservedRead(2), kNo);
    EXPECT_EQ(gInventory.RecordNum, 2);
    EXPECT_EQ(gfbInventory_ReservedRead(3), kNo);
    EXPECT_EQ(gfbInventory_ReservedRead(12), kNo);
    EXPECT_NE(gfbInventory_ReadByRecordNum(2), kNo);

    for (const std::int64_t line : {1, 2, 4}) {
        gSalesItem = db::SalesItemRecord();
        gSalesItem.SaleID = 9;
        gSalesItem.LineNum = util::Money::fromWhole(line);
        gSalesItem.InvUID = static_cast<std::int32_t>(line);
        ASSERT_NE(gfiDB_Operation(db::tableSalesItem, db::opInsert, 0), kNo);
    }
    std::int32_t line = 1;
    while (db::readSalesItem(9, line)) {
        EXPECT_EQ(gSalesItem.InvUID, line);
        ++line;
    }
    EXPECT_EQ(line, 3);
}

TEST_P(Operations, walkTheRowsOfAStatement) {
    EXPECT_NE(gfbTenderTypes_ReadAll(), kNo);
    std::string tenders;
    for (; !db::atEnd(db::tableTenderTypes); db::moveNext(db::tableTenderTypes)) {
        db_pRecord_fromRow(db::tableTenderTypes);
        tenders += gTenderTypes.Description.trimmed() + gTenderTypes.Drawer.trimmed() + " ";
    }
    EXPECT_EQ(
        tenders,
        "On AccountN CashY CheckN Master CardN VisaN DiscoverN AMEXN DebitN Layaway AccountN "
        "Other Credit CardN "
    );
    EXPECT_EQ(gfbSalesHead_ReadByInvoice("O'1"), kNo);
    EXPECT_TRUE(desktop.boxes.empty());

    gSalesHead = db::SalesHeadRecord();
    gSalesHead.SALEID = 5;
    gSalesHead.Invoice = "0001001";
    ASSERT_NE(gfiDB_Operation(db::tableSalesHead, db::opInsert, 0), kNo);
    gSalesHead = db::SalesHeadRecord();
    EXPECT_NE(gfbSalesHead_ReadByInvoice("0001001"), kNo);
    EXPECT_EQ(gSalesHead.SALEID, 5);
}

TEST_P(Operations, tellAFailedStatementInLogAndBox) {
    const std::string statement = "SELECT * FROM NoSuchTable";
    EXPECT_EQ(gfbDB_OpenBySQL(statement, db::tableNames), kNo);
    EXPECT_EQ(gfiDB_ExecuteSQL("UPDATE NoSuchTable SET A = 1"), 208);
    EXPECT_EQ(DBFailureKind, 3);
    ASSERT_EQ(desktop.boxes.size(), 2U);
    EXPECT_EQ(
        desktop.boxes[0].text,
        "An error occurred in executing SQL. View PVSW.log in datapath for details."
    );
    const std::string log = fileText("PVSW.log");
    EXPECT_NE(
        log.find(" [EXE FAIL]208 Description: Invalid object name 'NoSuchTable'. Source: "),
        std::string::npos
    ) << log;
    EXPECT_NE(log.find("\r\n" + statement + "\r\n"), std::string::npos) << log;
}

TEST_P(Operations, appendToTheSecurityTrail) {
    for (const std::int32_t id : {1, 2, 10}) {
        gLogInSec = db::LogInSecRecord();
        gLogInSec.SalesCode = "H";
        gLogInSec.aDate = util::DateTime{40000 + id, 3661};
        gLogInSec.aTime = gLogInSec.aDate;
        gLogInSec.ID = id;
        ASSERT_NE(gfiDB_Operation(db::tableLogInSec, db::opInsert, 0), kNo);
    }
    gpDB_SetKey(db::tableLogInSec, 1, {{5, std::int64_t{0}}});
    ASSERT_NE(gfiDB_Operation(db::tableLogInSec, db::opGetLast, 0, kYes), kNo);
    EXPECT_EQ(db::longFrom(gfvDB_GetField(db::tableLogInSec, "ID")), 10);
    EXPECT_EQ(
        db::momentFrom(gfvDB_GetField(db::tableLogInSec, "aTime")), (util::DateTime{40010, 3661})
    );
}

struct SetFieldCase {
    const char* given;
    util::Value present;
    util::Value value;
    bool isSent;
};

TEST_P(Operations, sendOnlyFieldsThatChanged) {
    const std::string city = "Ogden               ";
    const SetFieldCase cases[] = {
        {"the same text", city, city, false},
        {"the same text without its padding", city, std::string("Ogden"), false},
        {"another text", city, std::string("Austin"), true},
        {"a blank text over one", city, std::string("  "), true},
        {"a date, whatever the column holds", city, std::string("12/5/2024"), true},
        {"no value", city, util::Value(), true},
    };
    addName(1, "ADAMS", "Adams");
    execute("UPDATE Names SET CITY='Ogden' WHERE NameID=1");
    for (const auto& [given, present, value, isSent] : cases) {
        SCOPED_TRACE(given);
        ASSERT_NE(find("ADAMS"), kNo);
        ASSERT_EQ(gfvDB_GetField(db::tableNames, "CITY"), present);
        gpDB_SetField(db::tableNames, "CITY", value);
        EXPECT_EQ(gfvDB_GetField(db::tableNames, "CITY") != present, isSent);
    }
}

TEST_P(Operations, withoutARowTakeDatesOnly) {
    EXPECT_EQ(gfbDB_GetBySQL(db::tableNames, "SELECT * FROM Names"), kNo);
    gpDB_SetField(db::tableNames, "CITY", std::string("Ogden"));
    EXPECT_THROW(
        gpDB_SetField(db::tableNames, "CITY", std::string("12/5/2024")), platform::PlatformError
    );
}

TEST_P(Operations, tellAnErrorUnlessItIsNoNews) {
    const std::string box = "Table: NAMES\rOperation:   GET NEXT\rError:    [7] Out of memory\r";
    EXPECT_EQ(gfbDB_ReportError(db::tableNames, db::opGetNext, {7, "Out of memory"}), kYes);
    for (const std::int32_t number : {3021, 3022, 3167}) {
        EXPECT_EQ(gfbDB_ReportError(db::tableNames, db::opOpen, {number, "no row"}), kNo);
    }
    EXPECT_EQ(desktop.boxTexts(), std::vector<std::string>{box});
    EXPECT_EQ(desktop.boxes[0].title, "NUV MS Data Engine");

    DBQuietErrors = kYes;  // an open is told all the same
    EXPECT_EQ(gfbDB_ReportError(db::tableNames, db::opUpdate, {7, "Out of memory"}), kYes);
    EXPECT_EQ(gfbDB_ReportError(db::tableNames, db::opOpen, {7, "Out of memory"}), kYes);
    EXPECT_EQ(desktop.boxes.size(), 2U);
}

struct QuoteCase {
    const char* given;
    std::string value;
    std::string doubled;
    std::string blanked;
};

TEST(QuoteKey, makesTextsSafeInAStatement) {
    const QuoteCase cases[] = {
        {"no quote", "Smith ", "Smith ", "Smith "},
        {"one quote", "O'Neil", "O''Neil", "O Neil"},
        {"several quotes", "'a'b'", "''a''b''", " a b "},
        {"two side by side are clean already", "O''Neil's", "O''Neil's", "O''Neil's"},
        {"a field that was never filled", std::string("a\0'b", 4), "    ", "    "},
        {"nothing", "", "", ""},
    };
    for (const auto& [given, value, doubled, blanked] : cases) {
        SCOPED_TRACE(given);
        EXPECT_EQ(gfsDB_QuoteKey(value, kYes), doubled);
        EXPECT_EQ(gfsDB_QuoteKey(value, kNo), blanked);
        EXPECT_EQ(gfsDB_QuoteKey(gfsDB_QuoteKey(value, kYes), kYes), doubled);
    }
}

TEST(InsertValues, holdTextsInQuotesAndNumbersBare) {
    db::resetEngine();
    gSalesCode.UserID = 4;
    gSalesCode.SalesCode = "D'Arcy";
    gSalesCode.ResetPwdDate = util::DateTime{36526, 0};
    const std::string values = db_fsRecord_values(db::tableSalesCode);
    EXPECT_EQ(values.substr(0, 20), "4,'D''Arcy  ',0,'   ");
    EXPECT_NE(values.find("','20000101 00:00:00',' ',0,'"), std::string::npos) << values;
    gSalesCode.ResetPwdDate.reset();
    EXPECT_NE(db_fsRecord_values(db::tableSalesCode).find("',NULL,' ',0,'"), std::string::npos);
    EXPECT_EQ(db_fsRecord_values(50), "");
}

}  // namespace
