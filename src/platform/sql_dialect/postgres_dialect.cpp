#include "platform/sql_dialect/dialect.h"
#include "platform/sql_dialect/server_error.h"
#include "util/text_codec.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace platform {

namespace {

constexpr char kCollated[] = " COLLATE \"SERVER\"";

std::string doubled(std::string_view text, char quote) {
    std::string result(1, quote);
    for (const char c : text) {
        result.append(c == quote ? 2 : 1, c);
    }
    return result + quote;
}

std::string quoteName(std::string_view name) {
    return doubled(util::toUtf8(name), '"');
}

std::string sized(std::string_view type, const std::string& size) {
    return std::string(type) + "(" + size + ")";
}

std::string typeText(const ColumnInfo& column) {
    static constexpr std::string_view kTypes[] = {
        "text",
        "smallint",
        "integer",
        "bigint",
        "real",
        "double precision",
        "numeric",
        "timestamp",
        "date"};
    std::string type(kTypes[static_cast<std::size_t>(column.kind)]);
    if (column.kind == ColumnKind::decimal) {
        return sized(type, std::to_string(column.precision) + "," + std::to_string(column.scale));
    }
    if (column.kind != ColumnKind::text) {
        return type;
    }
    const std::string width = std::to_string(column.width);
    return (column.width == 0 ? type : sized(column.padded ? "char" : "varchar", width)) +
           kCollated;
}

std::string numberText(double number) {
    std::array<char, 64> text{};
    const auto [end, code] = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), code == std::errc() ? end : text.data()};
}

std::string literal(const ColumnInfo& column, const Stored& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*whole);
    }
    if (const auto* number = std::get_if<double>(&value)) {
        const std::string text = numberText(*number);
        const bool isSingle = column.kind == ColumnKind::real;
        return isSingle ? "'" + text + "'::real" : text;
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        const std::string trimmed = text->substr(0, text->find_last_not_of(' ') + 1);
        return column.kind == ColumnKind::decimal ? trimmed : doubled(util::toUtf8(trimmed), '\'');
    }
    return "NULL";
}

std::string indexName(std::string_view table, std::string_view index) {
    return std::string(table) + "." + std::string(index);
}

struct StateRow {
    std::string_view state;  ///< an SQLSTATE or its class, or words of the message
    ServerError number;
};

constexpr StateRow kStates[] = {
    {"08001", errorNoServer},
    {"08", errorNetwork},
    {"57P", errorNetwork},
    {"22001", errorTruncated},
    {"22003", errorNumericOverflow},
    {"22007", errorDate},
    {"22008", errorDate},
    {"22P02", errorTypeConversion},
    {"23502", errorNullRefused},
    {"23505", errorDuplicateKey},
    {"25006", errorReadOnly},
    {"28", errorLoginFailed},
    {"3D000", errorNoCatalog},
    {"40P01", errorDeadlock},
    {"42501", errorNoPermission},
    {"42601", errorSyntax},
    {"42701", errorColumnExists},
    {"42703", errorColumnInvalid},
    {"42P01", errorObjectInvalid},
    {"42P04", errorCatalogExists},
    {"42P07", errorObjectExists},
    {"53100", errorCatalogFull},
    {"55P03", errorLockTimeout},
};

/// Refusals of a connect, which the driver tells by their texts only.
constexpr StateRow kRefusals[] = {
    {"authentication failed", errorLoginFailed},
    {"no password supplied", errorLoginFailed},
    {"FATAL:  role ", errorLoginFailed},
    {"FATAL:  database ", errorNoCatalog},
    {"FATAL:  permission denied for database", errorNoCatalog},
};

/// The first name that a message quotes.
std::string quotedName(std::string_view text) {
    const std::size_t open = text.find('"');
    const std::size_t close = open == std::string_view::npos ? open : text.find('"', open + 1);
    return std::string(
        close == std::string_view::npos ? std::string_view()
                                        : text.substr(open + 1, close - open - 1)
    );
}

}  // namespace

const Dialect kPostgresDialect = {
    quoteName,
    nullptr,
    nullptr,
    nullptr,
    typeText,
    literal,
    "",
    " NULLS FIRST",
    " DESC NULLS LAST",
    "ctid",
    false,
    ") AS part",
    " LIMIT {limit}",
    "",
    "CREATE TABLE {table} ({columns})",
    "CREATE {unique}INDEX {index} ON {table} ({columns}) NULLS NOT DISTINCT",
    "DROP INDEX {index}",
    "DROP TABLE {table}",
    "ALTER TABLE {table} ADD COLUMN {definition}",
    "ALTER TABLE {table} ALTER COLUMN {column} TYPE {type}, ALTER COLUMN {column} {nullable}",
    "ALTER TABLE {table} RENAME COLUMN {column} TO {name}",
    "BEGIN",
    "COMMIT",
    "ROLLBACK",
    indexName,
};

PlatformError postgresError(std::string_view state, std::string_view text) {
    for (const StateRow& refusal : kRefusals) {
        if (state.starts_with("08") && text.find(refusal.state) != std::string_view::npos) {
            const std::string_view cause =
                text.substr(std::min(text.find("failed: "), text.size()));
            return serverError(refusal.number, {quotedName(cause), cause});
        }
    }
    const auto* row =
        std::find_if(std::begin(kStates), std::end(kStates), [&](const StateRow& each) {
            return state.starts_with(each.state);
        });
    if (row == std::end(kStates)) {
        return serverError(errorUnspecified, {text});
    }
    const std::string name = quotedName(text);
    if (row->number != errorDuplicateKey) {
        return serverError(row->number, {name.empty() ? text : name, text});
    }
    const std::size_t point = std::min(name.find('.'), name.size());
    const std::string table = name.substr(0, point);
    const std::string index = name.substr(std::min(point + 1, name.size()));
    const bool isMaking = text.find("could not create") != std::string_view::npos;
    return serverError(isMaking ? errorDuplicatesFound : errorDuplicateKey, {table, index});
}

}  // namespace platform
