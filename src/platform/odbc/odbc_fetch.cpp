#include "platform/odbc/odbc_fetch.h"

#include "platform/odbc/odbc_api.h"
#include "platform/odbc/odbc_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace platform {

namespace {

constexpr int kMostDecimals = 4;

bool succeeded(SQLRETURN code) {
    return code == SQL_SUCCESS || code == SQL_SUCCESS_WITH_INFO;
}

struct TypeRow {
    SQLSMALLINT type;
    ColumnKind kind;
    bool padded;
};

constexpr TypeRow kTypes[] = {
    {SQL_CHAR, ColumnKind::text, true},
    {SQL_WCHAR, ColumnKind::text, true},
    {SQL_BIT, ColumnKind::smallInt, false},
    {SQL_TINYINT, ColumnKind::smallInt, false},
    {SQL_SMALLINT, ColumnKind::smallInt, false},
    {SQL_INTEGER, ColumnKind::integer, false},
    {SQL_BIGINT, ColumnKind::bigInt, false},
    {SQL_REAL, ColumnKind::real, false},
    {SQL_FLOAT, ColumnKind::floating, false},
    {SQL_DOUBLE, ColumnKind::floating, false},
    {SQL_DECIMAL, ColumnKind::decimal, false},
    {SQL_NUMERIC, ColumnKind::decimal, false},
    {SQL_TYPE_TIMESTAMP, ColumnKind::dateTime, false},
    {SQL_TYPE_DATE, ColumnKind::date, false},
};

ColumnInfo describe(SQLHSTMT statement, SQLUSMALLINT number, const RaiseFailure& raise) {
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    const SQLRETURN code = SQLDescribeColW(
        statement,
        number,
        name.data(),
        static_cast<SQLSMALLINT>(name.size()),
        &length,
        &type,
        &size,
        &digits,
        &nullable
    );
    if (!succeeded(code)) {
        raise();
    }
    ColumnInfo column;
    const auto used = static_cast<std::size_t>(std::clamp<SQLSMALLINT>(length, 0, 255));
    column.name = textFromUtf16({reinterpret_cast<const char16_t*>(name.data()), used});
    column.name.erase(column.name.find_last_not_of(' ') + 1);  // a rename can leave a blank
    column.nullable = nullable != SQL_NO_NULLS;
    const auto* row = std::find_if(std::begin(kTypes), std::end(kTypes), [&](const TypeRow& each) {
        return each.type == type;
    });
    column.kind = row == std::end(kTypes) ? ColumnKind::text : row->kind;
    column.padded = row != std::end(kTypes) && row->padded;
    if (column.kind == ColumnKind::text) {
        const bool isBounded = type == SQL_VARCHAR || type == SQL_WVARCHAR || column.padded;
        column.width = isBounded ? static_cast<std::size_t>(size) : 0;
    }
    if (column.kind == ColumnKind::decimal) {
        column.precision = static_cast<int>(size);
        column.scale = std::clamp<int>(digits, 0, kMostDecimals);
    }
    return column;
}

/// Reads the values of the current row of a statement.
class RowReader {
public:
    RowReader(SQLHSTMT statement, const RaiseFailure& raise)
        : statement_(statement),
          raise_(raise) {}

    Stored value(const ColumnInfo& column, SQLUSMALLINT number) {
        switch (column.kind) {
        case ColumnKind::text:
        case ColumnKind::decimal:  // never through a binary number
            return text(number);
        case ColumnKind::real:
        case ColumnKind::floating:
            return plain<SQLDOUBLE, double>(number, SQL_C_DOUBLE);
        case ColumnKind::dateTime:
        case ColumnKind::date:
            return moment(number, column.kind == ColumnKind::dateTime);
        default:
            return plain<SQLBIGINT, std::int64_t>(number, SQL_C_SBIGINT);
        }
    }

private:
    SQLLEN get(SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER buffer, std::size_t size) {
        SQLLEN indicator = 0;
        code_ = SQLGetData(statement_, number, type, buffer, static_cast<SQLLEN>(size), &indicator);
        if (code_ != SQL_NO_DATA && !succeeded(code_)) {
            raise_();
        }
        return indicator;
    }

