#pragma once

#include "db/record_fields.h"
#include "util/legacy_bool.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>

/// A SQL table as data: one row for each column. Everything that a table module does (create text,
/// read, write, clean, values, keys) walks these rows.
namespace db {

/// What becomes of a single quote in a text on its way into a statement.
enum class Quotes : std::uint8_t { doubled, blanked };

/// One column: its name and type as they stand in the create text, and the record's field.
template <class Record, class Field>
struct Column {
    std::string_view name;
    std::string_view type;
    Field Record::*field;
    Quotes quotes;
};

namespace detail {

consteval char small(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

/// True when a type text begins with `word`, in any letter case.
consteval bool beginsWith(std::string_view type, std::string_view word) {
    if (type.size() < word.size()) {
        return false;
    }
    for (std::size_t index = 0; index < word.size(); ++index) {
        if (small(type[index]) != word[index]) {
            return false;
        }
    }
    return true;
}

/// The number in the type's first parentheses.
consteval std::size_t widthOf(std::string_view type) {
    std::size_t width = 0;
    for (const char character : type.substr(type.find('(') + 1)) {
        if (character == ')') {
            break;
        }
        if (character != ' ') {
            width = width * 10 + static_cast<std::size_t>(character - '0');
        }
    }
    return width;
}

template <class Field>
consteval bool fits(std::string_view type) {
    switch (kindOf<Field>()) {
    case FieldKind::small:
        return beginsWith(type, "smallint");
    case FieldKind::whole:
        return beginsWith(type, "int");
    case FieldKind::wide:
        return beginsWith(type, "bigint");
    case FieldKind::single:
        return beginsWith(type, "real");
    case FieldKind::money:
        return beginsWith(type, "decimal") || beginsWith(type, "numeric");
    case FieldKind::moment:
        return beginsWith(type, "date");
    default:
        return beginsWith(type, "char") && widthOf(type) == sizeof(Field);
    }
}

}  // namespace detail

/// A row of a column table. Does not compile when the field's type or width is not the column's.
template <class Record, class Field>
consteval Column<Record, Field> column(
    std::string_view name,
    std::string_view type,
    Field Record::*field,
    Quotes quotes = Quotes::doubled
) {
    if (!detail::fits<Field>(type)) {
        throw "the field does not hold what the column's type says";
    }
    return {name, type, field, quotes};
}

template <class Record, class... Fields>
struct Table {
    using RecordType = Record;

    std::string_view name;  ///< the table's usual SQL name
    std::tuple<Column<Record, Fields>...> columns;

    /// Calls `visit(column, ordinal)` for each column in table order.
    template <class Visit>
    constexpr void forEachColumn(Visit visit) const {
        std::apply(
            [&](const auto&... each) {
                std::size_t ordinal = 0;
                (visit(each, ordinal++), ...);
            },
            columns
        );
    }
    static constexpr std::size_t columnCount() { return sizeof...(Fields); }
    /// Ordinal of the column called `wanted`; -1 when there is none.
    constexpr std::int16_t ordinalOf(std::string_view wanted) const {
        std::int16_t found = -1;
        forEachColumn([&](const auto& column, std::size_t ordinal) {
            if (column.name == wanted) {
                found = static_cast<std::int16_t>(ordinal);
            }
        });
        return found;
    }
};

template <class Record, class... Fields>
consteval Table<Record, Fields...> table(std::string_view name, Column<Record, Fields>... columns) {
    return {name, {columns...}};
}

/// The ordinal of the part's column.
inline constexpr std::int16_t kOwnOrdinal = -1;

/// One part of the key `key`: the column whose value and place it takes.
struct KeyPart {
    std::int16_t key;
    std::string_view column;
    std::int16_t ordinal = kOwnOrdinal;
};

/// True when the table has every column that the key list names.
template <class Table>
consteval bool namesColumnsOf(const Table& table, std::span<const KeyPart> parts) {
    return std::ranges::all_of(parts, [&](const KeyPart& part) {
        return table.ordinalOf(part.column) >= 0;
    });
}

}  // namespace db
