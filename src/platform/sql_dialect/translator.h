#pragma once

#include "platform/sql_dialect/columns.h"
#include "platform/sql_dialect/dialect.h"
#include "platform/sql_dialect/syntax.h"
#include "platform/sql_dialect/value_source.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A statement ready for a store.
struct Translation {
    Statement statement;  ///< with table and column names as the catalog spells them
    std::string text;     ///< UTF-8; empty for alterColumn, which a store does in its own way
    std::vector<Stored> values;        ///< for the placeholders, in order
    std::vector<ValueSource> sources;  ///< of the values; of those of the conditions only
    /// Columns of the rows of a SELECT, behind a first one with the row's number. A count is one
    /// column without a name and without row number.
    ColumnList columns;
    /// Of a translation that a cache keeps, among all that it has kept; 0: of no such.
    std::int64_t number = 0;
};

/// Translates one statement of the server's dialect (code page 1252).
/// Text columns compare and sort as on the server: exactly, and with a bound on the order key
/// beside it where an index can use it. Among equal rows the oldest comes first, in descending
/// order the youngest. The alternatives of a step statement are asked one after the other, each
/// with its own bound, so that a step costs the same in a table of any size.
/// @throws PlatformError with the server's number and text for what the server would refuse, 102
/// for a statement that is not known.
Translation translate(std::string_view statement, const SchemaView& schema, const Dialect& dialect);

/// The declaration of a column for the dialect: name, type as declared, NOT NULL, default.
std::string columnDeclaration(const ColumnInfo& column, const Dialect& dialect);

/// The statement that makes an index over `columns` of `table`.
std::string
indexStatement(const TableSchema& table, const IndexInfo& index, const Dialect& dialect);

}  // namespace platform