    template <class Driver, class Kept>
    Stored plain(SQLUSMALLINT number, SQLSMALLINT type) {
        Driver value = 0;
        if (get(number, type, &value, sizeof value) == SQL_NULL_DATA) {
            return std::monostate{};
        }
        return static_cast<Kept>(value);
    }

    /// A text comes in pieces of the buffer's size, each but the last one full.
    Stored text(SQLUSMALLINT number) {
        std::u16string all;
        while (true) {
            const SQLLEN left = get(number, SQL_C_WCHAR, piece_.data(), sizeof piece_);
            if (left == SQL_NULL_DATA) {
                return std::monostate{};
            }
            if (code_ == SQL_NO_DATA) {
                break;
            }
            const std::size_t room = piece_.size() - 1;
            const bool isFull =
                left == SQL_NO_TOTAL || static_cast<std::size_t>(left) > room * sizeof(SQLWCHAR);
            const std::size_t size =
                isFull ? room : static_cast<std::size_t>(left) / sizeof(SQLWCHAR);
            all.append(reinterpret_cast<const char16_t*>(piece_.data()), size);
            if (!isFull) {
                break;
            }
        }
        std::string text = textFromUtf16(all);
        text.erase(text.find_last_not_of(' ') + 1);  // its column gives it its width again
        return text;
    }

    Stored moment(SQLUSMALLINT number, bool withTime) {
        SQL_TIMESTAMP_STRUCT value{};
        if (get(number, SQL_C_TYPE_TIMESTAMP, &value, sizeof value) == SQL_NULL_DATA) {
            return std::monostate{};
        }
        constexpr unsigned kNanosecondsOfMillisecond = 1'000'000;
        std::array<char, 64> text{};
        int length = std::snprintf(
            text.data(), text.size(), "%04d-%02u-%02u", value.year, value.month, value.day
        );
        std::string all(text.data(), static_cast<std::size_t>(length));
        if (!withTime) {
            return all;
        }
        length = std::snprintf(
            text.data(), text.size(), " %02u:%02u:%02u", value.hour, value.minute, value.second
        );
        all.append(text.data(), static_cast<std::size_t>(length));
        if (value.fraction >= kNanosecondsOfMillisecond) {
            const unsigned milliseconds = value.fraction / kNanosecondsOfMillisecond;
            length = std::snprintf(text.data(), text.size(), ".%03u", milliseconds);
            all.append(text.data(), static_cast<std::size_t>(length));
        }
        return all;
    }

    SQLHSTMT statement_;
    const RaiseFailure& raise_;
    SQLRETURN code_ = SQL_SUCCESS;
    std::array<SQLWCHAR, 512> piece_{};
};

void fetchRows(SQLHSTMT statement, OdbcResult& result, const RaiseFailure& raise) {
    RowReader reader(statement, raise);
    std::vector<Stored> row(result.columns.size());
    while (true) {
        const SQLRETURN code = SQLFetch(statement);
        if (code == SQL_NO_DATA) {
            return;
        }
        if (!succeeded(code)) {
            raise();
        }
        for (std::size_t at = 0; at < row.size(); ++at) {
            row[at] = reader.value(result.columns[at], static_cast<SQLUSMALLINT>(at + 1));
        }
        result.rows.add(row);
    }
}

/// Takes what one result of the statement gives.
void takeResult(SQLHSTMT statement, OdbcResult& result, const RaiseFailure& raise) {
    SQLSMALLINT count = 0;
    if (!succeeded(SQLNumResultCols(statement, &count))) {
        raise();
    }
    if (count == 0) {
        SQLLEN affected = 0;
        SQLRowCount(statement, &affected);
        result.affected = std::max<std::int64_t>(result.affected, affected);
        return;
    }
    if (!result.columns.empty()) {
        return;  // a second set of rows is nobody's
    }
    for (SQLUSMALLINT number = 1; number <= count; ++number) {
        result.columns.push_back(describe(statement, number, raise));
    }
    fetchRows(statement, result, raise);
}

}  // namespace

OdbcResult fetchResult(void* statement, const RaiseFailure& raise) {
    OdbcResult result;
    SQLRETURN code = SQL_SUCCESS;
    while (code != SQL_NO_DATA) {
        takeResult(statement, result, raise);
        code = SQLMoreResults(statement);
        if (code != SQL_NO_DATA && !succeeded(code)) {
            raise();
        }
    }
    return result;
}

}  // namespace platform
