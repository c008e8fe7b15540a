#pragma once

#include "platform/ports/management.h"
#include "platform/ports/platform_error.h"
#include "platform/sql_dialect/dialect.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// What a driver says of a failure, without the names of drivers in brackets in front.
struct Diagnostic {
    std::string state;  ///< SQLSTATE
    std::int32_t native = 0;
    std::string text;
};

/// Keywords of a connection text with their values, in order.
using ConnectionWords = std::vector<std::pair<std::string, std::string>>;

/// What tells one kind of server from another. In the texts {table} stands for the name of a table
/// as part of a literal.
struct ServerKind {
    /// The store's dialect; null: a server that gets the statements as they stand.
    const Dialect* dialect;
    /// Keywords of its drivers for "host" or "host\instance"; an empty port is the driver's.
    ConnectionWords (*address
    )(const std::string& driver, const std::string& source, const std::string& port);
    const char* homeCatalog;  ///< catalog that a management session opens; empty: the login's own
    const char* catalogs;     ///< a query: name, and 1 for one of the server's own
    const char* tables;       ///< a query in a catalog: name, and 1 for one of the server's own
    /// A query: name, type, 1 when it takes NULL, default. Null where nobody asks for columns.
    const char* columns;
    const char* indexes;  ///< a query: index, 1 when it is unique, column; in order
    PlatformError (*error)(const Diagnostic& diagnostic);
    /// Statements that make the catalog, and those that the new catalog itself is told.
    std::vector<std::string> (*makeCatalog)(const CatalogFiles& files);
    std::vector<std::string> (*furnishCatalog)();
};

/// The kind of server that a driver of this name speaks with.
const ServerKind& serverKind(std::string_view driver);

}  // namespace platform
