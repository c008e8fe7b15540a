#include "core/brvDBSM_Interface.h"

#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_POHeader.h"
#include "db/nuvDBSM_POHistory.h"
#include "db/nuvDBSM_POLine.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "db/nuvDBSM_SecurLog.h"
#include "db/nuvDBSM_Vendors.h"
#include "db/table_module.h"
#include "platform/ports/platform.h"

namespace {

void bindTables() {
    db::bindInventory();
    db::bindSalesHead();
    db::bindSalesItem();
    db::bindNames();
    db::bindTenderTypes();
    db::bindSalesCodes();
    db::bindVendors();
    db::bindPOHeader();
    db::bindPOLine();
    db::bindPOHistory();
    db::bindSecurLog();
}

bool readCommon() {
    return gfiDB_Operation(db::tableCommon, db::opGetFirst, 0) != kNo;
}

/// The routine of the table's module, null when it has none.
template <class Routine>
Routine routineOf(std::int16_t table, Routine db::TableRoutines::*member) {
    const db::TableRoutines* routines = db::routinesFor(table);
    return routines == nullptr ? nullptr : routines->*member;
}

}  // namespace

LegacyBool db_fbInterface_open() {
    std::string message;
    if (gfbDB_Connect(message) == kNo) {
        return kNo;
    }
    db::bindCommon();
    if (db_fbCommon_reading() != kNo) {
        bindTables();
    }
    return kYes;
}

LegacyBool db_fbCommon_reading() {
    if (gfbDB_OpenTable(db::tableCommon) == kNo || !readCommon()) {
        return kNo;
    }
    if (gCommon.MultiStore.view() == "Y" || gCommon.StoreNumber == 0) {
        gbMultiStore = kYes;
    } else {
        gsStoreNumber = std::to_string(gCommon.StoreNumber);
    }
    return kYes;
}

LegacyBool db_fbAllTables_open() {
    for (std::int16_t table = 0; table < db::kTableCount; ++table) {
        if (gfbDB_OpenTable(table) == kNo) {
            return kNo;
        }
        if (table == db::tableCommon && readCommon()) {
            gpDB_CloseTable(table);
        }
    }
    return kYes;
}

void db_pAllTables_close() {
    for (std::int16_t table = 0; table < db::kTableCount; ++table) {
        gpDB_CloseTable(table);
    }
}

void gpApp_end() {
    platform::ignoringErrors([] { db_pAllTables_close(); });
    platform::processes().endProgram();
    throw platform::ProgramEnd();  // not reached: the port has thrown it
}

std::string db_fsRecord_values(std::int16_t table) {
    db_pRecord_quote(table);
    const auto values = routineOf(table, &db::TableRoutines::values);
    return values == nullptr ? std::string() : values();
}

void db_pRecordKey_prepare(std::int16_t table, std::int16_t keyNumber) {
    const auto prepareKey = routineOf(table, &db::TableRoutines::prepareKey);
    if (prepareKey != nullptr) {
        prepareKey(table, keyNumber);
    }
}

void db_pRecord_quote(std::int16_t table) {
    const auto quote = routineOf(table, &db::TableRoutines::quote);
    if (quote != nullptr) {
        quote();
    }
}

void db_pRecord_fromRow(std::int16_t table) {
    const auto fromRow = routineOf(table, &db::TableRoutines::fromRow);
    if (fromRow != nullptr) {
        fromRow(table);
    }
}

void db_pRecord_toRow(std::int16_t table) {
    const auto toRow = routineOf(table, &db::TableRoutines::toRow);
    if (toRow != nullptr) {
        toRow(table);
    }
}
