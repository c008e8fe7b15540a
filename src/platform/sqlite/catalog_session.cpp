#include "platform/sqlite/catalog_session.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/tokens.h"

#include <algorithm>
#include <string_view>

namespace platform {

namespace {

/// The unique index that the store's message means: it names the index, or else the columns.
std::string duplicateIndex(const TableSchema& table, const std::string& cause) {
    const auto matches = [&](const IndexInfo& index) {
        if (cause.find("'" + index.storeName + "'") != std::string::npos) {
            return true;
        }
        std::string columns;
        for (const auto& column : index.columns) {
            columns += (columns.empty() ? "" : ", ") + table.name + "." + column;
        }
        const std::string_view text(cause);
        return index.unique && text.size() >= columns.size() &&
               sameSqlName(text.substr(text.size() - columns.size()), columns) &&
               text.substr(0, text.size() - columns.size()).ends_with(": ");
    };
    const auto found = std::find_if(table.indexes.begin(), table.indexes.end(), matches);
    return found == table.indexes.end() ? std::string("PRIMARY") : found->name;
}

}  // namespace

void CatalogSession::change(
    const TableSchema& table, const std::string& statement, const std::vector<Stored>& values
) {
    try {
        database.run(statement, values);
    } catch (const PlatformError& error) {
        if (error.number() != errorDuplicateKey) {
            throw;
        }
        throw serverError(
            errorDuplicateKey, {table.name, duplicateIndex(table, error.description())}
        );
    }
}

}  // namespace platform
