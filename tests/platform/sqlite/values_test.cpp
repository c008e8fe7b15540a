#include "store.h"

using util::Money;
using util::Value;

namespace {

class Values : public Store {
protected:
    Values() {
        db.execute(
            "Create Table T (Name CHAR (5), Small SMALLINT, Whole INTEGER, Price DECIMAL(18,2), "
            "Line NUMERIC NOT NULL, Cost DECIMAL (12,4) , Rate REAL, Seen DATETIME, "
            "Reset DATE DEFAULT '12:00:00 AM', Code CHAR(1) NOT NULL DEFAULT ' ')"
        );
    }

    struct Case {
        const char* given;
        const char* column;
        const char* literal;
        std::int32_t error;    ///< 0: none
        const char* expected;  ///< as Store::text shows it, or the error's text
    };

    std::string stored(const Case& row) {
        db.execute("DELETE FROM T");
        const std::string statement =
            std::string("INSERT INTO T (Line,") + row.column + ") VALUES(1," + row.literal + ")";
        EXPECT_EQ(failure(statement), row.error);
        return row.error == 0 ? first(std::string("SELECT ") + row.column + " FROM T") : message;
    }
};

TEST_F(Values, areKeptInTheFormOfTheirColumn) {
    static constexpr Case kCases[] = {
        {"a text is padded", "Name", "'Cash'", 0, "Cash "},
        {"an empty text too", "Name", "''", 0, "     "},
        {"blanks behind the width do not count", "Name", "'Cash!   '", 0, "Cash!"},
        {"a quote and a letter beyond ASCII", "Name", "'O''\xe9'", 0, "O'\xe9  "},
        {"too large a text",
         "Small",
         "'32768'",
         244,
         "The conversion of the varchar value '32768' overflowed an INT2 column. Use a larger "
         "integer column."},
        {"blanks are zero", "Whole", "'  '", 0, "0"},
        {"a fraction falls off", "Whole", "7.9", 0, "7"},
        {"a number beyond 32 bits",
         "Whole",
         "2147483648",
         8115,
         "Arithmetic overflow error converting expression to data type int."},
        {"a negative half goes down", "Price", "-2.345", 0, "raw -23500"},
        {"more are refused",
         "Price",
         "10000000000000.00",
         8115,
         "Arithmetic overflow error converting numeric to data type numeric."},
        {"four decimals", "Cost", "'0.00005'", 0, "raw 1"},
        {"too many digits for the column",
         "Cost",
         "123456789",
         8115,
         "Arithmetic overflow error converting numeric to data type numeric."},
        {"an exponent", "Price", "1E-05", 0, "raw 0"},
        {"an empty text is no decimal",
         "Price",
         "''",
         8114,
         "Error converting data type varchar to numeric."},
        {"a moment", "Seen", "'1/31/2006 2:05:09 PM'", 0, "day 38748 50709"},
        {"eight digits", "Seen", "'20060131'", 0, "day 38748 0"},
        {"a date drops its time", "Reset", "'2006-01-31 14:00:00'", 0, "day 38748 0"},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.given);
        EXPECT_EQ(stored(row), row.expected);
    }
}

TEST_F(Values, takeTheDefaultsOfTheirColumns) {
    db.execute("INSERT INTO T (Line) VALUES(2.5)");
    EXPECT_EQ(first("SELECT Line FROM T"), "raw 30000");
    EXPECT_EQ(first("SELECT Code FROM T"), " ");
    EXPECT_EQ(first("SELECT Reset FROM T"), "day 2 0");
    EXPECT_EQ(first("SELECT Name FROM T"), "(none)");
}

TEST_F(Values, keepSingleFloatsReadableAndEqual) {
    db.execute("INSERT INTO T (Line,Rate) VALUES(1,0.0725)");
    EXPECT_EQ(otherProgram("SELECT Rate FROM T"), "0.0725");
    const auto rows = db.openRowSet("SELECT * FROM T WHERE Rate='0.0725'");
    ASSERT_FALSE(rows->atEnd());
    EXPECT_EQ(std::get<float>(rows->value(6)), 0.0725F);
}

TEST_F(Values, readWhatOtherProgramsWroteAndRefuseWhatIsNoNumber) {
    otherProgram(
        "INSERT INTO T(Name,Small,Line,Price,Code) VALUES('\xc3\xa9t\xc3\xa9   ','x',1,'12.5','YZ')"
    );
    EXPECT_EQ(first("SELECT Name FROM T"), "\xe9t\xe9  ");
    EXPECT_EQ(first("SELECT Price FROM T"), "raw 125000");
    EXPECT_EQ(first("SELECT Code FROM T"), "Y");
    const auto rows = db.openRowSet("SELECT Small FROM T");
    EXPECT_THROW(static_cast<void>(rows->value(0)), platform::PlatformError);
}

}  // namespace
