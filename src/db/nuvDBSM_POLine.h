#pragma once

#include "util/fixed_text.h"
#include "util/money.h"

#include <cstdint>

namespace db {

/// One line of a purchase order.
struct POLineRecord {
    util::FixedText<8> PO;
    std::int16_t LineNum = 0;
    util::FixedText<15> ARCode;
    util::FixedText<8> SCode;
    util::FixedText<8> OrderDate;
    util::Money Quantity2Order;
    util::Money Cost;
    util::Money LineTotal;
    float Tags = 0;
    util::FixedText<8> ChangeDate;
    util::FixedText<1> Status;
    std::int16_t Store = 0;
    std::int32_t InvUID = 0;
    std::int32_t Spare = 0;
    util::Money OnOrder;
    util::Money Received;
    util::FixedText<1> Poll;
    util::FixedText<19> Spare1;
};

}  // namespace db

/// The line of the last operation on table 8.
extern db::POLineRecord gPOLine;

namespace db {

enum POLineKey : std::int16_t { keyPOLinePO = 0 };

/// Binds table 8, which is made when it is missing.
void bindPOLine();

}  // namespace db
