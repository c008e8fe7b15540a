#pragma once

#include "platform/sql_dialect/columns.h"
#include "platform/sql_dialect/dialect.h"
#include "platform/sql_dialect/syntax.h"
#include "platform/sql_dialect/value_source.h"

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Writes SELECT statements and conditions in a store's dialect, collecting the values of the
/// placeholders on the way.
class QueryWriter {
public:
    QueryWriter(const SchemaView& schema, const Dialect& dialect)
        : schema_(schema),
          dialect_(dialect) {}

    /// The table of a statement. @throws PlatformError 208.
    const TableSchema& tableOf(const Statement& statement) const;
    void select(const TableSchema& table, const Statement& statement);
    void count(const TableSchema& table, const Statement& statement);
    /// " WHERE ..." or nothing.
    void where(const TableSchema& table, const std::optional<Condition>& condition);
    void add(std::string_view text) { text_ += text; }
    /// A value to write into the column, as the store keeps it.
    [[nodiscard]] Stored stored(const ColumnInfo& column, const Literal& literal) const;
    /// Puts a value of the column into the statement.
    void value(const ColumnInfo& column, Stored value);

    std::string text() { return std::move(text_); }
    std::vector<Stored> values() { return std::move(values_); }
    std::vector<ValueSource> sources() { return std::move(sources_); }

private:
    /// The same for a value of a condition.
    void value(ColumnInfo column, const Literal& literal, ValueForm form);
    void condition(const TableSchema& table, const Condition& condition, bool bounded);
    void joined(const TableSchema& table, const Condition& condition, bool bounded);
    void leaf(const TableSchema& table, const Condition& leaf, bool bounded);
    void countLeaf(const Condition& leaf);
    void comparison(const ColumnInfo& column, const Condition& leaf, bool bounded);
    void oneOf(const ColumnInfo& column, const Condition& leaf);
    void orderBy(const TableSchema& table, const std::vector<OrderItem>& order, std::size_t from);
    void selectColumns(const TableSchema& table, const Statement& statement);
    void limit(std::int64_t rows);
    void simpleSelect(
        const TableSchema& table,
        const Statement& statement,
        const std::optional<Condition>& condition,
        std::size_t orderFrom
    );

    const SchemaView& schema_;
    const Dialect& dialect_;
    std::string text_;
    std::vector<Stored> values_;
    std::vector<ValueSource> sources_;  ///< of the values of conditions
};

/// For a step statement ("the row behind this key"): how many of the ORDER BY columns each of its
/// alternatives holds fixed. The rows of one alternative all lie before those of the next, so that
/// the first alternative with a row has the answer. Empty for every other statement.
std::vector<std::size_t> stepAlternatives(const Statement& statement);

}  // namespace platform
