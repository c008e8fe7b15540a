#include "platform/sqlite/sqlite_row_set.h"

#include "platform/sql_dialect/server_error.h"

namespace platform {

namespace {

std::string quoted(const ColumnInfo& column) {
    return kEmbeddedDialect.quoteName(column.name);
}

PackedRows fetch(const Database& database, const FilledTranslation& select) {
    Query query(database, select.translation->text, select.translation->number);
    query.bind(select.values);
    PackedRows rows;
    while (query.step()) {
        query.packRow(rows);
    }
    return rows;
}

/// The columns of a translation, which they keep alive.
std::shared_ptr<const ColumnList> columnsOf(const std::shared_ptr<const Translation>& translation) {
    return {translation, &translation->columns};
}

}  // namespace

SqliteRowSet::SqliteRowSet(
    const std::shared_ptr<CatalogSession>& session, const FilledTranslation& select
)
    : ClientRowSet(
          columnsOf(select.translation),
          fetch(session->database, select),
          select.translation->statement.isCount ? 0 : 1,
          Numbers::nearest
      ),
      session_(session),
      table_(select.translation->statement.table),
      hasRowNumbers_(!select.translation->statement.isCount) {}

std::shared_ptr<CatalogSession> SqliteRowSet::session() const {
    if (!hasRowNumbers_) {
        throw PlatformError(
            kReadOnlyRowsError,
            "Current Recordset does not support updating. This may be a limitation of the provider."
        );
    }
    auto session = session_.lock();
    if (!session) {
        throw PlatformError(kClosedError, "Operation is not allowed when the object is closed.");
    }
    session->schema.refresh();
    return session;
}

const TableSchema& SqliteRowSet::table(CatalogSession& session) const {
    const auto* table = session.schema.table(table_);
    if (table == nullptr) {
        throw serverError(errorObjectInvalid, {table_});
    }
    return *table;
}

/// Runs the change on the row with the current row's number; when that is not the row any more, on
/// whatever row fulfils the check.
void SqliteRowSet::send(
    const std::string& action, std::vector<Stored> values, const std::vector<std::size_t>& changed
) const {
    const auto open = session();
    const TableSchema& target = table(*open);
    std::string check;
    for (const std::size_t at : checkedColumns(target, changed)) {
        check += (check.empty() ? " WHERE " : " AND ") + quoted(columns()[at]) + " IS ?";
        values.push_back(kept(at));
    }
    const std::string statement = action + check;
    std::vector<Stored> numbered = values;
    numbered.push_back(leading());
    open->change(target, statement + " AND rowid=?", numbered);
    if (open->database.changes() == 0) {
        open->change(target, statement, values);
    }
    if (open->database.changes() == 0) {
        throw rowChangedError();
    }
}

void SqliteRowSet::sendUpdate(const std::vector<std::size_t>& changed) {
    const auto open = session();
    std::string action = "UPDATE " + kEmbeddedDialect.quoteName(table(*open).name);
    std::vector<Stored> values;
    std::string_view between = " SET ";
    for (const std::size_t at : changed) {
        if (std::holds_alternative<std::monostate>(edited(at)) && !columns()[at].nullable) {
            throw serverError(errorNullRefused, {columns()[at].name, "dbo." + table_, "UPDATE"});
        }
        action += std::string(between) + quoted(columns()[at]) + "=?";
        values.push_back(edited(at));
        between = ",";
    }
    send(action, values, changed);
}

void SqliteRowSet::sendRemove() {
    const auto open = session();
    send("DELETE FROM " + kEmbeddedDialect.quoteName(table(*open).name), {}, {});
}

}  // namespace platform
