#pragma once

#include "util/legacy_bool.h"

#include <cstdint>
#include <string>

/// Connects to the database and binds the twelve tables: each is made or brought up to date.
/// @return kNo when the connect failed; kYes in every other case.
LegacyBool db_fbInterface_open();
/// Opens Common, reads its row and sets `gbMultiStore` or `gsStoreNumber` from it.
LegacyBool db_fbCommon_reading();
/// Opens tables 0 to 11; the first failure ends the walk. @return kYes when all are open.
LegacyBool db_fbAllTables_open();
/// Walks the tables and calls the close, which leaves them open until the process ends.
void db_pAllTables_close();
/// Closes the tables and ends the program (platform::ProgramEnd). Every way out passes through
/// here.
[[noreturn]] void gpApp_end();

// Dispatch by table number into the routines of the table's module. A number without such a routine
// does nothing (and gives an empty text).

/// The record's fields as the value list of an insert (numbers 0 to 11 and 99).
std::string db_fsRecord_values(std::int16_t table);
/// Stores the key `keyNumber` of the table with the record's values (numbers 1 to 10 and 99); a key
/// number that the table has not leaves the stored key as it is.
void db_pRecordKey_prepare(std::int16_t table, std::int16_t keyNumber);
/// Makes copies of the record's fields that are safe in a statement, for the key or the value list
/// that follows; the record keeps what it holds (numbers 0 to 11 and 99).
void db_pRecord_quote(std::int16_t table);
/// Copies the row in hand into the table's record (numbers 0 to 10 and 99).
/// @throws platform::PlatformError 3265 when the row has fewer columns, 3021 without a row.
void db_pRecord_fromRow(std::int16_t table);
/// Copies the table's record into the row in hand (numbers 0 to 10 and 99); changed fields only.
void db_pRecord_toRow(std::int16_t table);
