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
/// The fields of a record in column order, without their types: one loop over these serves every
/// table.
struct RecordLayout {
    std::span<const RecordField> fields;
    std::span<const Quotes> quotes;
};

/// Copies the fields of a record into the row in hand.
void writeFields(std::int16_t table, const RecordLayout& layout, const void* record);
/// The values of the fields, texts without harm between single quotes.
std::vector<util::Value> cleanCopies(const RecordLayout& layout, const void* record);
/// Stores the parts of `keyNumber` with the values of the record's fields; a number that has no
/// parts leaves the stored key as it is.
void setKeyFrom(
    std::int16_t table,
    std::int16_t keyNumber,
    std::span<const ResolvedPart> parts,
    const RecordLayout& layout,
    const void* record
);
/// Fills the names of a descriptor and marks the table as not open.
void describe(std::int16_t table, const TableTitles& titles, const std::string& sqlName);
/// Index statements of `indexes` with the descriptor's SQL name in the place of "<table>".
std::vector<std::string>
indexStatements(std::int16_t table, std::span<const std::string_view> indexes);
/// Makes the table when the catalog has none of its name. @return true when it had none.
bool makeIfMissing(std::int16_t table);

/// The fields that the columns of a table name.
template <const auto& kTable>
const RecordLayout& layoutOf() {
    struct Fields {
        std::vector<RecordField> fields;
        std::vector<Quotes> quotes;
    };
    static const Fields kFields = [] {
        const typename std::decay_t<decltype(kTable)>::RecordType record;
        const auto* begin = reinterpret_cast<const std::byte*>(&record);
        Fields all;
        kTable.forEachColumn([&](const auto& column, std::size_t) {
            const auto& field = record.*column.field;
            using Field = std::decay_t<decltype(field)>;
            const auto offset = reinterpret_cast<const std::byte*>(&field) - begin;
            all.fields.push_back(
                {static_cast<std::uint32_t>(offset), sizeof(Field), kindOf<Field>()}
            );
            all.quotes.push_back(column.quotes);
        });
        return all;
    }();
    static const RecordLayout kLayout = {kFields.fields, kFields.quotes};
    return kLayout;
}

/// A record with blank texts and zeros.
template <const auto& kTable>
auto clearedRecord() {
    typename std::decay_t<decltype(kTable)>::RecordType record;
    for (const RecordField& field : layoutOf<kTable>().fields) {
        fillField(&record, field, {});
    }
    return record;
}

/// Copies the row in hand into the record; a row that is too short leaves the record alone.
template <const auto& kTable, class Record>
void readRecord(Record& record, const platform::RowSet& rows) {
    static const Record kCleared = clearedRecord<kTable>();
    Record fresh = kCleared;
    rows.readRecord(layoutOf<kTable>().fields, &fresh, &fillField);
    record = fresh;
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
                setKeyFrom(number, keyNumber, parts, layoutOf<kTable>(), &record);
            },
        .quote = [] { copiesOf<record>() = cleanCopies(layoutOf<kTable>(), &record); },
        .values = [] { return insertValues(copiesOf<record>()); },
        .fromRow = [](std::int16_t number) { readRecord<kTable>(record, rowsOf(number)); },
        .toRow = [](std::int16_t number) { writeFields(number, layoutOf<kTable>(), &record); },
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
