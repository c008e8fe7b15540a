#include "platform/sqlite/sqlite_connection.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/tokens.h"
#include "platform/sqlite/catalog_files.h"
#include "platform/sqlite/sqlite_row_set.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace platform {

namespace {

std::string columnList(const TableSchema& table) {
    std::string list;
    for (const auto& column : table.columns) {
        list += (list.empty() ? "" : ",") + kEmbeddedDialect.quoteName(column.name);
    }
    return list;
}

std::string declarations(const TableSchema& table) {
    std::string list;
    for (const auto& column : table.columns) {
        list += (list.empty() ? "" : ", ") + columnDeclaration(column, kEmbeddedDialect);
    }
    return list;
}

/// Refuses a new type that a value of the column does not fit.
void testValues(const Database& database, const TableSchema& table, const ColumnInfo& column) {
    const std::string name = kEmbeddedDialect.quoteName(column.name);
    Query values(
        database, "SELECT DISTINCT " + name + " FROM " + kEmbeddedDialect.quoteName(table.name)
    );
    const ColumnInfo& present = table.column(column.name);
    while (values.step()) {
        static_cast<void>(toStored(column, fromStored(present, viewOf(values.value(0)))));
    }
}

}  // namespace

SqliteConnection::SqliteConnection(std::function<std::string()> folder)
    : folder_(std::move(folder)) {}

void SqliteConnection::open(const ConnectionSettings& settings) {
    close();
    const std::string file = catalogFile(folder_(), settings.initialCatalog);
    std::error_code failed;
    if (!std::filesystem::exists(file, failed)) {
        throw serverError(errorNoCatalog, {settings.initialCatalog, "no file " + file});
    }
    auto opened =
        std::make_shared<CatalogSession>(file, settings.initialCatalog, settings.timeoutSeconds);
    prepareIndexes(opened->database, opened->schema);
    session_ = std::move(opened);
}

bool SqliteConnection::isOpen() const {
    return session_ != nullptr;
}

void SqliteConnection::close() {
    session_.reset();
}

CatalogSession& SqliteConnection::session() const {
    if (!session_) {
        throw PlatformError(kClosedError, "Operation is not allowed when the object is closed.");
    }
    return *session_;
}

FilledTranslation SqliteConnection::translated(std::string_view statement) const {
    CatalogSession& open = session();
    open.schema.refresh();
    return open.queries.translated(statement, open.schema.version());
}

void SqliteConnection::execute(std::string_view statement) {
    const FilledTranslation filled = translated(statement);
    perform(*filled.translation, filled.values);
}

std::unique_ptr<RowSet> SqliteConnection::openRowSet(std::string_view statement) {
    const FilledTranslation filled = translated(statement);
    if (filled.translation->statement.kind == StatementKind::select) {
        return std::make_unique<SqliteRowSet>(session_, filled);
    }
    perform(*filled.translation, filled.values);
    return std::make_unique<SqliteRowSet>();
}

void SqliteConnection::perform(const Translation& translation, const std::vector<Stored>& values) {
    CatalogSession& open = session();
    const std::string& table = translation.statement.table;
    switch (translation.statement.kind) {
    case StatementKind::insert:
    case StatementKind::update:
    case StatementKind::remove:
        open.change(*open.schema.table(table), translation.text, values);
        break;
    case StatementKind::createTable:
        open.database.run(translation.text);
        prepareNewTable(open.database, open.schema, table);
        break;
    case StatementKind::createIndex:
        createIndex(translation);
        break;
    case StatementKind::alterColumn:
        alterColumn(translation);
        break;
    case StatementKind::begin:
    case StatementKind::commit:
    case StatementKind::rollBack:
        transaction(translation);
        break;
    default:
        open.database.run(translation.text, values);
    }
}

void SqliteConnection::createIndex(const Translation& translation) {
    try {
        session().database.run(translation.text);
    } catch (const PlatformError& error) {
        if (error.number() != errorDuplicateKey) {
            throw;
        }
        throw serverError(
            errorDuplicatesFound, {translation.statement.table, translation.statement.name}
        );
    }
}

/// The store cannot change a column in place: the table is made anew with its rows and indexes, as
/// a whole or not at all.
void SqliteConnection::alterColumn(const Translation& translation) {
    CatalogSession& open = session();
    const TableSchema present = *open.schema.table(translation.statement.table);
    const ColumnInfo& changed = translation.statement.definitions.front();
    testValues(open.database, present, changed);
    TableSchema rebuilt = present;
    rebuilt.name = "rebuilt " + present.name;
    for (auto& column : rebuilt.columns) {
        if (sameSqlName(column.name, changed.name)) {
            column = changed;
        }
    }
    const auto quoted = kEmbeddedDialect.quoteName;
    const std::string columns = columnList(present);
    asOneStep(open.database, [&] {
        open.database.run(
            "CREATE TABLE " + quoted(rebuilt.name) + " (" + declarations(rebuilt) + ")"
        );
        open.database.run(
            "INSERT INTO " + quoted(rebuilt.name) + " SELECT " + columns + " FROM " +
            quoted(present.name) + " ORDER BY rowid"
        );
        open.database.run("DROP TABLE " + quoted(present.name));
        open.database.run(
            "ALTER TABLE " + quoted(rebuilt.name) + " RENAME TO " + quoted(present.name)
        );
        rebuilt.name = present.name;
        for (const auto& index : present.indexes) {
            open.database.run(indexStatement(rebuilt, index, kEmbeddedDialect));
        }
    });
}

/// Transactions begun inside another one belong to it, as on the server.
void SqliteConnection::transaction(const Translation& translation) {
    CatalogSession& open = session();
    if (!open.database.inTransaction()) {
        open.transactionDepth = 0;
    }
    const StatementKind kind = translation.statement.kind;
    if (kind == StatementKind::begin) {
        if (open.transactionDepth == 0) {
            open.database.run(translation.text);
        }
        ++open.transactionDepth;
        return;
    }
    const bool isCommit = kind == StatementKind::commit;
    if (open.transactionDepth == 0) {
        throw serverError(isCommit ? errorNothingToCommit : errorNothingToRollBack);
    }
    if (isCommit && open.transactionDepth > 1) {
        --open.transactionDepth;
        return;
    }
    open.database.run(translation.text);
    open.transactionDepth = 0;
}

}  // namespace platform
