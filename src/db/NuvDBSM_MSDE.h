#pragma once

#include "db/connection.h"
#include "db/record_fields.h"
#include "db/schema.h"
#include "platform/ports/data.h"
#include "util/legacy_bool.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The record engine: tables, keys and operations such as Get Next, carried over SQL. There is no
/// cursor on the server: the place of a table is one row held here, and every movement fetches the
/// neighbour with a new statement built from the key values in the table's record.
/// All state is global and one thread uses it. The current key is shared by all tables: no other
/// table's operation may run between a key routine and the query that follows it.
namespace db {

/// Numbers of the tables; the first twelve are bound at start.
enum TableNumber : std::int16_t {
    tableCommon = 0,
    tableInventory = 1,
    tableNames = 2,
    tableSalesCode = 3,
    tableTenderTypes = 4,
    tableVendors = 5,
    tablePOHistory = 6,
    tablePOHeader = 7,
    tablePOLine = 8,
    tableSalesHead = 9,
    tableSalesItem = 10,
    tableLogInSec = 11,
    tableNotes = 99
};

/// Numbers of the operations, those of the record manager that the suite's first data files used.
enum Operation : std::int16_t {
    opOpen = 0,
    opClose = 1,
    opInsert = 2,
    opUpdate = 3,
    opDelete = 4,
    opEqual = 5,
    opGetNext = 6,
    opGetPrevious = 7,
    opGreater = 8,
    opGreaterEqual = 9,
    opLess = 10,
    opLessEqual = 11,
    opBeginTrans = 19,
    opEndTrans = 20,
    opClearFlag = 21,
    opGetFirst = 33,
    opGetLast = 34,
    opBySQL = 36
};

inline constexpr std::int16_t kTableCount = 12;
/// Table numbers are below this.
inline constexpr std::size_t kTableSlots = 100;
inline constexpr std::size_t kMaxKeyParts = 9;

/// One part of a key: the ordinal of a column and the value that it is compared with.
struct KeyPair {
    std::int16_t ordinal = 0;
    util::Value value;
};

/// True when the rows of `table` have been walked through (no rows at all counts too).
bool atEnd(std::int16_t table);
/// Goes to the next row of what gfbDB_OpenBySQL opened for `table`.
void moveNext(std::int16_t table);

/// The name of an operation ("Get Next"), empty for a number that means nothing.
std::string_view operationName(std::int16_t operation);

/// Puts the engine, the connection and every record back to the state of a program just started.
void resetEngine();

}  // namespace db

/// The rows in hand of each table: the one row of the last successful fetch, or what
/// gfbDB_OpenBySQL opened; empty when the table was never opened.
extern std::array<std::unique_ptr<platform::RowSet>, db::kTableSlots> DBRows;
/// The key of the operation in progress: column ordinals and values of parts 1 to 9.
extern std::array<std::int16_t, db::kMaxKeyParts> DBKeyFields;
extern std::array<util::Value, db::kMaxKeyParts> DBKeyValues;
/// Call key routines for direct operations too; no step of this program sets it.
extern LegacyBool DBKeyAlways;
/// Keep the engine's error box away.
extern LegacyBool DBQuietErrors;
/// Inserts that failed in a conversion run.
extern std::int32_t DBInsertErrors;

/// Does one operation on one table.
/// @param table      table number.
/// @param operation  one of db::Operation (the doubles 24, 35, 12, 13 of Get Next, Previous, First
///                   and Last too); any other does nothing and gives kYes.
/// @param keyNumber  key of the table (-1 for the bare first or last row); with `directRow` the
///                   ordinal of the column to search on.
/// @param directRow  kYes: the caller works on the row; no key is prepared, no record moved.
/// @param recheck    asked after a keyed query; always passes.
/// @param statement  replaces the built statement of a keyed query; the statement of BySQL.
/// @return kYes, or kNo for every kind of failure that is expected: not found, end of the table,
/// duplicate key. A failed movement leaves the record alone and the row in hand on the table's
/// first.
/// @throws platform::PlatformError with the provider's number, except for an insert.
LegacyBool gfiDB_Operation(
    std::int16_t table,
    std::int16_t operation,
    std::int16_t keyNumber,
    LegacyBool directRow = kNo,
    LegacyBool recheck = kNo,
    const std::string& statement = ""
);

