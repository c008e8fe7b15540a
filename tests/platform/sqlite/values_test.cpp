#include "store.h"
#include "util/conversions.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

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

/// A record with a field of each kind.
struct Record {
    std::optional<util::DateTime> passedOver;  ///< first, for the columns in front
    std::optional<util::DateTime> moment;
    std::array<char, 200> text;
    std::int16_t small = 0;
    std::int32_t whole = 0;
    std::int64_t wide = 0;
    float single = 0;
    Money money;
    std::optional<Value> given;  ///< what a field was to be filled with

    Record() { text.fill(' '); }
};

template <class Field>
platform::RecordField fieldAt(platform::FieldKind kind, Field Record::*member) {
    const Record record;
    const auto* begin = reinterpret_cast<const std::byte*>(&record);
    const auto offset = reinterpret_cast<const std::byte*>(&(record.*member)) - begin;
    return {static_cast<std::uint32_t>(offset), sizeof(Field), kind};
}

const platform::RecordField kPassedOver = fieldAt(platform::FieldKind::moment, &Record::passedOver);
const platform::RecordField kFields[] = {
    fieldAt(platform::FieldKind::text, &Record::text),
    fieldAt(platform::FieldKind::small, &Record::small),
    fieldAt(platform::FieldKind::whole, &Record::whole),
    fieldAt(platform::FieldKind::wide, &Record::wide),
    fieldAt(platform::FieldKind::single, &Record::single),
    fieldAt(platform::FieldKind::money, &Record::money),
    fieldAt(platform::FieldKind::moment, &Record::moment),
};

void keepGiven(void* record, const platform::RecordField& field, const util::ValueView& value) {
    if (field.offset != kPassedOver.offset) {
        static_cast<Record*>(record)->given = util::ownValue(value);
    }
}

Value trimmed(Value value) {
    if (auto* text = std::get_if<std::string>(&value)) {
        *text = util::rtrim(*text);
    }
    return value;
}

/// What a field of a record gets of a column: what stands in it, or what it was to be filled with.
Value readInto(const platform::RecordField& field, const platform::RowSet& rows, int column) {
    std::vector<platform::RecordField> fields(static_cast<std::size_t>(column), kPassedOver);
    fields.push_back(field);
    Record record;
    rows.readRecord(fields, &record, &keepGiven);
    if (record.given) {
        return trimmed(*record.given);
    }
    switch (field.kind) {
    case platform::FieldKind::text:
        return trimmed(std::string(record.text.data(), record.text.size()));
    case platform::FieldKind::small:
        return std::int64_t{record.small};
    case platform::FieldKind::whole:
        return std::int64_t{record.whole};
    case platform::FieldKind::wide:
        return record.wide;
    case platform::FieldKind::single:
        return record.single;
    default:
        return record.money;
    }
}

void expectRowInFields(const platform::RowSet& rows) {
    for (int column = 0; column < rows.fieldCount(); ++column) {
        for (const auto& field : kFields) {
            SCOPED_TRACE(rows.fieldName(column) + " in field " + std::to_string(field.offset));
            EXPECT_EQ(readInto(field, rows, column), trimmed(rows.value(column)));
        }
    }
}

TEST_F(Values, areTheSameInTheFieldsOfARecord) {
    // Given rows of this program and of another one, whose numbers stand in columns of any type,
    // whose texts are too long, and whose whole amounts reach the edge of the packed forms
    otherProgram(
        "CREATE TABLE R(Name CHAR (5),Small SMALLINT,Big BIGINT,Price DECIMAL(18,2),Rate REAL,"
        "Seen DATETIME,Odd STRING,Odder STRING)"
    );
    for (const char* row :
         {"'Cash',1,9007199254740993,12.5,0.0725,'2006-01-31 14:05:09','x','y'",
          "'\xc3\xa9t\xc3\xa9 too long',63,64,100000000000,1,NULL,7,7.25",
          "NULL,-1,-1,-0.01,NULL,NULL,NULL,hex(zeroblob(70))",
          "'',0,0,99999999999,0,NULL,'',hex(zeroblob(64))"}) {
        otherProgram(std::string("INSERT INTO R VALUES(") + row + ")");
    }
    const auto rows = db.openRowSet("SELECT * FROM R");
    ASSERT_EQ(rows->recordCount(), 4);
    for (; !rows->atEnd(); rows->moveNext()) {
        expectRowInFields(*rows);
        // When a value is put there
        rows->setValue(0, std::string("New"));
        rows->setValue(3, Money::fromRaw(12300));
        EXPECT_EQ(readInto(kFields[0], *rows, 0), Value(std::string("New")));
        expectRowInFields(*rows);
    }
    // Then behind the end, and of more columns than there are, nothing is read
    EXPECT_THROW(static_cast<void>(readInto(kFields[0], *rows, 0)), platform::PlatformError);
    rows->moveFirst();
    EXPECT_THROW(static_cast<void>(readInto(kFields[0], *rows, 8)), platform::PlatformError);
    // And a text that is longer than its field is cut
    platform::RecordField narrow = kFields[0];
    narrow.size = 2;
    EXPECT_EQ(readInto(narrow, *rows, 0), Value(std::string("Ca")));
}

}  // namespace
