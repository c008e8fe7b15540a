#pragma once

#include "util/fixed_text.h"
#include "util/money.h"

#include <cstdint>

namespace db {

/// The head of one purchase order. Dates yyyymmdd.
struct POHeaderRecord {
    util::FixedText<8> PO;
    util::FixedText<12> VendorPONum;
    util::FixedText<1> SENTOUT;
    util::FixedText<15> VENDORCODE;
    util::FixedText<15> WHO;
    util::FixedText<8> ETADATE;
    util::FixedText<1> REMARKS;
    util::FixedText<8> SCODE;
    util::FixedText<8> ORDERDATE;
    util::Money TOTAL;
    util::FixedText<8> CHANGEDATE;
    util::FixedText<1> STATUS;
    util::FixedText<1> POTYPE;
    std::int16_t Store = 0;
    util::FixedText<8> SHIPDATE;
    util::FixedText<8> CANCELDATE;
    util::FixedText<2> CostCenter;
    util::FixedText<8> ApprovedBy;
    util::FixedText<15> BillTo;
    util::FixedText<16> ShippingMethod;
    std::int32_t ShipUID = 0;
    util::FixedText<1> POLL;
    util::FixedText<19> Spare1;
};

}  // namespace db

/// The head of the last operation on table 7.
extern db::POHeaderRecord gPOHeader;

namespace db {

enum POHeaderKey : std::int16_t { keyPOHeaderPO = 0 };

/// Binds table 7, which is made when it is missing.
void bindPOHeader();

}  // namespace db
