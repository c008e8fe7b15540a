#include "each_store.h"

using util::Money;
using util::Value;

namespace {

class Rows : public EachStore {
protected:
    Rows() {
        execute("Create Table Vendors (VendorID INTEGER NOT NULL, VENDCODE CHAR (15) NOT NULL, "
                "BALANCE DECIMAL(18,2), Flag CHAR(1) NOT NULL)");
        execute("Create UNIQUE Index idx_0 On Vendors(VendorID)");
        execute("Create UNIQUE CLUSTERED Index idx_1 On Vendors(VENDCODE)");
        execute("INSERT INTO Vendors VALUES(1,'ACME',1.10,'A')");
        execute("INSERT INTO Vendors VALUES(2,'BETA',2.20,'A')");
        execute("INSERT INTO Vendors VALUES(3,'GAMMA',NULL,'A')");
    }

    std::unique_ptr<platform::RowSet> vendor(int id) {
        return rowsOf("SELECT TOP 1 * FROM Vendors WHERE VendorID='" + std::to_string(id) + "'");
    }
};

INSTANTIATE_TEST_SUITE_P(
    Store, Rows, testing::ValuesIn(testing_support::storeAdapters()), testing_support::adapterName
);

TEST_P(Rows, walkAndTellTheirColumns) {
    const auto rows = rowsOf("SELECT * FROM Vendors ORDER BY VendorID DESC");
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
    EXPECT_EQ(rowsOf("UPDATE Vendors SET Flag = 'A'")->fieldCount(), 0);
}

TEST_P(Rows, sendOnlyWhatChanged) {
    // Given: a row in hand, and another station that changes a column of it
    const auto rows = vendor(1);
    execute("UPDATE Vendors SET BALANCE = 7 WHERE VendorID=1");
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

TEST_P(Rows, areFoundByKeyAndOldValues) {
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
    const auto other = newConnection();
    for (const auto& [given, statement, isFound] : kCases) {
        SCOPED_TRACE(given);
        execute("DELETE FROM Vendors WHERE VENDCODE='BETA'");
        execute("INSERT INTO Vendors VALUES(2,'BETA',2.20,'A')");
        const auto rows = vendor(2);
        other->execute(statement);
        rows->setValue(3, Value(std::string("B")));
        const std::int32_t error = errorOf([&] { rows->update(); });
        EXPECT_EQ(error, isFound ? 0 : platform::kRowChangedError);
        EXPECT_EQ(
            message,
            isFound ? ""
                    : "Row cannot be located for updating. Some values may have been changed "
                      "since it was last read."
        );
    }
    // A row that was written anew under its key is the same row.
    const auto rows = vendor(3);
    execute("DELETE FROM Vendors WHERE VendorID=3");
    execute("INSERT INTO Vendors VALUES(8,'OMEGA',NULL,'A')");
    execute("INSERT INTO Vendors VALUES(3,'GAMMA',NULL,'A')");
    rows->setValue(2, Value(Money::fromWhole(4)));
    rows->update();
    EXPECT_EQ(first("SELECT BALANCE FROM Vendors WHERE VendorID=3"), "raw 40000");
    EXPECT_EQ(first("SELECT BALANCE FROM Vendors WHERE VendorID=8"), "(none)");
}

TEST_P(Rows, refuseWhatTheColumnRefuses) {
    const auto rows = vendor(1);
    EXPECT_EQ(errorOf([&] { rows->setValue(3, Value(std::string("LONG"))); }), 8152);
    rows->setValue(3, Value());
    EXPECT_EQ(errorOf([&] { rows->update(); }), 515);
    const auto twin = vendor(2);
    twin->setValue(1, Value(std::string("acme")));
    EXPECT_EQ(errorOf([&] { twin->update(); }), 2601);
    const auto counted = rowsOf("SELECT COUNT(*) FROM Vendors");
    counted->setValue(0, Value(std::int64_t{1}));
    EXPECT_EQ(errorOf([&] { counted->update(); }), 3251);
    connection->close();
    EXPECT_EQ(text(twin->value(0)), "2");
    EXPECT_EQ(errorOf([&] { twin->update(); }), 3704);
}

TEST_P(Rows, deleteTheCurrentRowAndGoOn) {
    const auto rows = rowsOf("SELECT * FROM Vendors ORDER BY VendorID");
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

TEST_P(Rows, amongEqualOnesTheOldestComesFirst) {
    execute("Create Index idx_2 On Vendors(Flag)");
    EXPECT_EQ(first("SELECT TOP 1 * FROM Vendors WHERE Flag>='A' ORDER BY Flag"), "1");
    EXPECT_EQ(first("SELECT TOP 1 * FROM Vendors WHERE Flag<='A' ORDER BY Flag DESC"), "3");
}

}  // namespace
