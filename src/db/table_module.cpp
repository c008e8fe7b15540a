#include "db/table_module.h"

#include "config/clsDataPath.h"
#include "core/brvDBSM_Interface.h"
#include "util/basic_error.h"
#include "util/conversions.h"

#include <type_traits>

namespace db {

namespace {

struct ModuleRow {
    std::int16_t number;
    const TableRoutines& (*routines)();
};

constexpr ModuleRow kModules[] = {
    {tableCommon, &commonRoutines},
    {tableInventory, &inventoryRoutines},
    {tableNames, &namesRoutines},
    {tableSalesCode, &salesCodeRoutines},
    {tableTenderTypes, &tenderTypesRoutines},
    {tableVendors, &vendorsRoutines},
    {tablePOHistory, &poHistoryRoutines},
    {tablePOHeader, &poHeaderRoutines},
    {tablePOLine, &poLineRoutines},
    {tableSalesHead, &salesHeadRoutines},
    {tableSalesItem, &salesItemRoutines},
    {tableLogInSec, &logInSecRoutines},
    {tableNotes, &notesRoutines},
};

constexpr char kTablePlace[] = "<table>";

bool standsInQuotes(const util::Value& value) {
    return std::holds_alternative<std::string>(value) ||
           std::holds_alternative<util::DateTime>(value);
}

std::string insertValue(const util::Value& value) {
    if (std::holds_alternative<std::monostate>(value)) {
        return "NULL";
    }
    const std::string text = statementText(value);
    return standsInQuotes(value) ? "'" + text + "'" : text;
}

/// The value of a field, a text without harm between single quotes.
util::Value cleanCopy(const RecordLayout& layout, std::size_t at, const void* record) {
    util::Value copy = fieldValue(record, layout.fields[at]);
    if (auto* text = std::get_if<std::string>(&copy)) {
        *text = gfsDB_QuoteKey(*text, legacyBool(layout.quotes[at] == Quotes::doubled));
    }
    return copy;
}

}  // namespace

const TableRoutines* routinesFor(std::int16_t number) {
    for (const ModuleRow& module : kModules) {
        if (module.number == number) {
            return &module.routines();
        }
    }
    return nullptr;
}

void forgetRecords() {
    for (const ModuleRow& module : kModules) {
        module.routines().forget();
    }
}

std::string insertValues(const std::vector<util::Value>& copies) {
    std::string text;
    for (const util::Value& copy : copies) {
        text.append(text.empty() ? "" : ",").append(insertValue(copy));
    }
    return text;
}

std::vector<util::Value> cleanCopies(const RecordLayout& layout, const void* record) {
    std::vector<util::Value> copies;
    copies.reserve(layout.fields.size());
    for (std::size_t at = 0; at < layout.fields.size(); ++at) {
        copies.push_back(cleanCopy(layout, at, record));
    }
    return copies;
}

void writeFields(std::int16_t table, const RecordLayout& layout, const void* record) {
    for (std::size_t at = 0; at < layout.fields.size(); ++at) {
        const util::Value value = fieldValue(record, layout.fields[at]);
        gpDB_SetField(table, static_cast<std::int16_t>(at), value);
    }
}

void setKeyFrom(
    std::int16_t table,
    std::int16_t keyNumber,
    std::span<const ResolvedPart> parts,
    const RecordLayout& layout,
    const void* record
) {
    std::vector<KeyPair> pairs;
    pairs.reserve(kMaxKeyParts);
    for (const ResolvedPart& part : parts) {
        if (part.key == keyNumber) {
            const auto at = static_cast<std::size_t>(part.source);
            pairs.push_back({part.ordinal, cleanCopy(layout, at, record)});
        }
    }
    if (!pairs.empty()) {
        gpDB_SetKey(table, static_cast<std::int16_t>(pairs.size()), pairs);
    }
}

void describe(std::int16_t table, const TableTitles& titles, const std::string& sqlName) {
    TableDescriptor& descriptor = DBTableDescriptors[table];
    descriptor.TableUpper = titles.upper;
    descriptor.FileName = gDataPath.DataPath + "\\" + std::string(titles.file);
    descriptor.TableName = sqlName;
    descriptor.AliasName = sqlName;
    descriptor.IsOpen = kNo;
    descriptor.Reserved = 0;
}

std::vector<std::string>
indexStatements(std::int16_t table, std::span<const std::string_view> indexes) {
    const std::string name = DBTableDescriptors[table].TableName + " ";
    std::vector<std::string> statements;
    statements.reserve(indexes.size());
    for (const std::string_view index : indexes) {
        statements.push_back(util::replaceAll(index, kTablePlace, name));
    }
    return statements;
}

bool makeIfMissing(std::int16_t table) {
    const TableDescriptor& descriptor = DBTableDescriptors[table];
    // A management session that is away knows no table: what the data connection can read is not
    // new, and gets no first rows.
    if (gfbDB_TableExists(descriptor) != kNo || !columnNames(descriptor.TableName).empty()) {
        return false;
    }
    gfbDB_CreateTable(table);
    return true;
}

}  // namespace db
