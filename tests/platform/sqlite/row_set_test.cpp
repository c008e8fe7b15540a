#include "store.h"
#include "support/counting_connection.h"

using util::Money;
using util::Value;

namespace {

class Rows : public Store {
protected:
    Rows() {
        db.execute("Create Table Vendors (VendorID INTEGER NOT NULL, VENDCODE CHAR (15) NOT NULL, "
                   "BALANCE DECIMAL(18,2), Flag CHAR(1) NOT NULL)");
        db.execute("Create UNIQUE Index idx_0 On Vendors(VendorID)");
        db.execute("Create UNIQUE CLUSTERED Index idx_1 On Vendors(VENDCODE)");
        db.execute("INSERT INTO Vendors VALUES(1,'ACME',1.10,'A')");
        db.execute("INSERT INTO Vendors VALUES(2,'BETA',2.20,'A')");
        db.execute("INSERT INTO Vendors VALUES(3,'GAMMA',NULL,'A')");
    }

    static std::int32_t errorOf(const std::function<void()>& step) {
        try {
            step();
        } catch (const platform::PlatformError& error) {
            return error.number();
        }
        return 0;
    }

    std::unique_ptr<platform::RowSet> vendor(int id) {
        return db.openRowSet(
            "SELECT TOP 1 * FROM Vendors WHERE VendorID='" + std::to_string(id) + "'"
        );
    }
};

TEST_F(Rows, walkAndTellTheirColumns) {
    const auto rows = db.openRowSet("SELECT * FROM Vendors ORDER BY VendorID DESC");
    EXPECT_EQ(rows->recordCount(), 3);
    EXPECT_EQ(rows->fieldCount(), 4);
    EXPECT_EQ(rows->fieldName(1), "VENDCODE");
    std::string walked;
    for (rows->moveFirst(); !rows->atEnd(); rows->moveNext()) {
        walked += text(rows->value(0));
    }
    EXPECT_EQ(walked, "321");
    EXPECT_EQ(errorOf([&] { static_cast<void>(rows->value(0)); }), platform::kNoCurrentRowError);
    EXPECT_EQ(errorOf([&] { rows->moveNext(); }), platform::kNoCurrentRowError);
    rows->moveFirst();
    EXPECT_EQ(errorOf([&] { static_cast<void>(rows->value(4)); }), platform::kNoSuchFieldError);
    EXPECT_EQ(db.openRowSet("UPDATE Vendors SET Flag = 'A'")->fieldCount(), 0);
}

TEST_F(Rows, sendOnlyWhatChanged) {
    // Given: a row in hand, and another station that changes a column of it
    const auto rows = vendor(1);
    db.execute("UPDATE Vendors SET BALANCE = 7 WHERE VendorID=1");
    // When
    rows->setValue(1, Value(std::string("ACME           ")));
    rows->setValue(3, Value(std::string("B")));
    rows->update();
    // Then
    EXPECT_EQ(first("SELECT Flag FROM Vendors WHERE VendorID=1"), "B");
    EXPECT_EQ(first("SELECT BALANCE FROM Vendors WHERE VendorID=1"), "raw 70000");
    rows->setValue(3, Value(std::string("C")));
    rows->update();
    EXPECT_EQ(first("SELECT Flag FROM Vendors WHERE VendorID=1"), "C");
}

TEST_F(Rows, areFoundByKeyAndOldValues) {
    struct Case {
        const char* given;
        const char* statement;  ///< of another station
        bool isFound;
    };
    static constexpr Case kCases[] = {
        {"the changed column was changed", "UPDATE Vendors SET Flag = 'X' WHERE VendorID=2", false},
        {"the key was changed", "UPDATE Vendors SET VendorID = 9 WHERE VendorID=2", false},
        {"the row is gone", "DELETE FROM Vendors WHERE VendorID=2", false},
        {"another column was changed", "UPDATE Vendors SET BALANCE = 5 WHERE VendorID=2", true},
    };
    for (const auto& [given, statement, isFound] : kCases) {
        SCOPED_TRACE(given);
        db.execute("DELETE FROM Vendors WHERE VENDCODE='BETA'");
        db.execute("INSERT INTO Vendors VALUES(2,'BETA',2.20,'A')");
        const auto rows = vendor(2);
        db.execute(statement);
        rows->setValue(3, Value(std::string("B")));
        try {
            rows->update();
            EXPECT_TRUE(isFound);
        } catch (const platform::PlatformError& error) {
            EXPECT_FALSE(isFound);
            EXPECT_EQ(error.number(), platform::kRowChangedError);
            EXPECT_EQ(
                error.description(),
                "Row cannot be located for updating. Some values may "
                "have been changed since it was last read."
            );
        }
    }
    // A row that was written anew under its key is the same row.
    const auto rows = vendor(3);
    db.execute("DELETE FROM Vendors WHERE VendorID=3");
    db.execute("INSERT INTO Vendors VALUES(8,'OMEGA',NULL,'A')");
    db.execute("INSERT INTO Vendors VALUES(3,'GAMMA',NULL,'A')");
    rows->setValue(2, Value(Money::fromWhole(4)));
    rows->update();
    EXPECT_EQ(first("SELECT BALANCE FROM Vendors WHERE VendorID=3"), "raw 40000");
    EXPECT_EQ(first("SELECT BALANCE FROM Vendors WHERE VendorID=8"), "(none)");
}

TEST_F(Rows, refuseWhatTheColumnRefuses) {
    const auto rows = vendor(1);
    EXPECT_EQ(errorOf([&] { rows->setValue(3, Value(std::string("LONG"))); }), 8152);
    rows->setValue(3, Value());
    EXPECT_EQ(errorOf([&] { rows->update(); }), 515);
    const auto twin = vendor(2);
    twin->setValue(1, Value(std::string("acme")));
    EXPECT_EQ(errorOf([&] { twin->update(); }), 2601);
    const auto counted = db.openRowSet("SELECT COUNT(*) FROM Vendors");
    counted->setValue(0, Value(std::int64_t{1}));
    EXPECT_EQ(errorOf([&] { counted->update(); }), 3251);
    db.close();
    EXPECT_EQ(text(twin->value(0)), "2");
    EXPECT_EQ(errorOf([&] { twin->update(); }), 3704);
}

TEST_F(Rows, deleteTheCurrentRowAndGoOn) {
    const auto rows = db.openRowSet("SELECT * FROM Vendors ORDER BY VendorID");
    rows->moveNext();
    rows->remove();
    EXPECT_EQ(errorOf([&] { static_cast<void>(rows->value(0)); }), platform::kNoCurrentRowError);
    rows->moveNext();
    EXPECT_EQ(text(rows->value(0)), "3");
    rows->remove();
    rows->moveNext();
    EXPECT_TRUE(rows->atEnd());
    EXPECT_EQ(first("SELECT COUNT(*) FROM Vendors"), "1");
}

TEST_F(Rows, amongEqualOnesTheOldestComesFirst) {
    db.execute("Create Index idx_2 On Vendors(Flag)");
    EXPECT_EQ(first("SELECT TOP 1 * FROM Vendors WHERE Flag>='A' ORDER BY Flag"), "1");
    EXPECT_EQ(first("SELECT TOP 1 * FROM Vendors WHERE Flag<='A' ORDER BY Flag DESC"), "3");
}

}  // namespace
