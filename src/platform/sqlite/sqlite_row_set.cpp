#include "platform/sqlite/sqlite_row_set.h"

#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/tokens.h"

#include <algorithm>
#include <numeric>

namespace platform {

namespace {

constexpr std::int32_t kClosedError = 3704;
constexpr std::int32_t kReadOnlyRowsError = 3251;

std::string quoted(const ColumnInfo& column) {
    return kEmbeddedDialect.quoteName(column.name);
}

}  // namespace

SqliteRowSet::SqliteRowSet(
    const std::shared_ptr<CatalogSession>& session, const Translation& select
)
    : session_(session),
      table_(select.statement.table),
      columns_(select.columns),
      hasRowNumbers_(!select.statement.isCount) {
    Query query(session->database, select.text);
    query.bind(select.values);
    std::vector<Stored> row(static_cast<std::size_t>(query.columnCount()));
    while (query.step()) {
        for (std::size_t at = 0; at < row.size(); ++at) {
            row[at] = query.value(static_cast<int>(at));
        }
        rows_.add(row);
    }
    load();
}

std::int32_t SqliteRowSet::recordCount() const {
    return static_cast<std::int32_t>(rows_.size());
}

int SqliteRowSet::fieldCount() const {
    return static_cast<int>(columns_.size());
}

std::size_t SqliteRowSet::column(int ordinal) const {
    if (ordinal < 0 || ordinal >= fieldCount()) {
        throw PlatformError(
            kNoSuchFieldError,
            "Item cannot be found in the collection corresponding to the requested name or ordinal."
        );
    }
    return static_cast<std::size_t>(ordinal);
}

std::string SqliteRowSet::fieldName(int ordinal) const {
    return columns_[column(ordinal)].name;
}

void SqliteRowSet::requireRow() const {
    if (atEnd() || isRemoved_) {
        throw PlatformError(
            kNoCurrentRowError,
            "Either BOF or EOF is True, or the current record has been deleted. Requested "
            "operation requires a current record."
        );
    }
}

util::Value SqliteRowSet::value(int ordinal) const {
    const std::size_t at = column(ordinal);
    requireRow();
    return fromStored(columns_[at], edited_[at]);
}

void SqliteRowSet::setValue(int ordinal, const util::Value& value) {
    const std::size_t at = column(ordinal);
    requireRow();
    edited_[at] = toStored(columns_[at], value);
}

void SqliteRowSet::load() {
    isRemoved_ = false;
    if (at_ >= rows_.size()) {
        return;
    }
    kept_ = rows_.row(at_);
    if (hasRowNumbers_) {
        rowNumber_ = std::get<std::int64_t>(kept_.front());
        kept_.erase(kept_.begin());
    }
    edited_ = kept_;
}

void SqliteRowSet::moveFirst() {
    at_ = 0;
    load();
}

void SqliteRowSet::moveNext() {
    if (atEnd() && !isRemoved_) {
        requireRow();
    }
    at_ += isRemoved_ ? 0 : 1;
    load();
}

bool SqliteRowSet::atEnd() const {
    return at_ >= rows_.size() && !isRemoved_;
}

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

std::vector<std::size_t> SqliteRowSet::keyColumns(const TableSchema& table) const {
    const auto ordinalOf = [&](const std::string& name) {
        const auto found =
            std::find_if(columns_.begin(), columns_.end(), [&](const ColumnInfo& column) {
                return sameSqlName(column.name, name);
            });
        return static_cast<std::size_t>(found - columns_.begin());
    };
    for (const auto& index : table.indexes) {
        std::vector<std::size_t> ordinals;
        for (const auto& name : index.columns) {
            ordinals.push_back(ordinalOf(name));
        }
        const bool isWhole = std::all_of(ordinals.begin(), ordinals.end(), [&](std::size_t at) {
            return at < columns_.size();
        });
        if (index.unique && isWhole) {
            return ordinals;
        }
    }
    std::vector<std::size_t> all(columns_.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

std::vector<std::size_t> SqliteRowSet::changedColumns() const {
    std::vector<std::size_t> changed;
    for (std::size_t at = 0; at < columns_.size(); ++at) {
        const bool isSame = edited_[at] == kept_[at] || fromStored(columns_[at], edited_[at]) ==
                                                            fromStored(columns_[at], kept_[at]);
        if (!isSame) {
            changed.push_back(at);
        }
    }
    return changed;
}

SqliteRowSet::Check
SqliteRowSet::check(const TableSchema& table, const std::vector<std::size_t>& changed) const {
    std::vector<std::size_t> tested = keyColumns(table);
    for (const std::size_t at : changed) {
        if (std::find(tested.begin(), tested.end(), at) == tested.end()) {
            tested.push_back(at);
        }
    }
    Check result;
    for (const std::size_t at : tested) {
        result.text += (result.text.empty() ? "" : " AND ") + quoted(columns_[at]) + " IS ?";
        result.values.push_back(kept_[at]);
    }
    return result;
}

/// Runs the change on the row with the current row's number; when that is not the row any more, on
/// whatever row fulfils the check.
void SqliteRowSet::send(const std::string& action, std::vector<Stored> values, const Check& check)
    const {
    const auto open = session();
    const TableSchema& table = *open->schema.table(table_);
    values.insert(values.end(), check.values.begin(), check.values.end());
    const std::string statement = action + " WHERE " + check.text;
    std::vector<Stored> numbered = values;
    numbered.emplace_back(rowNumber_);
    open->change(table, statement + " AND rowid=?", numbered);
    if (open->database.changes() == 0) {
        open->change(table, statement, values);
    }
    if (open->database.changes() == 0) {
        throw PlatformError(
            kRowChangedError,
            "Row cannot be located for updating. Some values may have been changed since it was "
            "last read."
        );
    }
}

void SqliteRowSet::update() {
    requireRow();
    const std::vector<std::size_t> changed = changedColumns();
    if (changed.empty()) {
        return;
    }
    const auto open = session();
    const auto* table = open->schema.table(table_);
    if (table == nullptr) {
        throw serverError(errorObjectInvalid, {table_});
    }
    std::string action = "UPDATE " + kEmbeddedDialect.quoteName(table->name);
    std::vector<Stored> values;
    std::string_view between = " SET ";
    for (const std::size_t at : changed) {
        if (std::holds_alternative<std::monostate>(edited_[at]) && !columns_[at].nullable) {
            throw serverError(errorNullRefused, {columns_[at].name, "dbo." + table_, "UPDATE"});
        }
        action += std::string(between) + quoted(columns_[at]) + "=?";
        values.push_back(edited_[at]);
        between = ",";
    }
    send(action, values, check(*table, changed));
    kept_ = edited_;
    std::vector<Stored> row = kept_;
    row.insert(row.begin(), rowNumber_);
    rows_.replace(at_, row);
}

void SqliteRowSet::remove() {
    requireRow();
    const auto open = session();
    const auto* table = open->schema.table(table_);
    if (table == nullptr) {
        throw serverError(errorObjectInvalid, {table_});
    }
    send("DELETE FROM " + kEmbeddedDialect.quoteName(table->name), {}, check(*table, {}));
    rows_.erase(at_);
    isRemoved_ = true;
}

}  // namespace platform
