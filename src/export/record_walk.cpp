#include "export/record_walk.h"

#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "db/NuvDBSM_MSDE.h"
#include "export/export_run.h"
#include "ui/status.h"
#include "util/conversions.h"

#include <limits>
#include <utility>

namespace exporting {

namespace {

enum class Move : std::uint8_t { found, none, failed };

Move move(const RecordWalk& walk, const std::function<bool()>& step) {
    bool found = false;
    if (!guardRecord(walk.name, [&] { found = step && step(); })) {
        return Move::failed;
    }
    return found ? Move::found : Move::none;
}

WalkEnd endCancelled(const RecordWalk& walk, WalkEnd end) {
    ui::showStatus(walk.window, walk.cancelled);
    return end;
}

bool isAtNewRow(const RecordWalk& walk, VisitedKeys& visited) {
    return !walk.position || visited.add(walk.name, walk.position());
}

}  // namespace

bool VisitedKeys::add(const char* walk, const std::string& key) {
    const bool isNew = keys_.insert(key).second;
    if (!isNew) {
        gpQBLink_Log_writing(std::string(walk) + " stands on " + key + " once more");
    }
    return isNew;
}

WalkEnd walkRecords(const RecordWalk& walk) {
    Move moved = move(walk, walk.first);
    if (moved == Move::none) {
        return WalkEnd::empty;
    }
    if (moved == Move::failed) {
        return endCancelled(walk, WalkEnd::failed);
    }
    VisitedKeys visited;
    bool isStopped = false;
    while (!isStopped && moved == Move::found && isAtNewRow(walk, visited)) {
        guardRecord(walk.name, walk.send);
        walk.progress();
        isStopped = gbStopRequested != kNo;
        if (!isStopped) {
            moved = move(walk, walk.next);
        }
    }
    if (walk.finish) {
        guardRecord(walk.name, walk.finish);
    }
    return isStopped || moved == Move::failed ? endCancelled(walk, WalkEnd::stopped)
                                              : WalkEnd::done;
}

std::function<bool()> firstByKey(std::int16_t table, std::int16_t key) {
    return [=] { return gfiDB_Operation(table, db::opGetFirst, key) != kNo; };
}

std::function<bool()> nextByKey(std::int16_t table, std::int16_t key) {
    return [=] { return gfiDB_Operation(table, db::opGetNext, key) != kNo; };
}

std::function<bool()> firstOfStatement(std::int16_t table, std::string statement) {
    return [table, statement = std::move(statement)] {
        if (gfbDB_OpenBySQL(statement, table) == kNo) {
            return false;
        }
        db_pRecord_fromRow(table);
        return true;
    };
}

std::function<bool()> nextOfStatement(std::int16_t table) {
    return [table] {
        db::moveNext(table);
        if (db::atEnd(table)) {
            return false;
        }
        db_pRecord_fromRow(table);
        return true;
    };
}

bool readEqual(std::int16_t table, std::int16_t key) {
    return gfiDB_Operation(table, db::opEqual, key) != kNo;
}

void reportMissing(const std::string& record) {
    showStatus("ERROR: " + record + " Not in database!!!");
    gpQBLink_Log_writing("ERROR: " + record + " Not In Database!!!");
}

bool setRecordMark(const char* key, std::int16_t& mark, std::int32_t number) {
    if (number > std::numeric_limits<std::int16_t>::max()) {
        gpQBLink_Log_writing(
            std::string(key) + ": record " + util::textOf(static_cast<std::int64_t>(number)) +
            " is above 32767, the mark stays as it was"
        );
        return false;
    }
    mark = static_cast<std::int16_t>(number);
    return true;
}

void storeRecordMark(const char* key, std::int16_t& mark, std::int32_t number) {
    if (setRecordMark(key, mark, number) && core::openLinkSetup()) {
        core::storeMark(key, util::textOf(static_cast<std::int64_t>(mark)));
    }
}

}  // namespace exporting
