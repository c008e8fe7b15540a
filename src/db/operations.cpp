#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/record_fields.h"
#include "db/statements.h"
#include "db/table_module.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"

#include <algorithm>

/// The operations by number: each is a row of the table below.

namespace {

struct Request {
    std::int16_t table;
    std::string_view name;
    std::int16_t keyNumber;
    bool isDirect;
    const std::string& statement;
};

constexpr std::int16_t kServersOrder = -1;
constexpr std::size_t kMostKeyedParts = 6;
constexpr std::size_t kMostOrderedParts = 5;

std::string columnOfPart(std::int16_t table, std::size_t part) {
    return gfvDB_GetFieldName(table, DBKeyFields.at(part));
}

/// The first `count` parts of the stored key as texts.
std::vector<db::KeyText> keyTexts(std::int16_t table, std::size_t count) {
    std::vector<db::KeyText> key;
    key.reserve(count);
    for (std::size_t part = 0; part < count; ++part) {
        key.push_back({columnOfPart(table, part), db::statementText(DBKeyValues.at(part))});
    }
    return key;
}

const std::string& tableName(std::int16_t table) {
    return DBTableDescriptors[table].TableName;
}

std::size_t keyParts(std::int16_t table) {
    const std::int16_t parts = DBTableDescriptors[table].KeyParts;
    return parts < 0 ? 0 : static_cast<std::size_t>(parts);
}

/// A statement that a conversion run could not insert, kept for a look afterwards.
void keepFailedInsert(const std::string& statement) {
    ++DBInsertErrors;
    platform::ignoringErrors([&] {
        const std::string file = platform::files().programFolder() + "\\InsertErr.txt";
        platform::files().append(file, statement + "\r\n");
    });
}

std::string keyedQuery(std::int16_t table, std::string_view comparison) {
    std::size_t parts = keyParts(table);
    if (parts == 0 && table == db::tableNotes) {
        parts = 1;
    }
    const std::size_t used = parts <= kMostKeyedParts ? parts : 0;
    return db::keyedStatement(tableName(table), comparison, keyTexts(table, used));
}

LegacyBool step(std::int16_t table, std::int16_t keyNumber, std::string_view comparison) {
    db_pRecordKey_prepare(table, keyNumber);
    return gfbDB_GetBySQL(table, gfsDB_BuildStepSQL(table, keyNumber, comparison));
}

/// Columns of the stored key in order, none when there are more than an order can name.
std::vector<std::string> orderColumns(std::int16_t table) {
    std::vector<std::string> columns;
    const std::size_t parts = keyParts(table);
    for (std::size_t part = 0; parts <= kMostOrderedParts && part < parts; ++part) {
        columns.push_back(columnOfPart(table, part));
    }
    return columns;
}

/// First or last row in key order; a table without a key gives the server's first row.
LegacyBool getEnd(
    std::int16_t table,
    std::int16_t keyNumber,
    std::string (*build)(const std::string& table, std::span<const std::string> columns)
) {
    db_pRecordKey_prepare(table, keyNumber);
    const std::string& name = tableName(table);
    return gfbDB_GetBySQL(
        table, keyParts(table) == 0 ? db::anyRowStatement(name) : build(name, orderColumns(table))
    );
}

bool insert(const Request& request) {
    return gfbDB_Insert(request.table) != kNo;
}

bool getByKey(const Request& request) {
    const LegacyBool found = request.isDirect
                                 ? gfbDB_GetByField(request.table, request.name, request.keyNumber)
                                 : gfbDB_GetKeyed(request.table, request.name, request.statement);
    return found != kNo;
}

/// A movement by the key alone.
template <LegacyBool (*move)(std::int16_t table, std::int16_t keyNumber)>
bool moved(const Request& request) {
    return move(request.table, request.keyNumber) != kNo;
}

bool update(const Request& request) {
    if (!request.isDirect) {
        db_pRecord_toRow(request.table);
    }
    db::rowsOf(request.table).update();
    return true;
}

bool remove(const Request& request) {
    db::rowsOf(request.table).remove();
    return true;
}

bool clearFlag(const Request& request) {
    DBTableDescriptors[request.table].OperationFlag = 0;
    return true;
}

bool getBySQL(const Request& request) {
    return gfbDB_GetBySQL(request.table, request.statement) != kNo;
}

bool nothing(const Request&) {
    return true;
}

/// What surrounds the work of an operation.
enum class Marshal : std::uint8_t { none, reads, keyAndReads };

struct OperationRow {
    std::int16_t number;
    std::string_view name;
    Marshal marshal;
    bool (*run)(const Request& request);
};

constexpr OperationRow kOperations[] = {
    {db::opOpen, "Open", Marshal::none, nothing},
    {db::opClose, "Close", Marshal::none, nothing},
    {db::opInsert, "Insert", Marshal::none, insert},
    {db::opUpdate, "Update", Marshal::none, update},
    {db::opDelete, "Delete", Marshal::none, remove},
    {db::opEqual, "=", Marshal::keyAndReads, getByKey},
    {db::opGetNext, "Get Next", Marshal::reads, moved<gfbDB_GetNext>},
    {24, "Get Next", Marshal::reads, moved<gfbDB_GetNext>},
    {db::opGetPrevious, "Get Previous", Marshal::reads, moved<gfbDB_GetPrevious>},
    {35, "Get Previous", Marshal::reads, moved<gfbDB_GetPrevious>},
    {db::opGreater, ">", Marshal::keyAndReads, getByKey},
    {db::opGreaterEqual, ">=", Marshal::keyAndReads, getByKey},
    {db::opLess, "<", Marshal::keyAndReads, getByKey},
    {db::opLessEqual, "<=", Marshal::keyAndReads, getByKey},
    {12, "Get First", Marshal::keyAndReads, moved<gfbDB_GetFirst>},
    {db::opGetFirst, "Get First", Marshal::keyAndReads, moved<gfbDB_GetFirst>},
    {13, "Get Last", Marshal::keyAndReads, moved<gfbDB_GetLast>},
    {db::opGetLast, "Get Last", Marshal::keyAndReads, moved<gfbDB_GetLast>},
    {db::opBeginTrans, "Begin Trans", Marshal::none, nothing},
    {db::opEndTrans, "End Trans", Marshal::none, nothing},
    {db::opClearFlag, "21", Marshal::none, clearFlag},
    {db::opBySQL, "BySQL", Marshal::none, getBySQL},
};

const OperationRow* findOperation(std::int16_t number) {
    const auto* row =
        std::find_if(std::begin(kOperations), std::end(kOperations), [&](const OperationRow& each) {
            return each.number == number;
        });
    return row == std::end(kOperations) ? nullptr : row;
}

}  // namespace

