#pragma once

#include "db/NuvDBSM_MSDE.h"
#include "db/column_table.h"
#include "db/schema.h"
#include "platform/ports/data.h"
#include "util/legacy_bool.h"
#include "util/value.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// What every table module is made of: generators over its column table, and the routines that the
/// dispatch by table number finds.
namespace db {

/// Routines of one table module; those that a table does not have are null.
struct TableRoutines {
    /// Sets the key `keyNumber` from clean copies of the record's fields.
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
/// A field of a record without its type: where it stands, and how it is filled and given. One loop
/// over these serves every table.
struct FieldSlot {
    std::size_t offset;  ///< bytes from the record's beginning
    Quotes quotes;
    void (*fill)(void* field, const util::ValueView& value);
    util::Value (*give)(const void* field);
};
/// The fields of a record in column order.
using FieldSlots = std::span<const FieldSlot>;

/// Fills the fields of a record from the values of a row.
void fillFields(FieldSlots fields, void* record, std::span<const util::ValueView> values);
/// Copies the fields of a record into the row in hand.
void writeFields(std::int16_t table, FieldSlots fields, const void* record);
/// The value of a field, a text without harm between single quotes.
util::Value cleanCopy(const FieldSlot& field, const void* record);
/// The same of all fields.
std::vector<util::Value> cleanCopies(FieldSlots fields, const void* record);
/// Stores the parts of `keyNumber` with the values of the record's fields; a number that has no
/// parts leaves the stored key as it is.
void setKeyFrom(
    std::int16_t table,
    std::int16_t keyNumber,
    std::span<const ResolvedPart> parts,
    FieldSlots fields,
    const void* record
);
/// Fills the names of a descriptor and marks the table as not open.
void describe(std::int16_t table, const TableTitles& titles, const std::string& sqlName);
/// Index statements of `indexes` with the descriptor's SQL name in the place of "<table>".
std::vector<std::string>
indexStatements(std::int16_t table, std::span<const std::string_view> indexes);
/// Makes the table when the catalog has none of its name. @return true when it had none.
bool makeIfMissing(std::int16_t table);

template <class Field>
void fillField(void* field, const util::ValueView& value) {
    read(*static_cast<Field*>(field), value);
}

template <class Field>
util::Value giveField(const void* field) {
    return valueOf(*static_cast<const Field*>(field));
}

/// The fields that the columns of a table name.
template <const auto& kTable>
FieldSlots fieldsOf() {
    static const auto kFields = [] {
        const typename std::decay_t<decltype(kTable)>::RecordType record;
        const auto* begin = reinterpret_cast<const std::byte*>(&record);
        std::vector<FieldSlot> fields;
        kTable.forEachColumn([&](const auto& column, std::size_t) {
            const auto& field = record.*column.field;
            using Field = std::decay_t<decltype(field)>;
            const auto offset = reinterpret_cast<const std::byte*>(&field) - begin;
            fields.push_back(
                {static_cast<std::size_t>(offset),
                 column.quotes,
                 &fillField<Field>,
                 &giveField<Field>}
            );
        });
        return fields;
    }();
    return kFields;
}

/// Copies the row in hand into the record; a row that is too short leaves the record alone.
template <const auto& kTable, class Record>
void readRow(Record& record, const platform::RowSet& rows) {
    std::array<util::ValueView, kTable.columnCount()> values;
    rows.readRow(values);
    Record fresh;
    fillFields(fieldsOf<kTable>(), &fresh, values);
    record = fresh;
}

/// A record with blank texts and zeros.
template <const auto& kTable>
auto clearedRecord() {
    typename std::decay_t<decltype(kTable)>::RecordType record;
    const std::array<util::ValueView, kTable.columnCount()> nothing;
    fillFields(fieldsOf<kTable>(), &record, nothing);
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
    static_assert(namesColumnsOf(kTable, kKeys), "a key names a column that is not the table's");
    return {
        .prepareKey =
            [](std::int16_t number, std::int16_t keyNumber) {
                static const std::vector<ResolvedPart> parts = resolved(kKeys, kTable);
                setKeyFrom(number, keyNumber, parts, fieldsOf<kTable>(), &record);
            },
        .quote = [] { copiesOf<record>() = cleanCopies(fieldsOf<kTable>(), &record); },
        .values = [] { return insertValues(copiesOf<record>()); },
        .fromRow = [](std::int16_t number) { readRow<kTable>(record, rowsOf(number)); },
        .toRow = [](std::int16_t number) { writeFields(number, fieldsOf<kTable>(), &record); },
        .forget =
            [] {
                record = {};
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
