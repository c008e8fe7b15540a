#include "platform/sql_dialect/dialect.h"

#include "platform/sql_dialect/server_order.h"
#include "util/text_codec.h"

#include <utility>

namespace platform {

namespace {

std::string doubled(std::string_view text, char quote) {
    std::string result(1, quote);
    for (const char c : text) {
        result += c;
        if (c == quote) {
            result += c;
        }
    }
    return result + quote;
}

std::string quoteName(std::string_view name) {
    return doubled(util::toUtf8(name), '"');
}

/// True for a text with a character that capitals of ASCII cannot sort.
constexpr char kIsOdd[] = "{column} GLOB '*[^ -9A-Za-z]*'";

std::string orderKey(const std::string& column) {
    static const std::string kExpression = [] {
        const auto& accented = accentedLetters();
        const std::string simple = doubled(simpleCharacters(), '\'');
        const std::string rest = "ltrim({column}," + simple + ")";
        const std::string letters = "'" + util::toUtf8(accented.letters) + "'";
        const std::string place = "instr(" + letters + ",substr(" + rest + ",1,1))";
        return std::string("CASE WHEN ") + kIsOdd +
               " THEN upper(substr({column},1,length({column})" + "-length(" + rest +
               ")))||CASE WHEN " + place + " THEN substr('" + accented.bases + "'," + place +
               ",1) ELSE '/' END||'{' ELSE upper(rtrim({column})) END";
    }();
    return fillTemplate(kExpression, {{"column", column}});
}

std::string identity(const std::string& column) {
    static const std::string kExpression =
        std::string("CASE WHEN ") + kIsOdd + " THEN upper(rtrim({column})) ELSE '' END";
    return fillTemplate(kExpression, {{"column", column}});
}

std::string typeAsDeclared(const ColumnInfo& column) {
    return util::toUtf8(column.type);
}

std::string indexName(std::string_view table, std::string_view index) {
    return std::string(table) + "." + std::string(index);
}

}  // namespace

const Dialect kEmbeddedDialect = {
    quoteName,
    orderKey,
    serverOrderKey,
    identity,
    typeAsDeclared,
    nullptr,
    " COLLATE SERVER",
    "",
    " DESC",
    "rowid",
    true,
    ")",
    " LIMIT {limit}",
    "?",
    "CREATE TABLE {table} ({columns})",
    "CREATE {unique}INDEX {index} ON {table} ({columns})",
    "DROP INDEX {index}",
    "DROP TABLE {table}",
    "ALTER TABLE {table} ADD COLUMN {definition}",
    nullptr,
    "ALTER TABLE {table} RENAME COLUMN {column} TO {name}",
    "BEGIN IMMEDIATE",
    "COMMIT",
    "ROLLBACK",
    indexName,
};

std::string fillTemplate(
    std::string_view text, std::initializer_list<std::pair<std::string_view, std::string>> values
) {
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t open = text.find('{', at);
        const std::size_t close = open == std::string_view::npos ? open : text.find('}', open);
        if (close == std::string_view::npos) {
            break;
        }
        result += text.substr(at, open - at);
        const std::string_view place = text.substr(open + 1, close - open - 1);
        const auto* found = values.begin();
        while (found != values.end() && found->first != place) {
            ++found;
        }
        if (found == values.end()) {
            result += '{';
            at = open + 1;
            continue;
        }
        result += found->second;
        at = close + 1;
    }
    return result + std::string(text.substr(std::min(at, text.size())));
}

}  // namespace platform
