#include "db/schema.h"

#include "db/connection.h"
#include "db/statements.h"
#include "util/basic_error.h"
#include "util/conversions.h"

#include <algorithm>

db::TableDescriptors DBTableDescriptors;

namespace {

constexpr std::int32_t kLowWord = 0xFFFF;

}  // namespace

namespace db {

TableDescriptor& TableDescriptors::at(std::int64_t table) {
    if (table < 0 || table >= static_cast<std::int64_t>(descriptors_.size())) {
        throw util::BasicError::of(9);
    }
    return descriptors_[static_cast<std::size_t>(table)];
}

void TableDescriptors::reset() {
    descriptors_.assign(descriptors_.size(), TableDescriptor());
}

std::vector<std::string> columnNames(const std::string& name) {
    std::vector<std::string> names;
    platform::ignoringErrors([&] {
        ensureConnected();
        const auto rows = connection().openRowSet(anyRowStatement(name));
        for (int ordinal = 0; ordinal < rows->fieldCount(); ++ordinal) {
            names.push_back(rows->fieldName(ordinal));
        }
    });
    return names;
}

bool hasColumn(const std::string& name, std::string_view column) {
    const std::vector<std::string> names = columnNames(name);
    return std::any_of(names.begin(), names.end(), [&](const std::string& each) {
        return util::sameName(each, column);
    });
}

}  // namespace db

LegacyBool gfbDB_CreateTable(std::int16_t table) {
    db::ensureConnected();
    const TableDescriptor& descriptor = DBTableDescriptors[table];
    std::vector<std::string> statements = util::split(descriptor.IndexSQL, ';');
    statements.insert(statements.begin(), descriptor.CreateSQL);
    for (const std::string& piece : statements) {
        const std::string statement = util::trim(piece);
        if (util::aboveBlank(statement)) {
            platform::ignoringErrors([&] { db::connection().execute(statement); });
        }
    }
    return kNo;  // Kept: it tells nobody how it went; gfbDB_TableExists does
}

LegacyBool gfbDB_AddColumn(std::int16_t table, const std::string& name, const std::string& type) {
    const std::string statement =
        "ALTER TABLE " + DBTableDescriptors[table].TableName + " ADD " + name + " " + type;
    return legacyBool((gfiDB_ExecuteSQL(statement) & kLowWord) != 0);
}

LegacyBool gfbDB_RenameColumn(
    const std::string& tableName, const std::string& oldName, const std::string& newName
) {
    // Kept: the blank behind the new name; servers that store it are read with names trimmed.
    const std::string statement =
        "sp_RENAME '" + tableName + "." + oldName + "', '" + newName + " ', 'COLUMN'";
    try {
        db::connection().execute(statement);
        return kYes;
    } catch (const platform::PlatformError& error) {
        static_cast<void>(error);  // the table has no such column: nothing to rename
        return kNo;
    }
}

LegacyBool gfbDB_TableExists(const TableDescriptor& descriptor) {
    bool found = false;
    platform::ignoringErrors([&] {
        if (!DBServerSession) {
            return;
        }
        const std::vector<platform::TableInfo> tables = DBServerSession->tables(DBName);
        found = std::any_of(tables.begin(), tables.end(), [&](const platform::TableInfo& table) {
            return !table.isSystem && util::sameName(table.name, descriptor.TableName);
        });
    });
    return legacyBool(found);
}
