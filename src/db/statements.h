#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// The statement texts by which a table is walked in key order. Values stand between single quotes
/// whatever their type; they must be safe there already.
namespace db {

/// One part of a key as it stands in a statement.
struct KeyText {
    std::string column;
    std::string value;
};

/// First row that every part compares with as `comparison` says ("=", ">", ">=", "<", "<=").
/// Kept: each part is compared by itself, and only the first one orders the rows.
std::string
keyedStatement(const std::string& table, std::string_view comparison, std::span<const KeyText> key);

/// Row after (">") or before ("<") the key, for 1 to 5 parts. Any other count leaves the statement
/// unfinished, so that the server refuses it; the first part must be there all the same.
std::string stepStatement(
    const std::string& table,
    std::string_view comparison,
    std::span<const KeyText> key,
    std::size_t parts
);

/// First row whose column compares with the value; "<" and "<=" take the greatest.
std::string
fieldStatement(const std::string& table, std::string_view comparison, const KeyText& field);

/// First (last) row in the order of the columns; without columns the order by stays empty, which
/// the server refuses.
std::string firstStatement(const std::string& table, std::span<const std::string> columns);
std::string lastStatement(const std::string& table, std::span<const std::string> columns);
/// The first row as the server gives it.
std::string anyRowStatement(const std::string& table);

/// True for the comparisons that walk downwards.
bool isDescending(std::string_view comparison);

}  // namespace db
