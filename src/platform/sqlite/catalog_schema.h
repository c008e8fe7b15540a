#pragma once

#include "platform/sql_dialect/columns.h"
#include "platform/sqlite/database.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Names of the tables of a catalog, in order of their creation, without the store's own.
std::vector<std::string> tableNames(const Database& database);

/// The tables of one open catalog; read when they are asked for, and again after any program
/// changed the catalog's structure.
class CatalogSchema : public SchemaView {
public:
    explicit CatalogSchema(const Database& database);

    /// Forgets what was read when the structure has changed since.
    void refresh();
    /// Changes with the structure of the catalog.
    [[nodiscard]] std::int64_t version() const { return seenVersion_; }
    /// Valid until the next refresh().
    [[nodiscard]] const TableSchema* table(std::string_view name) const override;

private:
    const Database& database_;
    Query version_;
    std::int64_t seenVersion_ = -1;
    mutable std::map<std::string, std::unique_ptr<TableSchema>, std::less<>> tables_;
};

/// Makes the indexes that the link's walks need and no index script makes, and makes anew those of
/// other programs that a walk could not use. A catalog that cannot be written stays as it is.
void prepareIndexes(Database& database, CatalogSchema& schema);

/// The one of those indexes that a new table needs at once.
void prepareNewTable(Database& database, CatalogSchema& schema, std::string_view table);

}  // namespace platform
