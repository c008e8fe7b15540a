#include "db/statements.h"

#include "util/conversions.h"

#include <utility>

namespace db {

namespace {

constexpr std::string_view kSelect = "SELECT TOP 1 * FROM ";
constexpr std::string_view kAnd = " AND ";
constexpr std::string_view kOr = " OR ";
constexpr std::string_view kOrderBy = " ORDER BY ";
constexpr std::string_view kDescending = " DESC";
constexpr std::size_t kMostStepParts = 5;

/// A statement in the making; most fit into what is reserved.
class StatementText {
public:
    StatementText() { text_.reserve(kUsualSize); }

    template <class... Pieces>
    StatementText& add(const Pieces&... pieces) {
        (text_.append(pieces), ...);
        return *this;
    }
    StatementText& compare(const KeyText& part, std::string_view comparison) {
        return add(part.column, comparison, "'", part.value, "'");
    }
    /// The comparison as the three-part step writes it: a blank in front of the value.
    StatementText& compareWithBlank(const KeyText& part, std::string_view comparison) {
        return add(part.column, comparison, " '", part.value, "'");
    }
    /// Orders by columns, or by the columns of a key's parts.
    template <class Part>
    StatementText& order(std::span<const Part> parts, std::string_view direction) {
        add(kOrderBy);
        for (std::size_t index = 0; index < parts.size(); ++index) {
            add(index == 0 ? "" : ",", columnOf(parts[index]), direction);
        }
        return *this;
    }
    std::string take() { return std::move(text_); }

private:
    static constexpr std::size_t kUsualSize = 256;

    static const std::string& columnOf(const KeyText& part) { return part.column; }
    static const std::string& columnOf(const std::string& column) { return column; }

    std::string text_;
};

/// Rows of the first part's group that lie past the key.
/// Kept: with four and five parts the middle ones narrow by at-or-past each, which is not the
/// strict order of the three-part form; the other programs of the suite walk the same way.
void addPastInGroup(
    StatementText& text, std::span<const KeyText> key, std::string_view comparison
) {
    text.compare(key[0], "=").add(kAnd);
    if (key.size() == 3) {
        text.compare(key[1], "=").add(kAnd).compareWithBlank(key[2], comparison).add(kOr);
        text.compare(key[0], "=").add(kAnd).compareWithBlank(key[1], comparison);
        return;
    }
    const std::string atOrPast = std::string(comparison) + "=";
    for (const KeyText& part : key.subspan(1, key.size() - 2)) {
        text.compare(part, atOrPast).add(kAnd);
    }
    text.compare(key.back(), comparison);
}

/// The beginning of a step of several parts: the first alternative counts only when the key's first
/// part has more than one row.
void addGroupHead(StatementText& text, const std::string& table, const KeyText& first) {
    text.add("SELECT  TOP 1 * FROM ", table, " WHERE (SELECT COUNT(*) FROM ", table, " WHERE ");
    text.compare(first, "=").add(") > 1 AND ");
}

}  // namespace

bool isDescending(std::string_view comparison) {
    return comparison == "<" || comparison == "<=";
}

std::string keyedStatement(
    const std::string& table, std::string_view comparison, std::span<const KeyText> key
) {
    StatementText text;
    text.add(kSelect, table, " WHERE ");
    for (std::size_t index = 0; index < key.size(); ++index) {
        text.add(index == 0 ? "" : kAnd).compare(key[index], comparison);
    }
    if (!key.empty()) {
        text.add(kOrderBy, key.front().column);
    }
    // Kept: a replacement over the whole text; long item codes are found without their leading
    // blanks, and the order follows.
    return util::replaceAll(text.take(), "ItemID", "ltrim(ItemID)");
}

std::string stepStatement(
    const std::string& table,
    std::string_view comparison,
    std::span<const KeyText> key,
    std::size_t parts
) {
    StatementText text;
    if (parts == 1) {
        text.add("SELECT  TOP 1 * FROM ", table, " WHERE ");
    } else {
        addGroupHead(text, table, key.front());
    }
    if (parts < 1 || parts > kMostStepParts) {
        return text.take();
    }
    if (parts > 1) {
        addPastInGroup(text, key, comparison);
        text.add(kOr);
    }
    text.compare(key.front(), comparison);
    return text.order(key, isDescending(comparison) ? kDescending : "").take();
}

std::string
fieldStatement(const std::string& table, std::string_view comparison, const KeyText& field) {
    StatementText text;
    text.add(kSelect, table, " WHERE ").compare(field, comparison);
    if (isDescending(comparison)) {
        text.add(kOrderBy, field.column, kDescending);
    }
    return text.take();
}

std::string anyRowStatement(const std::string& table) {
    return StatementText().add(kSelect, table).take();
}

std::string firstStatement(const std::string& table, std::span<const std::string> columns) {
    return StatementText().add(kSelect, table).order(columns, "").take();
}

std::string lastStatement(const std::string& table, std::span<const std::string> columns) {
    return StatementText().add(kSelect, table).order(columns, kDescending).take();
}

}  // namespace db
