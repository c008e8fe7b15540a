#include "windows/new_records.h"

#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "export/export_run.h"
#include "export/record_exports.h"
#include "export/record_walk.h"
#include "util/conversions.h"

#include <algorithm>
#include <iterator>

namespace windows {

namespace {

/// A table whose new rows are sent.
struct Kind {
    std::int16_t table;
    const char* condition;  ///< between the table's name and the mark
    const char* order;
    const char* key;  ///< of the mark in the setup file
    std::int16_t* mark;
    std::int32_t (*number)();  ///< record number of the row in the buffer
    std::string (*label)();    ///< progress text of the row in the buffer
    void (*send)();
};

const Kind kKindRows[] = {
    {db::tableInventory,
     " WHERE recordnum > ",
     " ORDER BY recordNum desc",
     "Last Inventory UID Added",
     &gnLastInventoryUID,
     [] { return gInventory.RecordNum; },
     [] { return gInventory.Description.str() + " " + gInventory.SL.str(); },
     gpItem_export},
    {db::tableNames,
     " WHERE nameID > ",
     " order by NameID desc",
     "Last Name UID Added",
     &gnLastNameUID,
     [] { return gNames.NameID; },
     [] { return gNames.BUSINESS.str() + " " + gNames.ARCode.str(); },
     gpCustomer_export},
};

bool findRows(const Kind& kind) {
    if (*kind.mark <= 0) {
        return false;
    }
    const std::string statement = "SELECT  * FROM " + DBTableDescriptors[kind.table].TableName +
                                  kind.condition +
                                  util::textOf(static_cast<std::int64_t>(*kind.mark)) + kind.order;
    if (gfbDB_OpenBySQL(statement, kind.table) == kNo) {
        return false;
    }
    db_pRecord_fromRow(kind.table);
    return kind.number() > *kind.mark;
}

/// Sends the rows in hand. @return the highest record number, which is that of the first row; the
/// mark as it stands when the operator stopped, because older rows were not sent then.
std::int32_t sendRows(const Kind& kind) {
    std::int32_t highest = *kind.mark;
    while (!db::atEnd(kind.table)) {
        if (gbStopRequested != kNo) {
            return *kind.mark;
        }
        db_pRecord_fromRow(kind.table);
        highest = std::max(highest, kind.number());
        exporting::showStatus(kind.label());
        exporting::guardRecord(kind.key, kind.send);
        db::moveNext(kind.table);
    }
    return highest;
}

/// Writes the marks that fit, when the file opens.
void storeMarks(const bool* fits) {
    if (!core::openLinkSetup()) {
        return;
    }
    for (const Kind& kind : kKindRows) {
        if (*fits++) {
            core::storeMark(kind.key, util::textOf(static_cast<std::int64_t>(*kind.mark)));
        }
    }
}

}  // namespace

void NewRecords::find() {
    static_assert(std::size(kKindRows) == kKinds);
    for (int row = kKinds - 1; row >= 0; --row) {
        found_[row] = findRows(kKindRows[row]);
    }
}

bool NewRecords::post() {
    const bool any =
        std::any_of(std::begin(found_), std::end(found_), [](bool one) { return one; });
    if (any && !exporting::ensureSession()) {
        return false;
    }
    bool fits[kKinds] = {true, true};
    for (int row = 0; row < kKinds; ++row) {
        if (found_[row]) {
            const Kind& kind = kKindRows[row];
            fits[row] = exporting::setRecordMark(kind.key, *kind.mark, sendRows(kind));
        }
    }
    storeMarks(fits);
    const bool isStopped = any && gbStopRequested != kNo;
    if (isStopped) {
        exporting::showStatus("Exporting Sales Cancelled");
    }
    return !isStopped;
}

}  // namespace windows
