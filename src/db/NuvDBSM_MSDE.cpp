#include "db/NuvDBSM_MSDE.h"

#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "db/record_fields.h"
#include "db/statements.h"
#include "db/table_module.h"
#include "platform/ports/platform.h"
#include "util/basic_error.h"
#include "util/conversions.h"

#include <algorithm>
#include <optional>

std::array<std::unique_ptr<platform::RowSet>, db::kTableSlots> DBRows;
std::array<std::int16_t, db::kMaxKeyParts> DBKeyFields = {};
std::array<util::Value, db::kMaxKeyParts> DBKeyValues;
LegacyBool DBKeyAlways = kNo;
LegacyBool DBQuietErrors = kNo;
std::int32_t DBInsertErrors = 0;

namespace {

constexpr std::int32_t kNoSuchTableFile = 3078;
constexpr std::int32_t kNoObject = 91;
constexpr std::string_view kMissingTable = "Invalid object name";
constexpr std::string_view kOtherOwner = "nuv.";
constexpr std::int16_t kQuotesDoubledParts = 3;
/// Errors that are no news: no row, the row is gone, no table of that name is held.
constexpr std::int32_t kQuietErrors[] = {3021, 3022, 3167};

std::unique_ptr<platform::RowSet>& slotOf(std::int16_t table) {
    if (table < 0 || static_cast<std::size_t>(table) >= DBRows.size()) {
        throw util::BasicError::of(9);
    }
    return DBRows.at(static_cast<std::size_t>(table));
}

/// Opens the first row of `source`. @return the error that stood in the way.
std::optional<platform::PlatformError> tryOpen(std::int16_t table, const std::string& source) {
    slotOf(table).reset();
    try {
        slotOf(table) = db::connection().openRowSet(db::anyRowStatement(source));
        return std::nullopt;
    } catch (const platform::PlatformError& error) {
        return error;
    }
}

/// Opens the table's first row, making the table when that fails.
bool openRows(std::int16_t table) {
    const std::string name = DBTableDescriptors[table].TableName;
    std::optional<platform::PlatformError> failure = tryOpen(table, name);
    if (!failure) {
        return true;
    }
    gfbDB_CreateTable(table);
    if (failure->number() == kNoSuchTableFile) {
        return false;  // Kept: the table is there now and opens at its next use
    }
    if (failure->description().starts_with(kMissingTable) && DBConnected != kNo) {
        failure = tryOpen(table, std::string(kOtherOwner) + name);
        if (!failure) {
            return true;
        }
    }
    core::showMessage(
        std::to_string(failure->number()) + "    Open Table Error    " + failure->description()
    );
    return false;
}

}  // namespace

namespace db {

platform::RowSet& rowsOf(std::int16_t table) {
    const std::unique_ptr<platform::RowSet>& rows = slotOf(table);
    if (!rows) {
        throw platform::PlatformError(kNoObject, util::BasicError::of(kNoObject).what());
    }
    return *rows;
}

bool atEnd(std::int16_t table) {
    return rowsOf(table).atEnd();
}

void moveNext(std::int16_t table) {
    rowsOf(table).moveNext();
}

void resetEngine() {
    for (auto& rows : DBRows) {
        rows.reset();
    }
    DBKeyFields.fill(0);
    DBKeyValues.fill(util::Value());
    DBKeyAlways = kNo;
    DBQuietErrors = kNo;
    DBInsertErrors = 0;
    DBTableDescriptors.reset();
    forgetRecords();
    resetConnection();
}

}  // namespace db

LegacyBool gfbDB_OpenTable(std::int16_t table, std::int16_t mode1, std::int16_t mode2) {
    static_cast<void>(mode1);
    static_cast<void>(mode2);
    TableDescriptor& descriptor = DBTableDescriptors[table];
    if (!db::ensureConnected()) {
        platform::desktop().messageBox(
            "Failed to connect to database. ",
            "Database Connection Error",
            platform::BoxButtons::ok,
            platform::BoxIcon::error
        );
        return kNo;
    }
    if (util::trim(descriptor.TableName).empty()) {
        return kNo;
    }
    descriptor.IsOpen = legacyBool(openRows(table));
    return descriptor.IsOpen;
}

void gpDB_CloseTable(std::int16_t table) {
    static_cast<void>(table);
}

