#pragma once

#include "db/NuvDBSM_MSDE.h"
#include "db/column_table.h"
#include "db/schema.h"
#include "platform/ports/data.h"
#include "util/legacy_bool.h"
#include "util/value.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What every table module is made of: generators over its column table, and the routines that the
/// dispatch by table number finds.
namespace db {

/// Routines of one table module; those that a table does not have are null.
struct TableRoutines {
    /// Sets the key `keyNumber` from the clean copies.
    void (*prepareKey)(std::int16_t table, std::int16_t keyNumber) = nullptr;
    void (*quote)() = nullptr;          ///< makes the clean copies of the record's fields
    std::string (*values)() = nullptr;  ///< value list of an insert, from the clean copies
    void (*fromRow)(std::int16_t table) = nullptr;
    void (*toRow)(std::int16_t table) = nullptr;
    void (*forget)() = nullptr;  ///< puts the record back to its start
};

/// Names under which a table is known, besides its SQL name.
struct TableTitles {
    std::string_view upper;
    std::string_view file;
};

/// The routines of the modules.
const TableRoutines& commonRoutines();
const TableRoutines& inventoryRoutines();
const TableRoutines& namesRoutines();
const TableRoutines& salesCodeRoutines();
const TableRoutines& tenderTypesRoutines();
const TableRoutines& vendorsRoutines();
const TableRoutines& poHistoryRoutines();
const TableRoutines& poHeaderRoutines();
const TableRoutines& poLineRoutines();
const TableRoutines& salesHeadRoutines();
const TableRoutines& salesItemRoutines();
const TableRoutines& logInSecRoutines();
const TableRoutines& notesRoutines();

/// Routines of the table `number`; null when no module has that number.
const TableRoutines* routinesFor(std::int16_t number);
/// Puts the records of all modules back to their start.
void forgetRecords();

/// Rows in hand of a table. @throws platform::PlatformError 91 when it was never opened,
/// util::BasicError 9 for a number that is no table's.
platform::RowSet& rowsOf(std::int16_t table);

/// Value list of an insert: texts and moments between quotes, numbers bare, no value as NULL.
std::string insertValues(const std::vector<util::Value>& copies);
/// One part of a key, its column as an ordinal.
struct ResolvedPart {
    std::int16_t key;
    std::int16_t ordinal;  ///< of the column that the statement names
    std::int16_t source;   ///< of the column that gives the value
};
/// Stores the parts of `keyNumber` with the values of `copies`; a number that has no parts leaves
/// the stored key as it is.
void setKeyFrom(
    std::int16_t table,
    std::int16_t keyNumber,
    std::span<const ResolvedPart> parts,
    const std::vector<util::Value>& copies
);
/// Fills the names of a descriptor and marks the table as not open.
void describe(std::int16_t table, const TableTitles& titles, const std::string& sqlName);
/// Index statements of `indexes` with the descriptor's SQL name in the place of "<table>".
std::vector<std::string>
indexStatements(std::int16_t table, std::span<const std::string_view> indexes);
/// Makes the table when the catalog has none of its name. @return true when it had none.
bool makeIfMissing(std::int16_t table);
/// A text that is safe between single quotes.
std::string cleanText(const std::string& text, Quotes quotes);

/// Clean copies of a record's fields in column order.
template <class Record, class Table>
std::vector<util::Value> cleanCopies(const Record& record, const Table& table) {
    std::vector<util::Value> copies;
    copies.reserve(Table::columnCount());
    table.forEachColumn([&](const auto& column, std::size_t) {
        copies.push_back(valueOf(record.*column.field));
        if (auto* text = std::get_if<std::string>(&copies.back())) {
            *text = cleanText(*text, column.quotes);
        }
    });
    return copies;
}

/// Copies the row in hand into the record; a row that is too short leaves the record alone.
template <class Record, class Table>
void readRow(Record& record, const platform::RowSet& rows, const Table& table) {
    Record fresh;
    table.forEachColumn([&](const auto& column, std::size_t ordinal) {
        store(fresh.*column.field, rows.value(static_cast<int>(ordinal)));
    });
    record = fresh;
}

/// Copies the record into the row in hand.
template <class Record, class Table>
void writeRow(std::int16_t number, const Record& record, const Table& table) {
    table.forEachColumn([&](const auto& column, std::size_t ordinal) {
        gpDB_SetField(number, static_cast<std::int16_t>(ordinal), valueOf(record.*column.field));
    });
}

/// A record with blank texts and zeros.
template <class Record, class Table>
Record clearedRecord(const Table& table) {
    Record record;
    table.forEachColumn([&](const auto& column, std::size_t) {
        store(record.*column.field, util::Value());
    });
    return record;
}

/// Columns of the create text.
template <class Table>
std::string columnTexts(const Table& table) {
    std::string text;
    table.forEachColumn([&](const auto& column, std::size_t ordinal) {
        text.append(ordinal == 0 ? "" : ", ").append(column.name).append(" ").append(column.type);
    });
    return text;
}

/// The key list with its columns as ordinals.
template <class Table>
std::vector<ResolvedPart> resolved(std::span<const KeyPart> parts, const Table& table) {
    std::vector<ResolvedPart> result;
    result.reserve(parts.size());
    for (const KeyPart& part : parts) {
        const std::int16_t own = table.ordinalOf(part.column);
        result.push_back({part.key, part.ordinal == kOwnOrdinal ? own : part.ordinal, own});
    }
    return result;
}

/// Fills the descriptor of `number`: names, create text and index script.
template <class Table>
void define(
    std::int16_t number,
    const Table& table,
    const TableTitles& titles,
    std::span<const std::string_view> indexes,
    const std::string& sqlName = {}
) {
    describe(number, titles, sqlName.empty() ? std::string(table.name) : sqlName);
    TableDescriptor& descriptor = DBTableDescriptors[number];
    descriptor.CreateSQL =
        "Create Table " + descriptor.TableName + " (" + columnTexts(table) + ");";
    descriptor.IndexSQL.clear();
    for (const std::string& statement : indexStatements(number, indexes)) {
        descriptor.IndexSQL += statement;
    }
}

/// The clean copies of a record: one set for each module.
template <auto& record>
std::vector<util::Value>& copiesOf() {
    static std::vector<util::Value> copies;
    return copies;
}

/// The routines of a module: its column table, key list and record.
template <const auto& kTable, const auto& kKeys, auto& record>
constexpr TableRoutines routinesOf() {
    using Record = std::remove_reference_t<decltype(record)>;
    static_assert(namesColumnsOf(kTable, kKeys), "a key names a column that is not the table's");
    return {
        .prepareKey =
            [](std::int16_t number, std::int16_t keyNumber) {
                static const std::vector<ResolvedPart> parts = resolved(kKeys, kTable);
                setKeyFrom(number, keyNumber, parts, copiesOf<record>());
            },
        .quote = [] { copiesOf<record>() = cleanCopies(record, kTable); },
        .values = [] { return insertValues(copiesOf<record>()); },
        .fromRow = [](std::int16_t number) { readRow(record, rowsOf(number), kTable); },
        .toRow = [](std::int16_t number) { writeRow(number, record, kTable); },
        .forget =
            [] {
                record = Record();
                copiesOf<record>().clear();
            },
    };
}

/// The routines of a table that is only appended to.
constexpr TableRoutines appendOnly(TableRoutines routines) {
    routines.prepareKey = nullptr;
    routines.fromRow = nullptr;
    routines.toRow = nullptr;
    return routines;
}

/// The key list of a table without keys.
inline constexpr std::span<const KeyPart> kNoKeys;

}  // namespace db