namespace db {

std::string_view operationName(std::int16_t operation) {
    const OperationRow* row = findOperation(operation);
    return row == nullptr ? std::string_view() : row->name;
}

}  // namespace db

LegacyBool gfiDB_Operation(
    std::int16_t table,
    std::int16_t operation,
    std::int16_t keyNumber,
    LegacyBool directRow,
    LegacyBool recheck,
    const std::string& statement
) {
    static_cast<void>(recheck);  // the check that it asks for always passes
    const OperationRow* row = findOperation(operation);
    if (row == nullptr) {
        return kYes;
    }
    const bool isDirect = directRow != kNo;
    if (row->marshal == Marshal::keyAndReads && (!isDirect || DBKeyAlways != kNo)) {
        db_pRecordKey_prepare(table, keyNumber);
    }
    const bool succeeded = row->run({table, row->name, keyNumber, isDirect, statement});
    if (succeeded && !isDirect && row->marshal != Marshal::none) {
        db_pRecord_fromRow(table);
    }
    return legacyBool(succeeded);
}

LegacyBool gfbDB_Insert(std::int16_t table) {
    const std::string statement =
        "INSERT INTO " + tableName(table) + " VALUES(" + db_fsRecord_values(table) + ")";
    try {
        db::connection().execute(statement);
        return kYes;
    } catch (const platform::PlatformError& error) {
        static_cast<void>(error);  // a duplicate key and any other failure look alike to callers
        if (DBConvertRun == kNo) {
            return kNo;
        }
        keepFailedInsert(statement);
        return kYes;
    }
}

LegacyBool
gfbDB_GetKeyed(std::int16_t table, std::string_view comparison, const std::string& statement) {
    std::string query = statement.empty() ? keyedQuery(table, comparison) : statement;
    if (db::isDescending(comparison)) {
        query += " DESC";
    }
    return gfbDB_GetBySQL(table, query);
}

LegacyBool gfbDB_GetByField(std::int16_t table, std::string_view comparison, std::int16_t ordinal) {
    const std::string value = db::statementText(gfvDB_GetField(table, ordinal));
    const db::KeyText field = {
        gfvDB_GetFieldName(table, ordinal), util::replaceAll(value, "'", "''")};
    return gfbDB_GetBySQL(table, db::fieldStatement(tableName(table), comparison, field));
}

LegacyBool gfbDB_GetNext(std::int16_t table, std::int16_t keyNumber) {
    return step(table, keyNumber, ">");
}

LegacyBool gfbDB_GetPrevious(std::int16_t table, std::int16_t keyNumber) {
    return step(table, keyNumber, "<");
}

LegacyBool gfbDB_GetFirst(std::int16_t table, std::int16_t keyNumber) {
    if (keyNumber == kServersOrder) {
        return gfbDB_GetBySQL(table, db::anyRowStatement(tableName(table)));
    }
    return getEnd(table, keyNumber, db::firstStatement);
}

LegacyBool gfbDB_GetLast(std::int16_t table, std::int16_t keyNumber) {
    if (keyNumber == kServersOrder) {
        const std::string columns[] = {gfvDB_GetFieldName(table, 0)};
        return gfbDB_GetBySQL(table, db::lastStatement(tableName(table), columns));
    }
    return getEnd(table, keyNumber, db::lastStatement);
}

std::string
gfsDB_BuildStepSQL(std::int16_t table, std::int16_t keyNumber, std::string_view comparison) {
    static_cast<void>(keyNumber);  // its parts are stored already
    const std::size_t parts = keyParts(table);
    const std::size_t used = parts >= 1 && parts <= kMostOrderedParts ? parts : 1;
    return db::stepStatement(tableName(table), comparison, keyTexts(table, used), parts);
}
