#pragma once

#include "util/fixed_text.h"
#include "util/legacy_bool.h"

#include <cstdint>

namespace db {

/// One way of paying.
struct TenderTypesRecord {
    std::int64_t TenderID = 0;
    util::FixedText<20> Description;
    std::int16_t TenderType = 0;
    util::FixedText<1> EDC;
    util::FixedText<1> Drawer;
    util::FixedText<1> PrintReceipt;
    float ExchangeRate = 0;
};

}  // namespace db

/// The tender of the last operation on table 4.
extern db::TenderTypesRecord gTenderTypes;

/// Inserts the ten tenders that a new store starts with.
void gpTenderTypes_AddDefaults();
/// Opens all tenders in the order of `TenderID` as the rows of table 4 (db::moveNext, db::atEnd);
/// `gTenderTypes` is filled by db_pRecord_fromRow. @return kNo when there are none.
LegacyBool gfbTenderTypes_ReadAll();

namespace db {

enum TenderTypesKey : std::int16_t { keyTenderTypesTenderID = 0 };

/// Binds table 4: makes the table and its first rows when it is missing.
void bindTenderTypes();

}  // namespace db