/// Gives the table a row in hand (its first), connecting again when the connection is lost and
/// making the table when the server does not know it. Failures are told in a box.
/// @param mode1,mode2  open modes of old; they are ignored.
/// @return whether the table is open; also kept in the descriptor's `IsOpen`.
LegacyBool gfbDB_OpenTable(std::int16_t table, std::int16_t mode1 = 0, std::int16_t mode2 = 0);
/// Accepted and without effect: a table stays open until the process ends.
void gpDB_CloseTable(std::int16_t table);

/// Stores the key of the operation in progress; texts are made safe for a statement.
/// @param parts  count of parts that count (1 to 9), kept for the table.
/// @param pairs  up to nine (column ordinal, value); the rest is 0 and no value.
void gpDB_SetKey(std::int16_t table, std::int16_t parts, const std::vector<db::KeyPair>& pairs);
/// Makes a text safe between single quotes: one that holds a byte of code 0 becomes blanks; one
/// with two quotes side by side stays; else each quote is doubled, or replaced by a blank.
std::string gfsDB_QuoteKey(const std::string& value, LegacyBool doubleQuotes);

/// Value of a column in the row in hand. @throws platform::PlatformError 3265 when the row has no
/// such column, 3021 without a row, 91 when the table was never opened.
util::Value gfvDB_GetField(std::int16_t table, std::int16_t ordinal);
util::Value gfvDB_GetField(std::int16_t table, std::string_view name);
/// Name of a column of the rows in hand. @throws as gfvDB_GetField.
std::string gfvDB_GetFieldName(std::int16_t table, std::int16_t ordinal);
/// Puts a value into the row in hand (operation opUpdate with `directRow` sends it). A value equal
/// to the present one is not stored; a blank text is stored as an empty one; without rows only
/// dates are tried.
void gpDB_SetField(std::int16_t table, std::int16_t ordinal, const util::Value& value);
void gpDB_SetField(std::int16_t table, std::string_view name, const util::Value& value);
/// Count of columns of the rows in hand.
std::int16_t gfiDB_FieldCount(std::int16_t table);
/// Count of rows of the SQL table `name`; an empty name is filled with the table's own.
std::int32_t gfiDB_RecordCount(std::int16_t table, std::string& name);

/// Opens a statement with many rows as the rows of `table` and stands on the first (`noPosition`
/// changes nothing). Walk with db::moveNext and db::atEnd; db_pRecord_fromRow reads each row into
/// the record.
/// @return kNo without rows, and when the statement failed (log, box, `DBFailureKind` 3).
LegacyBool
gfbDB_OpenBySQL(const std::string& statement, std::int16_t table, LegacyBool noPosition = kNo);
/// Fetches the rows of a statement as the row of the table; the record is not filled.
LegacyBool gfbDB_GetBySQL(std::int16_t table, const std::string& statement);

/// Inserts the values of the record's clean copies. @return kNo for a duplicate key and for every
/// other failure; a conversion run writes the failed statement to "\InsertErr.txt" and goes on.
LegacyBool gfbDB_Insert(std::int16_t table);

// The movements behind gfiDB_Operation. Each makes the row that it finds the one in hand and leaves
// the record alone; without such a row it gives kNo, and the table stands on its first. They throw
// as gfiDB_Operation does.

/// The row that the stored key compares with as `comparison` says, or that `statement` gives when
/// it is not empty.
LegacyBool
gfbDB_GetKeyed(std::int16_t table, std::string_view comparison, const std::string& statement);
/// The row whose column `ordinal` compares so with the value that the row in hand has there.
LegacyBool gfbDB_GetByField(std::int16_t table, std::string_view comparison, std::int16_t ordinal);
/// The first and the last row in the order of the key; with -1 the server's first row, and the last
/// in the order of the first column.
LegacyBool gfbDB_GetFirst(std::int16_t table, std::int16_t keyNumber);
LegacyBool gfbDB_GetLast(std::int16_t table, std::int16_t keyNumber);
/// The row behind and the one in front of the record's key, which no row need have.
LegacyBool gfbDB_GetNext(std::int16_t table, std::int16_t keyNumber);
LegacyBool gfbDB_GetPrevious(std::int16_t table, std::int16_t keyNumber);

/// Statement of one step in key order.
/// @param comparison  ">" for the next, "<" for the previous row.
std::string
gfsDB_BuildStepSQL(std::int16_t table, std::int16_t keyNumber, std::string_view comparison);

/// The engine's error box. @return kNo for the errors that are no news (3021, 3022, 3167).
LegacyBool
gfbDB_ReportError(std::int16_t table, std::int16_t operation, const platform::PlatformError& error);
