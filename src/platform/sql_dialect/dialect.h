#pragma once

#include "platform/sql_dialect/columns.h"

#include <string>
#include <string_view>

namespace platform {

/// How one kind of store says what differs from the server's own dialect: one row of texts and
/// functions a store. In the texts {table}, {column}, {name}, {index}, {definition}, {columns},
/// {unique} and {limit} stand for quoted names and finished pieces.
struct Dialect {
    std::string (*quoteName)(std::string_view name);
    /// An expression over a quoted text column that sorts by bytes and never contradicts the
    /// server's order; indexes are made of it. Empty: the store sorts exactly by `exactly`.
    std::string (*orderKey)(const std::string& quotedColumn);
    /// What `orderKey` gives for this text.
    std::string (*orderKeyOf)(std::string_view text);
    /// What tells apart the texts that share an order key, for unique indexes.
    std::string (*identity)(const std::string& quotedColumn);
    /// The server's exact order: the text goes behind an expression over a text column.
    const char* exactly;
    const char* rowId;  ///< the column that counts rows up in the order of insertion
    const char* limit;
    const char* placeholder;
    const char* createTable;
    const char* createIndex;
    const char* dropIndex;
    const char* dropTable;
    const char* addColumn;
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

/// `text` with each {place} of `values` filled in.
std::string fillTemplate(
    std::string_view text, std::initializer_list<std::pair<std::string_view, std::string>> values
);

}  // namespace platform
