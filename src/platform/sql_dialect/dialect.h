#pragma once

#include "platform/ports/platform_error.h"
#include "platform/sql_dialect/columns.h"

#include <string>
#include <string_view>

namespace platform {

/// How one kind of store says what differs from the server's own dialect: one row of texts and
/// functions a store. In the texts {table}, {column}, {name}, {index}, {definition}, {columns},
/// {unique}, {type} and {limit} stand for quoted names and finished pieces.
struct Dialect {
    std::string (*quoteName)(std::string_view name);
    /// An expression over a quoted text column that sorts by bytes and never contradicts the
    /// server's order; indexes are made of it. Empty: the store sorts exactly by `exactly`.
    std::string (*orderKey)(const std::string& quotedColumn);
    /// What `orderKey` gives for this text.
    std::string (*orderKeyOf)(std::string_view text);
    /// What tells apart the texts that share an order key, for unique indexes.
    std::string (*identity)(const std::string& quotedColumn);
    /// The type of a column as the store declares it.
    std::string (*typeText)(const ColumnInfo& column);
    /// A value of the column as it stands in a statement; null: values go beside the statement,
    /// each at a `placeholder`.
    std::string (*literal)(const ColumnInfo& column, const Stored& value);
    /// The server's exact order: the text goes behind an expression over a text column.
    const char* exactly;
    const char* ascending;  ///< behind a term of an order, so that missing values come first
    const char* descending;
    const char* rowId;     ///< the column that counts rows up in the order of insertion
    bool selectsRowId;     ///< a SELECT gives it as the first column
    const char* queryEnd;  ///< closes a query that another one selects from
    const char* limit;
    const char* placeholder;
    const char* createTable;
    const char* createIndex;
    const char* dropIndex;
    const char* dropTable;
    const char* addColumn;
    const char* alterColumn;  ///< null: the store changes columns in its own way
    const char* renameColumn;
    const char* begin;
    const char* commit;
    const char* rollBack;
    /// Name of an index in the store, where names belong to the whole catalog.
    std::string (*indexName)(std::string_view table, std::string_view index);
};

/// The embedded store's dialect. Its indexes use nothing but what every program with that store's
/// library has built in, so that other programs can write the tables; `exactly` is a collation
/// that only this program's connections have.
extern const Dialect kEmbeddedDialect;

/// The dialect of a PostgreSQL server whose catalogs hold a collation "SERVER" that knows no letter
/// case. Values stand in the statements; tables hold texts as CHAR, padded as the server pads them.
extern const Dialect kPostgresDialect;

/// The server's error for one of PostgreSQL's. @param state  its SQLSTATE; @param text  its
/// message.
PlatformError postgresError(std::string_view state, std::string_view text);

/// `text` with each {place} of `values` filled in.
std::string fillTemplate(
    std::string_view text, std::initializer_list<std::pair<std::string_view, std::string>> values
);

}  // namespace platform
