#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>

/// The walk that every export of a list is: row by row, progress in the label, Stop after a row.
namespace exporting {

/// The keys that a walk by a text key has been at. Such a walk can come to a row once more, and
/// would then never end: a key with two quotes side by side loses one on its way into a statement,
/// one with a character 0 becomes blanks, and what is found behind that can be the row itself or
/// one before it.
class VisitedKeys {
public:
    /// @param walk  name of the walking routine, for the log.
    /// @return false, with a line in the log that names the key, when the walk has been there.
    bool add(const char* walk, const std::string& key);

private:
    std::set<std::string> keys_;
};

/// How one list is walked.
struct RecordWalk {
    const char* name;                ///< of the routine, for the log
    std::function<bool()> first;     ///< puts the first row into the buffer; false: there is none
    std::function<bool()> next;      ///< the next row; false at the end; empty: one record only
    std::function<void()> send;      ///< the row in the buffer goes to the company file
    std::function<void()> progress;  ///< shows the row in the buffer
    const char* cancelled;           ///< text of the label after Stop
    /// Key of the row in the buffer; only a walk by a text key needs it (see VisitedKeys).
    std::function<std::string()> position = {};
    std::function<void()> finish = {};  ///< sends what is still held back, before that text
    std::string_view window = "frmSetup";
};

/// `failed`: the first movement met an error, so that no row was walked.
enum class WalkEnd : std::uint8_t { empty, done, stopped, failed };

/// Walks the list. An error of one record is logged and the walk goes on; an error of a movement is
/// logged and ends the walk as Stop does. A row that comes once more ends it as the end of the
/// table does. After Stop, and after an error of the first movement, the label of the walk's window
/// holds the walk's own text.
WalkEnd walkRecords(const RecordWalk& walk);

/// Movements of a walk in the order of a key of a table.
std::function<bool()> firstByKey(std::int16_t table, std::int16_t key);
std::function<bool()> nextByKey(std::int16_t table, std::int16_t key);
/// Movements of a walk over the rows of one statement.
std::function<bool()> firstOfStatement(std::int16_t table, std::string statement);
std::function<bool()> nextOfStatement(std::int16_t table);

/// Reads the row of the key in the buffer. @return false when there is none.
bool readEqual(std::int16_t table, std::int16_t key);

/// Shows that a record of a manual export does not exist, and logs it. Kept: the two texts differ
/// in the case of their letters.
void reportMissing(const std::string& record);

/// Sets a record mark in memory. @return false, with a line in the log, for a number above 32767:
/// the mark stays then.
bool setRecordMark(const char* key, std::int16_t& mark, std::int32_t number);

/// Keeps the record mark of a list export in memory and in `QBLINK.NUV`. A number above 32767 does
/// not fit: the mark stays and a line in the log says so.
void storeRecordMark(const char* key, std::int16_t& mark, std::int32_t number);

}  // namespace exporting
