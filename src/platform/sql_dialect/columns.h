#pragma once

#include "util/value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

enum class ColumnKind : std::uint8_t {
    text,
    smallInt,
    integer,
    bigInt,
    real,
    floating,
    decimal,
    dateTime,
    date
};

/// What a statement has to know of a column. Names and types are as declared.
struct ColumnInfo {
    std::string name;
    std::string type;  ///< as "CHAR (15)"
    ColumnKind kind = ColumnKind::text;
    std::size_t width = 0;  ///< characters of a text column; 0: no limit
    bool padded = false;    ///< CHAR: reads back filled with blanks to its width
    int precision = 18;     ///< digits of a DECIMAL in all
    int scale = 0;          ///< and behind the point
    bool nullable = true;
    std::string defaultText{};  ///< literal as it stands in the declaration; empty: none
};

/// What the reading of a column's values asks of it most.
struct ColumnForm {
    ColumnKind kind;
    std::uint32_t
        cut;  ///< characters that a reader gets of a text at most: CHAR is cut to its width

    explicit ColumnForm(const ColumnInfo& column);
};

/// Columns of a set of rows. Their forms stand close together: a row with many columns is read in
/// less time.
class ColumnList {
public:
    ColumnList() = default;
    explicit ColumnList(std::vector<ColumnInfo> infos);

    [[nodiscard]] const std::vector<ColumnInfo>& infos() const { return infos_; }
    [[nodiscard]] const std::vector<ColumnForm>& forms() const { return forms_; }

private:
    std::vector<ColumnInfo> infos_;
    std::vector<ColumnForm> forms_;
};

struct IndexInfo {
    std::string name;  ///< without the table's name
    bool unique = false;
    std::vector<std::string> columns{};
    std::string storeName{};  ///< its name in the store, where that is known
};

struct TableSchema {
    std::string name;
    std::vector<ColumnInfo> columns;
    std::vector<IndexInfo> indexes;

    /// The column called `column` in any letter case; null when there is none.
    [[nodiscard]] const ColumnInfo* find(std::string_view column) const;
    /// The same. @throws PlatformError 207.
    [[nodiscard]] const ColumnInfo& column(std::string_view column) const;
    [[nodiscard]] const IndexInfo* findIndex(std::string_view index) const;
};

/// The tables that statements are written for.
class SchemaView {
public:
    virtual ~SchemaView() = default;
    /// The table called `name` in any letter case; null when there is none.
    [[nodiscard]] virtual const TableSchema* table(std::string_view name) const = 0;
};

/// A value in the form in which a store keeps it: text in code page 1252, money as the nearest
/// double (it has at most 15 digits, so the decimal form comes back exactly) or as decimal text,
/// moments as text.
using Stored = std::variant<std::monostate, std::int64_t, double, std::string>;
/// The same with a text that lies elsewhere.
using StoredView = std::variant<std::monostate, std::int64_t, double, std::string_view>;
StoredView viewOf(const Stored& value);
Stored ownStored(const StoredView& value);

/// Fills kind, width, precision and scale from `type`; a type that is not known leaves `text`
/// without width. @return false when it is not known.
bool readType(ColumnInfo& column);

/// A literal of a statement, or any value in the text form of a literal.
struct Literal {
    bool isNull = false;
    bool isText = false;  ///< stood between quotes
    std::string text;
    int place = kNowhere;  ///< which of the texts of a statement it is, counted from 0

    static constexpr int kNowhere = -1;
};

/// The value that the column keeps of a literal: texts without blanks at the end, whole numbers in
/// range, decimals rounded half away from zero to the column's scale, REAL as a 32-bit float.
/// @throws PlatformError 220, 241, 244, 245, 248, 8114, 8115, 8152. NULL passes.
Stored toStored(const ColumnInfo& column, const Literal& literal);
/// The same for a value of a record.
Stored toStored(const ColumnInfo& column, const util::Value& value);

/// The same for a store that keeps decimals exactly: they stay decimal text, which the store
/// rounds.
Stored toExact(const ColumnInfo& column, const Literal& literal);
Stored toExact(const ColumnInfo& column, const util::Value& value);

/// What a reader gets of a kept value: CHAR padded, DECIMAL as money, REAL as float, moments.
/// @throws PlatformError 245 for a value of another writer that the column cannot hold.
util::Value fromStored(const ColumnInfo& column, const StoredView& value);
/// The same without a copy of the text, which is not padded. Not for a number that stands in a text
/// column: its text is nowhere yet.
util::ValueView viewFromStored(const ColumnInfo& column, const StoredView& value);
/// The amount that a number in a DECIMAL column is. @throws PlatformError 8115 for one too large.
util::Money moneyFromStored(const ColumnInfo& column, double number);

/// The server's name of a kind, as its messages show it: "int".
std::string_view kindName(ColumnKind kind);

}  // namespace platform
