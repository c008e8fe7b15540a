#pragma once

#include "util/fixed_text.h"
#include "util/money.h"

#include <cstdint>

namespace db {

/// One receipt against a purchase order. Dates yyyymmdd.
struct POHistoryRecord {
    util::FixedText<8> DateReceived;
    util::FixedText<10> PONumber;
    std::int32_t InvUID = 0;
    std::int16_t Spare = 0;
    float UnitQty = 0;
    util::Money UnitCost;
    std::int16_t Pack = 0;
    util::FixedText<15> VendorCode;
    util::FixedText<1> Status;
    util::FixedText<1> Poll;
    util::FixedText<15> ARCode;
    util::FixedText<8> SalesCode;
    std::int32_t UniqueID = 0;
    util::FixedText<8> DateOrdered;
    util::FixedText<20> SPARE2;
};

}  // namespace db

/// The receipt of the last operation on table 6.
extern db::POHistoryRecord gPOHistory;

namespace db {

enum POHistoryKey : std::int16_t { keyPOHistoryStatus = 0, keyPOHistoryUniqueID = 4 };

/// Binds table 6: makes the table when it is missing.
void bindPOHistory();

}  // namespace db
