#pragma once

#include "util/fixed_text.h"
#include "util/money.h"

#include <cstdint>
#include <string>

namespace db {

/// One line of a sale. `LineNum` counts from 1; `SaleDate` yyyymmdd.
struct SalesItemRecord {
    std::int32_t SaleID = 0;
    std::int16_t StoreNum = 0;
    util::FixedText<7> Invoice;
    util::Money LineNum;
    util::FixedText<8> SCode;
    std::int32_t InvUID = 0;
    util::FixedText<11> Dept;
    util::FixedText<15> Vendor;
    float Ordered = 0;
    float Shipped = 0;
    util::Money Cost;
    util::Money ListPrice;
    util::Money ItemPrice;
    util::Money LineTotal;
    util::FixedText<1> Taxed;
    float DiscountPC = 0;
    util::Money DiscountAmt;
    std::int32_t DiscountType = 0;
    util::FixedText<30> Description;
    util::FixedText<1> Kit;
    util::Money KitPrice;
    util::Money ListCost;
    float TaxRate = 0;
    util::Money Linetax;
    util::FixedText<1> Poll;
    util::FixedText<1> Status;
    util::FixedText<8> SaleDate;
    util::Money Spare1;
    util::FixedText<2> Exception;
    util::FixedText<20> Reference;
    util::FixedText<8> SL;
    util::FixedText<12> Spare2;
    std::int32_t HubUID = 0;
};

}  // namespace db

/// The line of the last operation on table 10.
extern db::SalesItemRecord gSalesItem;

namespace db {

enum SalesItemKey : std::int16_t { keySalesItemInvUID = 0 };

/// Reads one line of a sale into `gSalesItem`.
/// @return false when the sale has no such line; `gSalesItem` is left alone then.
bool readSalesItem(std::int32_t saleId, std::int32_t lineNumber);

/// Binds the lines of sales under `table`: 10, or another number for the hub's copy of the same
/// layout under the SQL name `name`. Makes the table when it is missing.
void bindSalesItem(std::int16_t table = 10, const std::string& name = "SalesItem");

}  // namespace db
