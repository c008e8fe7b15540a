#include "platform/odbc/server_kind.h"

#include "platform/sql_dialect/server_error.h"

#include <algorithm>
#include <cctype>

namespace platform {

namespace {

bool holds(std::string_view text, std::string_view word) {
    const auto same = [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) ==
               std::tolower(static_cast<unsigned char>(b));
    };
    return std::search(text.begin(), text.end(), word.begin(), word.end(), same) != text.end();
}

std::string hostOf(const std::string& source) {
    return source.substr(0, source.find('\\'));
}

std::string doubled(std::string_view text, char quote) {
    std::string result;
    for (const char c : text) {
        result.append(c == quote ? 2 : 1, c);
    }
    return result;
}

// SQL Server -----------------------------------------------------------------

/// The server's own port wins over an instance, which would have to be asked for first.
ConnectionWords
sqlServerAddress(const std::string& driver, const std::string& source, const std::string& port) {
    if (holds(driver, "FreeTDS") || holds(driver, "tdsodbc")) {
        // Texts pass between driver and link without loss; the server's code page is its affair.
        // A server that knows no more than an older version answers with that one. Without a word
        // of the version the driver would try one after the other, and not keep to the time limit
        // from the second on.
        ConnectionWords words = {{"ClientCharset", "UTF-8"}, {"TDS_Version", "7.4"}};
        words.emplace_back("Server", port.empty() ? source : hostOf(source));
        if (!port.empty()) {
            words.emplace_back("Port", port);
        }
        return words;
    }
    return {{"Server", port.empty() ? source : hostOf(source) + "," + port}};
}

struct StateRow {
    std::string_view state;
    std::int32_t number;
};

/// Failures of driver and network, which have no number of the server's.
constexpr StateRow kSqlServerStates[] = {
    {"08001", errorNoServer}, {"08", errorNetwork}, {"28", errorLoginFailed}};

PlatformError sqlServerError(const Diagnostic& diagnostic) {
    if (diagnostic.native != 0) {
        return {diagnostic.native, diagnostic.text};
    }
    for (const StateRow& row : kSqlServerStates) {
        if (std::string_view(diagnostic.state).starts_with(row.state)) {
            return {row.number, diagnostic.text};
        }
    }
    return {errorUnspecified, diagnostic.text};
}

std::vector<std::string> makeSqlServerCatalog(const CatalogFiles& files) {
    const std::string name = "[" + doubled(files.name, ']') + "]";
    if (files.dataFile.empty()) {
        return {"CREATE DATABASE " + name};  // the server knows a folder of its own
    }
    const std::string data = "FILENAME='" + doubled(files.dataFile, '\'') + "'";
    const std::string log = "FILENAME='" + doubled(files.logFile, '\'') + "'";
    if (files.attachData) {
        return {
            "CREATE DATABASE " + name + " ON (" + data + ")" +
            (files.attachLog ? ", (" + log + ")" : "") + " FOR ATTACH"};
    }
    return {
        "CREATE DATABASE " + name + " ON PRIMARY (NAME=" + name + ", " + data +
        ", FILEGROWTH=0) LOG ON (NAME=[" + doubled(files.logicalLog, ']') + "], " + log + ")"};
}

std::vector<std::string> nothing() {
    return {};
}

constexpr ServerKind kSqlServer = {
    nullptr,
    sqlServerAddress,
    "",
    "SELECT name, CASE WHEN name IN ('master','model','msdb','tempdb') THEN 1 ELSE 0 END FROM "
    "master.dbo.sysdatabases ORDER BY name",
    "SELECT name, CASE xtype WHEN 'S' THEN 1 ELSE 0 END FROM sysobjects WHERE xtype IN ('U','S') "
    "ORDER BY name",
    nullptr,
    "SELECT i.name, INDEXPROPERTY(i.id,i.name,'IsUnique'), c.name FROM sysindexes i JOIN "
    "sysindexkeys k ON k.id=i.id AND k.indid=i.indid JOIN syscolumns c ON c.id=k.id AND "
    "c.colid=k.colid WHERE i.id=OBJECT_ID('{table}') AND i.indid BETWEEN 1 AND 254 ORDER BY "
    "i.indid, k.keyno",
    sqlServerError,
    makeSqlServerCatalog,
    nothing,
};

// PostgreSQL -----------------------------------------------------------------

ConnectionWords
postgresAddress(const std::string& /*driver*/, const std::string& source, const std::string& port) {
    return {
        {"Server", hostOf(source)},
        {"Port", port.empty() ? "5432" : port},
        {"MaxVarcharSize", "8000"},
        // The alternatives of a step are taken one after the other.
        {"ConnSettings", "set max_parallel_workers_per_gather=0"}};
}

PlatformError postgresErrorOf(const Diagnostic& diagnostic) {
    return postgresError(diagnostic.state, diagnostic.text);
}

/// The files are the server's affair.
std::vector<std::string> makePostgresCatalog(const CatalogFiles& files) {
    return {"CREATE DATABASE \"" + doubled(files.name, '"') + "\" TEMPLATE template0"};
}

std::vector<std::string> furnishPostgresCatalog() {
    return {"CREATE COLLATION \"SERVER\" (provider=icu, locale='und-u-ks-level2', "
            "deterministic=false)"};
}

constexpr ServerKind kPostgres = {
    &kPostgresDialect,
    postgresAddress,
    "postgres",
    "SELECT datname, CASE WHEN datistemplate OR datname='postgres' THEN 1 ELSE 0 END FROM "
    "pg_database ORDER BY datname",
    "SELECT relname, 0 FROM pg_class WHERE relkind='r' AND "
    "relnamespace='public'::regnamespace ORDER BY oid",
    "SELECT a.attname, replace(format_type(a.atttypid,a.atttypmod),'character varying','varchar'), "
    "CASE WHEN a.attnotnull THEN 0 ELSE 1 END, coalesce(pg_get_expr(d.adbin,d.adrelid),'') FROM "
    "pg_attribute a LEFT JOIN pg_attrdef d ON d.adrelid=a.attrelid AND d.adnum=a.attnum WHERE "
    "a.attrelid=(SELECT oid FROM pg_class WHERE relname='{table}' AND "
    "relnamespace='public'::regnamespace) AND a.attnum>0 AND NOT a.attisdropped ORDER BY a.attnum",
    "SELECT c.relname, CASE WHEN i.indisunique THEN 1 ELSE 0 END, a.attname FROM pg_index i JOIN "
    "pg_class c ON c.oid=i.indexrelid JOIN pg_attribute a ON a.attrelid=i.indexrelid WHERE "
    "i.indrelid=(SELECT oid FROM pg_class WHERE relname='{table}' AND "
    "relnamespace='public'::regnamespace) ORDER BY c.oid, a.attnum",
    postgresErrorOf,
    makePostgresCatalog,
    furnishPostgresCatalog,
};

}  // namespace

const ServerKind& serverKind(std::string_view driver) {
    const bool isPostgres = holds(driver, "postgres") || holds(driver, "psqlodbc");
    return isPostgres ? kPostgres : kSqlServer;
}

}  // namespace platform
