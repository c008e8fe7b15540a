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

void fillFields(FieldSlots fields, void* record, std::span<const util::ValueView> values) {
    for (std::size_t at = 0; at < fields.size(); ++at) {
        fields[at].fill(static_cast<std::byte*>(record) + fields[at].offset, values[at]);
    }
}

util::Value cleanCopy(const FieldSlot& field, const void* record) {
    util::Value copy = field.give(static_cast<const std::byte*>(record) + field.offset);
    if (auto* text = std::get_if<std::string>(&copy)) {
        *text = gfsDB_QuoteKey(*text, legacyBool(field.quotes == Quotes::doubled));
    }
    return copy;
}

std::vector<util::Value> cleanCopies(FieldSlots fields, const void* record) {
    std::vector<util::Value> copies;
    copies.reserve(fields.size());
    for (const FieldSlot& field : fields) {
        copies.push_back(cleanCopy(field, record));
    }
    return copies;
}

void writeFields(std::int16_t table, FieldSlots fields, const void* record) {
    const auto* begin = static_cast<const std::byte*>(record);
    for (std::size_t at = 0; at < fields.size(); ++at) {
        const util::Value value = fields[at].give(begin + fields[at].offset);
        gpDB_SetField(table, static_cast<std::int16_t>(at), value);
    }
}

void setKeyFrom(
    std::int16_t table,
    std::int16_t keyNumber,
    std::span<const ResolvedPart> parts,
    FieldSlots fields,
    const void* record
) {
    std::vector<KeyPair> pairs;
    for (const ResolvedPart& part : parts) {
        if (part.key == keyNumber) {
            const FieldSlot& field = fields[static_cast<std::size_t>(part.source)];
            pairs.push_back({part.ordinal, cleanCopy(field, record)});
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
