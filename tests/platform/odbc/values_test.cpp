#include "each_store.h"
#include "util/conversions.h"

#include <vector>

using util::Money;
using util::Value;

namespace {

class StoredValues : public EachStore {
protected:
    StoredValues() {
        execute("Create Table T (N INTEGER NOT NULL, Name CHAR (65), Free VARCHAR(65), Small "
                "SMALLINT, Big BIGINT, Price DECIMAL(18,2), Cost DECIMAL (12,4), Rate REAL, Seen "
                "DATETIME, Length FLOAT)");
        execute("Create UNIQUE Index idx_0 On T(N)");
    }
    /// The value that a literal leaves in a column.
    Value stored(const std::string& column, const std::string& literal) {
        execute("DELETE FROM T");
        execute("INSERT INTO T (N," + column + ") VALUES(1," + literal + ")");
        return rowsOf("SELECT " + column + " FROM T")->value(0);
    }
};

INSTANTIATE_TEST_SUITE_P(
    Store,
    StoredValues,
    testing::ValuesIn(testing_support::storeAdapters()),
    testing_support::adapterName
);

struct Case {
    const char* given;
    const char* column;
    std::string literal;
    Value expected;
};

TEST_P(StoredValues, comeBackToTheLastDigit) {
    const Case cases[] = {
        {"no text", "Name", "NULL", Value()},
        {"no number", "Small", "NULL", Value()},
        {"no amount", "Price", "NULL", Value()},
        {"no moment", "Seen", "NULL", Value()},
        {"cents that no binary number has", "Price", "0.07", Money::fromRaw(700)},
        {"15 digits", "Price", "-9999999999999.99", Money::fromRaw(-99999999999999900)},
        {"four decimals", "Cost", "12345678.0001", Money::fromRaw(123456780001)},
        {"a half goes up", "Price", "2.345", Money::fromRaw(23500)},
        {"a single", "Rate", "0.0725", 0.0725F},
        {"a single of many digits", "Rate", "16777217", 16777216.0F},
        {"a double", "Length", "0.1", 0.1},
        {"the least small number", "Small", "-32768", std::int64_t{-32768}},
        {"a number beyond a double's digits",
         "Big",
         "9007199254740993",
         std::int64_t{9007199254740993}},
        {"a moment", "Seen", "'20060131 14:05:09'", util::DateTime{38748, 50709}},
        {"a text in a column without padding", "Free", "'Cash'", std::string("Cash")},
    };
    for (const auto& [given, column, literal, expected] : cases) {
        SCOPED_TRACE(given);
        EXPECT_EQ(stored(column, literal), expected);
    }
}

using ServerValues = StoredValues;

INSTANTIATE_TEST_SUITE_P(
    Store,
    ServerValues,
    testing::ValuesIn(testing_support::serverStores()),
    testing_support::adapterName
);

TEST_P(ServerValues, ofAmountsKeepAllDigits) {
    const Money greatest = Money::fromRaw(9223372036854775800);
    EXPECT_EQ(stored("Price", "922337203685477.58"), Value(greatest));
    const auto rows = rowsOf("SELECT * FROM T");
    rows->setValue(5, Value(Money::fromRaw(9223372036854775700)));
    rows->update();
    EXPECT_EQ(
        first("SELECT Price FROM T WHERE Price=922337203685477.57"), "raw 9223372036854775700"
    );
    execute("UPDATE T SET Price=9223372036854775.80");
    EXPECT_EQ(errorOf([&] { static_cast<void>(rowsOf("SELECT Price FROM T")->value(0)); }), 8115);
}

TEST_P(StoredValues, ofTextsFillTheirColumnsExactly) {
    for (std::size_t length = 0; length <= 65; ++length) {
        const std::string given(length, 'x');
        EXPECT_EQ(stored("Name", "'" + given + "'"), Value(given + std::string(65 - length, ' ')));
    }
    const std::string tooLong(66, 'x');
    EXPECT_EQ(failure("UPDATE T SET Name='" + tooLong + "'"), 8152);
    const auto rows = rowsOf("SELECT * FROM T");
    rows->setValue(1, Value(std::string("O'Neil\\ {d} ? %")));
    rows->update();
    EXPECT_EQ(util::trim(first("SELECT Name FROM T")), "O'Neil\\ {d} ? %");
}

TEST_P(StoredValues, ofTextsKeepEveryLetterOfTheCodePage) {
    std::string letters;
    for (int code = 0x80; code <= 0xFF; ++code) {
        const auto letter = static_cast<char>(code);
        const std::string_view undefined = "\x81\x8D\x8F\x90\x9D";
        letters += undefined.find(letter) == std::string_view::npos ? std::string(1, letter) : "";
    }
    ASSERT_EQ(letters.size(), 123U);
    for (std::size_t at = 0; at < letters.size(); at += 60) {
        const std::string part = letters.substr(at, 60);
        EXPECT_EQ(util::trim(text(stored("Name", "'" + part + "'"))), util::trim(part));
    }
    execute("UPDATE T SET Name='caf\xe9'");
    EXPECT_EQ(first("SELECT N FROM T WHERE Name='CAF\xc9  '"), "1");
    EXPECT_EQ(first("SELECT N FROM T WHERE Name='cafe'"), "(none)");
}

TEST_P(StoredValues, ofOneKindCompareAsTheColumnDoes) {
    execute("INSERT INTO T (N,Rate,Price) VALUES(1,0.1,1.10)");
    struct Comparison {
        const char* given;
        const char* condition;
        bool holds;
    };
    static constexpr Comparison kComparisons[] = {
        {"a single and its text", "Rate='0.1'", true},
        {"an amount and a text with fewer decimals", "Price='1.1'", true},
        {"a number in quotes", "N='1'", true},
        {"no value is above nothing", "Small>'0'", false},
        {"no value is none", "Small IS NULL", true},
    };
    for (const auto& [given, condition, holds] : kComparisons) {
        SCOPED_TRACE(given);
        const std::string found = first(std::string("SELECT N FROM T WHERE ") + condition);
        EXPECT_EQ(found, holds ? "1" : "(none)");
    }
}

TEST_P(StoredValues, ofASingleAndAMomentFindTheirRowAgain) {
    execute("INSERT INTO T (N,Rate,Seen,Length) VALUES(1,0.1,'20060131 14:05:09',0.1)");
    const auto rows = rowsOf("SELECT * FROM T");
    rows->setValue(7, Value(0.2F));
    rows->setValue(8, Value(util::DateTime{38749, 1}));
    rows->setValue(9, Value(0.3));
    rows->update();
    EXPECT_EQ(std::get<float>(rowsOf("SELECT Rate FROM T")->value(0)), 0.2F);
    EXPECT_EQ(first("SELECT Seen FROM T"), "day 38749 1");
    rows->setValue(7, Value());
    rows->update();
    EXPECT_EQ(first("SELECT N FROM T WHERE Rate IS NULL"), "1");
    rows->setValue(7, Value(0.4F));
    rows->update();
    EXPECT_EQ(std::get<float>(rowsOf("SELECT Rate FROM T")->value(0)), 0.4F);
}

}  // namespace
