#include "platform/sql_dialect/query_writer.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/tokens.h"

#include <algorithm>

namespace platform {

namespace {

/// The comparison of order keys that rows of `comparison` fulfil; empty when there is none.
std::string_view boundOf(std::string_view comparison) {
    if (comparison == "<>") {
        return {};
    }
    return comparison == ">" ? ">=" : comparison == "<" ? "<=" : comparison;
}

bool nameIn(const std::vector<OrderItem>& order, std::size_t before, const std::string& column) {
    return std::any_of(
        order.begin(),
        order.begin() + static_cast<std::ptrdiff_t>(before),
        [&](const OrderItem& item) { return sameSqlName(item.column, column); }
    );
}

}  // namespace

const TableSchema& QueryWriter::tableOf(const Statement& statement) const {
    const auto* table = schema_.table(statement.table);
    if (table == nullptr) {
        throw serverError(errorObjectInvalid, {statement.tableAsGiven});
    }
    return *table;
}

Stored QueryWriter::stored(const ColumnInfo& column, const Literal& literal) const {
    return dialect_.literal == nullptr ? toStored(column, literal) : toExact(column, literal);
}

void QueryWriter::value(const ColumnInfo& column, Stored value) {
    if (dialect_.literal != nullptr) {
        add(dialect_.literal(column, value));
        return;
    }
    add(dialect_.placeholder);
    values_.push_back(std::move(value));
}

void QueryWriter::value(ColumnInfo column, const Literal& literal, ValueForm form) {
    ValueSource source{std::move(column), literal, form};
    value(source.column, valueOf(source, literal, dialect_));
    sources_.push_back(std::move(source));
}

void QueryWriter::where(const TableSchema& table, const std::optional<Condition>& condition) {
    if (condition) {
        add(" WHERE ");
        this->condition(table, *condition, true);
    }
}

/// @param bounded  the condition must hold for every row of the answer, so that a bound on the
/// order key may stand beside a comparison.
void QueryWriter::condition(const TableSchema& table, const Condition& condition, bool bounded) {
    switch (condition.kind) {
    case Condition::Kind::all:
    case Condition::Kind::any:
        joined(table, condition, bounded);
        break;
    case Condition::Kind::negated:
        add("NOT (");
        this->condition(table, condition.children.front(), false);
        add(")");
        break;
    default:
        leaf(table, condition, bounded);
    }
}

void QueryWriter::joined(const TableSchema& table, const Condition& condition, bool bounded) {
    const bool isAll = condition.kind == Condition::Kind::all;
    std::string_view between = isAll ? "" : "(";
    for (const auto& child : condition.children) {
        add(between);
        this->condition(table, child, bounded && isAll);
        between = isAll ? " AND " : " OR ";
    }
    add(isAll ? "" : ")");
}

void QueryWriter::leaf(const TableSchema& table, const Condition& leaf, bool bounded) {
    if (leaf.count) {
        countLeaf(leaf);
        return;
    }
    const ColumnInfo& column = table.column(leaf.column);
    switch (leaf.kind) {
    case Condition::Kind::isNull:
    case Condition::Kind::isNotNull:
        add(dialect_.quoteName(column.name));
        add(leaf.kind == Condition::Kind::isNull ? " IS NULL" : " IS NOT NULL");
        break;
    case Condition::Kind::oneOf:
        oneOf(column, leaf);
        break;
    default:
        comparison(column, leaf, bounded);
    }
}

void QueryWriter::oneOf(const ColumnInfo& column, const Condition& leaf) {
    std::string_view between = "(";
    for (const auto& literal : leaf.values) {
        Condition equal;
        equal.leftTrimmed = leaf.leftTrimmed;
        equal.comparison = "=";
        equal.values = {literal};
        add(between);
        comparison(column, equal, false);
        between = " OR ";
    }
    add(")");
}

void QueryWriter::comparison(const ColumnInfo& column, const Condition& leaf, bool bounded) {
    const std::string name = dialect_.quoteName(column.name);
    const Literal& literal = leaf.values.front();
    if (column.kind != ColumnKind::text) {
        add(name + leaf.comparison);
        const bool isExact = dialect_.literal != nullptr && column.kind == ColumnKind::decimal &&
                             !literal.isText && !literal.isNull;
        if (isExact) {
            value(column, toExact(column, literal));
        } else {
            value(column, literal, ValueForm::comparable);
        }
        return;
    }
    const std::string_view bound = boundOf(leaf.comparison);
    const bool isBounded = bounded && !leaf.leftTrimmed && !literal.isNull && !bound.empty() &&
                           dialect_.orderKey != nullptr;
    if (isBounded) {
        add(dialect_.orderKey(name) + std::string(bound));
        value(column, literal, ValueForm::orderKey);
        add(" AND ");
    }
    add((leaf.leftTrimmed ? "ltrim(" + name + ")" : name) + dialect_.exactly + leaf.comparison);
    value(column, literal, ValueForm::exactText);
}

/// A count that must only exceed a number is not taken further than that.
void QueryWriter::countLeaf(const Condition& leaf) {
    Statement counted;
    counted.table = leaf.count->table;
    counted.tableAsGiven = counted.table;
    const TableSchema& table = tableOf(counted);
    const ColumnInfo number{"COUNT", "BIGINT", ColumnKind::bigInt};
    add("(SELECT COUNT(*) FROM (SELECT 1 FROM " + dialect_.quoteName(table.name));
    if (leaf.count->where) {
        add(" WHERE ");
        condition(table, *leaf.count->where, true);
    }
    const Literal& least = leaf.values.front();
    const Stored bound = least.isText ? Stored() : toStored(number, least);
    const auto* most = std::get_if<std::int64_t>(&bound);
    if (leaf.comparison == ">" && most != nullptr && *most >= 0 && *most < INT64_MAX) {
        limit(*most + 1);
    }
    add(dialect_.queryEnd);
    add(")" + leaf.comparison);
    value(number, least, ValueForm::kept);
}

void QueryWriter::limit(std::int64_t rows) {
    add(fillTemplate(dialect_.limit, {{"limit", std::to_string(rows)}}));
}

/// The order by the items from `from` on; the ones before it are the same in all rows.
void QueryWriter::orderBy(
    const TableSchema& table, const std::vector<OrderItem>& order, std::size_t from
) {
    if (order.empty()) {
        return;
    }
    add(" ORDER BY ");
    for (std::size_t at = from; at < order.size(); ++at) {
        const OrderItem& item = order[at];
        const ColumnInfo& column = table.column(item.column);
        if (nameIn(order, at, item.column)) {
            continue;
        }
        const std::string name = dialect_.quoteName(column.name);
        const std::string direction =
            std::string(item.descending ? dialect_.descending : dialect_.ascending) + ",";
        if (column.kind != ColumnKind::text) {
            add(name + direction);
            continue;
        }
        if (!item.leftTrimmed && dialect_.orderKey != nullptr) {
            add(dialect_.orderKey(name) + direction);
        }
        add(item.leftTrimmed ? "ltrim(" + name + ")" : name);
        add(dialect_.exactly);
        add(direction);
    }
    add(dialect_.rowId);
    add(order.back().descending ? " DESC" : "");
}

void QueryWriter::selectColumns(const TableSchema& table, const Statement& statement) {
    std::vector<std::string> terms;
    if (dialect_.selectsRowId) {
        terms.emplace_back(dialect_.rowId);
    }
    if (statement.columns.empty()) {
        for (const auto& column : table.columns) {
            terms.push_back(dialect_.quoteName(column.name));
        }
    }
    for (const auto& column : statement.columns) {
        terms.push_back(dialect_.quoteName(table.column(column).name));
    }
    std::string_view between = "SELECT ";
    for (const auto& term : terms) {
        add(between);
        add(term);
        between = ",";
    }
    add(" FROM " + dialect_.quoteName(table.name));
}

void QueryWriter::simpleSelect(
    const TableSchema& table,
    const Statement& statement,
    const std::optional<Condition>& condition,
    std::size_t orderFrom
) {
    selectColumns(table, statement);
    where(table, condition);
    orderBy(table, statement.order, orderFrom);
    if (statement.top) {
        limit(*statement.top);
    }
}

void QueryWriter::select(const TableSchema& table, const Statement& statement) {
    const std::vector<std::size_t> fixed = stepAlternatives(statement);
    if (fixed.empty()) {
        simpleSelect(table, statement, statement.where, 0);
        return;
    }
    for (std::size_t at = 0; at < fixed.size(); ++at) {
        add(at == 0 ? "SELECT * FROM (" : " UNION ALL SELECT * FROM (");
        simpleSelect(table, statement, statement.where->children[at], fixed[at]);
        add(dialect_.queryEnd);
    }
    limit(1);
}

void QueryWriter::count(const TableSchema& table, const Statement& statement) {
    add("SELECT COUNT(*) FROM " + dialect_.quoteName(table.name));
    where(table, statement.where);
}

}  // namespace platform
