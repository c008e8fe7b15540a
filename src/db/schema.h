#pragma once

#include "util/legacy_bool.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the engine knows of one table.
struct TableDescriptor {
    std::string TableUpper;   ///< title in capitals
    std::string FileName;     ///< file of the predecessor format, for display
    std::string TableName;    ///< name in SQL
    std::string AliasName;    ///< kept equal to TableName
    LegacyBool IsOpen = kNo;  ///< result of the last open
    std::int16_t Reserved = 0;
    std::int16_t KeyParts = 0;  ///< parts of the key stored last
    std::int16_t OperationFlag = 0;
    std::string CreateSQL;  ///< "Create Table" statement
    std::string IndexSQL;   ///< index statements, each with its ";"
};

namespace db {

/// The descriptors by table number.
class TableDescriptors {
public:
    /// Descriptor of `table`. @throws util::BasicError 9 for a number outside 0 to 99.
    TableDescriptor& at(std::int64_t table);
    TableDescriptor& operator[](std::int64_t table) { return at(table); }
    void reset();

private:
    std::vector<TableDescriptor> descriptors_ = std::vector<TableDescriptor>(100);
};

/// Column names of the SQL table `name` in order; empty when it cannot be read.
std::vector<std::string> columnNames(const std::string& name);
/// True when the SQL table `name` has a column called `column` (letter case does not matter).
bool hasColumn(const std::string& name, std::string_view column);

}  // namespace db

extern db::TableDescriptors DBTableDescriptors;

/// Makes the table and its indexes; connects first when the connection is not open. Every piece of
/// the index script is run, failures are passed over.
/// @return always kNo: ask gfbDB_TableExists.
LegacyBool gfbDB_CreateTable(std::int16_t table);
/// Adds a column to the SQL table of `table`. A failure is logged and told in a box.
/// @return kYes when the statement gave an error number (its low word is not 0).
/// Kept: the result says the opposite of its name; callers look for kNo.
LegacyBool gfbDB_AddColumn(std::int16_t table, const std::string& name, const std::string& type);
/// Renames a column; nothing is shown when that fails, so it doubles as a test for an older table.
/// @return kNo when the server refused.
LegacyBool gfbDB_RenameColumn(
    const std::string& tableName, const std::string& oldName, const std::string& newName
);
/// True when the catalog has a table of the descriptor's name; errors count as no.
LegacyBool gfbDB_TableExists(const TableDescriptor& descriptor);
