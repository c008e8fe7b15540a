#include "platform/odbc/odbc_row_set.h"

#include "util/conversions.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace platform {

namespace {

constexpr std::int32_t kTooManyRowsError = -2147467259;

std::string quoted(const std::string& name) {
    return "[" + util::replaceAll(name, "]", "]]") + "]";
}

std::string tablePath(const std::string& table) {
    std::string path;
    for (const std::string& part : util::split(table, '.')) {
        path += (path.empty() ? "" : ".") + quoted(part);
    }
    return path;
}

template <class Number>
std::string numberText(Number number) {
    std::array<char, 64> text{};
    const auto [end, code] = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), code == std::errc() ? end : text.data()};
}

/// A moment in the form that the server reads alike whatever its language: without dashes.
std::string momentLiteral(std::string text) {
    std::erase(text, '-');
    return "'" + text + "'";
}

std::string literal(const ColumnInfo& column, const Stored& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*whole);
    }
    if (const auto* number = std::get_if<double>(&value)) {
        const bool isSingle = column.kind == ColumnKind::real;
        return isSingle ? numberText(static_cast<float>(*number)) : numberText(*number);
    }
    const auto& text = std::get<std::string>(value);
    switch (column.kind) {
    case ColumnKind::decimal:
        return text;
    case ColumnKind::dateTime:
    case ColumnKind::date:
        return momentLiteral(text);
    default:
        return "'" + util::replaceAll(text, "'", "''") + "'";
    }
}

bool isNone(const Stored& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// Two rows can be alike in all columns of a table without a unique index.
bool isCertain(const TableSchema& table) {
    return std::any_of(table.indexes.begin(), table.indexes.end(), [](const IndexInfo& index) {
        return index.unique;
    });
}

}  // namespace

OdbcRowSet::OdbcRowSet(const std::shared_ptr<OdbcStore>& store, StoreRows rows)
    : ClientRowSet(
          std::make_shared<const ColumnList>(std::move(rows.result.columns)),
          std::move(rows.result.rows),
          0,
          Numbers::exact
      ),
      store_(store),
      table_(std::move(rows.table)) {}

void OdbcRowSet::send(const std::string& action, const std::vector<std::size_t>& changed) {
    const auto store = store_.lock();
    if (!store) {
        throw PlatformError(kClosedError, "Operation is not allowed when the object is closed.");
    }
    if (table_.empty()) {
        throw PlatformError(
            kReadOnlyRowsError,
            "Current Recordset does not support updating. This may be a limitation of the provider."
        );
    }
    const TableSchema table = store->tableForCheck(table_);
    std::string statement = action;
    std::string_view between = " WHERE ";
    for (const std::size_t at : checkedColumns(table, changed)) {
        const Stored value = kept(at);
        statement += std::string(between) + quoted(columns()[at].name);
        statement += isNone(value) ? " IS NULL" : "=" + literal(columns()[at], value);
        between = " AND ";
    }
    const std::int64_t hit = store->change(statement, isCertain(table));
    if (hit == 0) {
        throw rowChangedError();
    }
    if (hit > 1) {
        throw PlatformError(
            kTooManyRowsError,
            "Key column information is insufficient or incorrect. Too many rows were affected by "
            "update."
        );
    }
}

void OdbcRowSet::sendUpdate(const std::vector<std::size_t>& changed) {
    std::string action = "UPDATE " + tablePath(table_);
    std::string_view between = " SET ";
    for (const std::size_t at : changed) {
        const Stored value = edited(at);
        action += std::string(between) + quoted(columns()[at].name) + "=" +
                  (isNone(value) ? "NULL" : literal(columns()[at], value));
        between = ",";
    }
    send(action, changed);
}

void OdbcRowSet::sendRemove() {
    send("DELETE FROM " + tablePath(table_), {});
}

}  // namespace platform
