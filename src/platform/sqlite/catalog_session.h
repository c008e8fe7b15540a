#pragma once

#include "platform/sql_dialect/statement_cache.h"
#include "platform/sqlite/catalog_schema.h"
#include "platform/sqlite/database.h"

#include <string>

namespace platform {

/// An open catalog with what is known of its tables; shared by a connection and its row sets.
struct CatalogSession {
    CatalogSession(const std::string& file, const std::string& catalog, int timeoutSeconds)
        : database(file, catalog, timeoutSeconds, Database::Mode::existing),
          schema(database),
          queries(schema, kEmbeddedDialect) {}

    /// Runs a statement that changes rows of `table`. A row that is there already is told in the
    /// server's words, with the name of the index. @throws PlatformError.
    void change(
        const TableSchema& table, const std::string& statement, const std::vector<Stored>& values
    );

    Database database;
    CatalogSchema schema;
    StatementCache queries;
    int transactionDepth = 0;  ///< BEGIN TRANSACTION statements without their end
};

}  // namespace platform
