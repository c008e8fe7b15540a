#pragma once

#include "platform/sql_dialect/columns.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct Condition;

/// "SELECT COUNT(*) FROM table WHERE condition" inside a condition.
struct CountQuery {
    std::string table;
    std::shared_ptr<const Condition> where;  ///< null: all rows
};

/// A condition of a statement as a tree. The leaves compare a column, or a count, with literals.
struct Condition {
    enum class Kind : std::uint8_t { all, any, negated, compare, isNull, isNotNull, oneOf };
    Kind kind = Kind::compare;
    std::vector<Condition> children;  ///< of all, any and negated
    std::string column;
    bool leftTrimmed = false;         ///< stood in "ltrim(...)"
    std::optional<CountQuery> count;  ///< instead of a column
    std::string comparison;           ///< "=", "<", ">", "<=", ">=", "<>"
    std::vector<Literal> values;      ///< one, or the list of oneOf
};

struct OrderItem {
    std::string column;
    bool leftTrimmed = false;
    bool descending = false;
};

struct Assignment {
    std::string column;
    std::string source;  ///< another column of the row; empty: `value`
    Literal value;
};

enum class StatementKind : std::uint8_t {
    select,
    insert,
    update,
    remove,
    createTable,
    createIndex,
    dropIndex,
    dropTable,
    addColumn,
    alterColumn,
    renameColumn,
    begin,
    commit,
    rollBack
};

/// One statement of the server's dialect, taken apart. Fields that its kind does not have are
/// empty.
struct Statement {
    StatementKind kind = StatementKind::select;
    std::string table;                 ///< last part of its name
    std::string tableAsGiven;          ///< with its prefix, for messages
    std::optional<std::int64_t> top;   ///< of a SELECT
    bool isCount = false;              ///< SELECT COUNT(*)
    std::vector<std::string> columns;  ///< SELECT, INSERT (empty: all), CREATE INDEX
    std::optional<Condition> where;
    std::vector<OrderItem> order;
    std::vector<Literal> values;          ///< INSERT
    std::vector<Assignment> assignments;  ///< UPDATE
    std::vector<ColumnInfo> definitions;  ///< CREATE TABLE, ALTER TABLE
    std::string name;                     ///< of an index; a column's old name
    std::string newName;                  ///< of a column, trimmed
    bool unique = false;
};

/// Reads one statement (code page 1252). A statement outside the dialect that the link speaks is
/// refused. @throws PlatformError 102 with the statement in its text, 105, 2705, 2715.
Statement parseStatement(std::string_view text);

/// Reads a literal as it stands in a column's declaration.
Literal parseLiteral(std::string_view text);

}  // namespace platform
