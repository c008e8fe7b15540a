#include "db/statements.h"

#include "util/conversions.h"

#include <vector>

namespace db {

namespace {

constexpr std::string_view kAnd = " AND ";
constexpr std::string_view kOr = " OR ";
constexpr std::string_view kOrderBy = " ORDER BY ";
constexpr std::string_view kDescending = " DESC";
constexpr std::size_t kMostStepParts = 5;

std::string compared(const KeyText& part, std::string_view comparison) {
    return part.column + std::string(comparison) + "'" + part.value + "'";
}

/// The comparison as the three-part step writes it: a blank in front of the value.
std::string comparedWithBlank(const KeyText& part, std::string_view comparison) {
    return compared(part, std::string(comparison) + " ");
}

std::string selectFrom(const std::string& table) {
    return "SELECT TOP 1 * FROM " + table;
}

std::string ordered(std::span<const std::string> columns, std::string_view direction) {
    std::string text(kOrderBy);
    for (std::size_t index = 0; index < columns.size(); ++index) {
        text.append(index == 0 ? "" : ",").append(columns[index]).append(direction);
    }
    return text;
}

/// Rows of the first part's group that lie past the key.
/// Kept: with four and five parts the middle ones narrow by at-or-past each, which is not the
/// strict order of the three-part form; the other programs of the suite walk the same way.
std::string pastInGroup(std::span<const KeyText> key, std::string_view comparison) {
    std::string text = compared(key[0], "=");
    if (key.size() == 3) {
        return text.append(kAnd)
            .append(compared(key[1], "="))
            .append(kAnd)
            .append(comparedWithBlank(key[2], comparison))
            .append(kOr)
            .append(compared(key[0], "="))
            .append(kAnd)
            .append(comparedWithBlank(key[1], comparison));
    }
    const std::string atOrPast = std::string(comparison) + "=";
    for (const KeyText& part : key.subspan(1, key.size() - 2)) {
        text.append(kAnd).append(compared(part, atOrPast));
    }
    return text.append(kAnd).append(compared(key.back(), comparison));
}

/// The beginning of a step of several parts: the first alternative counts only when the key's first
/// part has more than one row.
std::string groupHead(const std::string& table, const KeyText& first) {
    return "SELECT  TOP 1 * FROM " + table + " WHERE (SELECT COUNT(*) FROM " + table + " WHERE " +
           compared(first, "=") + ") > 1 AND ";
}

}  // namespace

bool isDescending(std::string_view comparison) {
    return comparison == "<" || comparison == "<=";
}

std::string keyedStatement(
    const std::string& table, std::string_view comparison, std::span<const KeyText> key
) {
    std::string text = selectFrom(table) + " WHERE ";
    for (std::size_t index = 0; index < key.size(); ++index) {
        text.append(index == 0 ? "" : kAnd).append(compared(key[index], comparison));
    }
    if (!key.empty()) {
        text.append(kOrderBy).append(key.front().column);
    }
    // Kept: a replacement over the whole text; long item codes are found without their leading
    // blanks, and the order follows.
    return util::replaceAll(text, "ItemID", "ltrim(ItemID)");
}

std::string stepStatement(
    const std::string& table,
    std::string_view comparison,
    std::span<const KeyText> key,
    std::size_t parts
) {
    if (parts < 1 || parts > kMostStepParts) {
        return groupHead(table, key.front());
    }
    std::string text;
    if (parts == 1) {
        text = "SELECT  TOP 1 * FROM " + table + " WHERE ";
    } else {
        text = groupHead(table, key.front()) + pastInGroup(key, comparison);
        text.append(kOr);
    }
    text += compared(key.front(), comparison);
    std::vector<std::string> columns;
    for (const KeyText& part : key) {
        columns.push_back(part.column);
    }
    return text + ordered(columns, isDescending(comparison) ? kDescending : "");
}

std::string
fieldStatement(const std::string& table, std::string_view comparison, const KeyText& field) {
    std::string text = selectFrom(table) + " WHERE " + compared(field, comparison);
    if (isDescending(comparison)) {
        text.append(kOrderBy).append(field.column).append(kDescending);
    }
    return text;
}

std::string anyRowStatement(const std::string& table) {
    return selectFrom(table);
}

std::string firstStatement(const std::string& table, std::span<const std::string> columns) {
    return selectFrom(table) + ordered(columns, "");
}

std::string lastStatement(const std::string& table, std::span<const std::string> columns) {
    return selectFrom(table) + ordered(columns, kDescending);
}

}  // namespace db