void gpDB_SetKey(std::int16_t table, std::int16_t parts, const std::vector<db::KeyPair>& pairs) {
    DBTableDescriptors[table].KeyParts = parts;
    DBKeyFields.fill(0);
    for (util::Value& value : DBKeyValues) {
        value.emplace<std::monostate>();
    }
    const std::size_t count = std::min(pairs.size(), db::kMaxKeyParts);
    for (std::size_t index = 0; index < count; ++index) {
        DBKeyFields.at(index) = pairs[index].ordinal;
        util::Value& value = DBKeyValues.at(index);
        value = pairs[index].value;
        if (auto* text = std::get_if<std::string>(&value)) {
            *text = gfsDB_QuoteKey(*text, legacyBool(index < kQuotesDoubledParts));
        }
    }
}

std::string gfsDB_QuoteKey(const std::string& value, LegacyBool doubleQuotes) {
    if (value.find('\0') != std::string::npos) {
        std::string blanks(value.size(), ' ');
        return blanks;
    }
    if (value.find("''") != std::string::npos) {
        return value;  // Kept: taken as cleaned already, so a name with two quotes loses one
    }
    return util::replaceAll(value, "'", doubleQuotes != kNo ? "''" : " ");
}

util::Value gfvDB_GetField(std::int16_t table, std::int16_t ordinal) {
    return db::rowsOf(table).value(ordinal);
}

util::Value gfvDB_GetField(std::int16_t table, std::string_view name) {
    const platform::RowSet& rows = db::rowsOf(table);
    return rows.value(platform::fieldOrdinal(rows, name));
}

std::string gfvDB_GetFieldName(std::int16_t table, std::int16_t ordinal) {
    return db::rowsOf(table).fieldName(ordinal);
}

void gpDB_SetField(std::int16_t table, std::int16_t ordinal, const util::Value& value) {
    platform::RowSet& rows = db::rowsOf(table);
    const bool isNull = std::holds_alternative<std::monostate>(value);
    if (isNull || db::momentFrom(value)) {
        rows.setValue(ordinal, value);
        return;
    }
    if (rows.recordCount() < 1) {
        return;
    }
    const auto* text = std::get_if<std::string>(&value);
    if (text != nullptr && util::trim(*text).empty()) {
        rows.setValue(ordinal, std::string());
    } else if (!db::readsAlike(rows.value(ordinal), value)) {
        rows.setValue(ordinal, value);
    }
}

void gpDB_SetField(std::int16_t table, std::string_view name, const util::Value& value) {
    const int ordinal = platform::fieldOrdinal(db::rowsOf(table), name);
    gpDB_SetField(table, static_cast<std::int16_t>(ordinal), value);
}

std::int16_t gfiDB_FieldCount(std::int16_t table) {
    return static_cast<std::int16_t>(db::rowsOf(table).fieldCount());
}

std::int32_t gfiDB_RecordCount(std::int16_t table, std::string& name) {
    if (name.empty()) {
        name = DBTableDescriptors[table].TableName;
    }
    const auto rows = db::connection().openRowSet("SELECT COUNT(*) FROM " + name);
    return db::longFrom(rows->value(0));
}

LegacyBool
gfbDB_OpenBySQL(const std::string& statement, std::int16_t table, LegacyBool noPosition) {
    static_cast<void>(noPosition);
    try {
        return gfbDB_GetBySQL(table, statement);
    } catch (const platform::PlatformError& error) {
        db::reportFailedStatement(statement, error);
        return kNo;
    }
}

LegacyBool gfbDB_GetBySQL(std::int16_t table, const std::string& statement) {
    auto rows = db::connection().openRowSet(statement);
    if (rows->recordCount() < 1) {
        slotOf(table).reset();
        gfbDB_OpenTable(table);  // Kept: the table then stands on its first row, whatever the key
        return kNo;
    }
    slotOf(table) = std::move(rows);
    return kYes;
}

LegacyBool gfbDB_ReportError(
    std::int16_t table, std::int16_t operation, const platform::PlatformError& error
) {
    const std::string_view name = db::operationName(operation);
    const bool isNews =
        std::find(std::begin(kQuietErrors), std::end(kQuietErrors), error.number()) ==
        std::end(kQuietErrors);
    if (isNews && (operation == db::opOpen || DBQuietErrors == kNo)) {
        platform::desktop().messageBox(
            "Table: " + DBTableDescriptors[table].TableUpper + "\r" +
                "Operation:   " + util::upper(name) + "\r" + "Error:    [" +
                std::to_string(error.number()) + "] " + error.description() + "\r",
            "NUV MS Data Engine",
            platform::BoxButtons::ok,
            platform::BoxIcon::error
        );
    }
    return legacyBool(isNews);
}
