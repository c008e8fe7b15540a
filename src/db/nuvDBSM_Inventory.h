#pragma once

#include "util/fixed_text.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <cstdint>

namespace db {

/// One item of the store: `SL` is the short code, `ItemID` the long one, `RecordNum` the number
/// that other tables hold as `InvUID`.
struct InventoryRecord {
    util::FixedText<8> SL;
    util::FixedText<25> ItemID;
    util::FixedText<30> Description;
    util::FixedText<20> SubDescription;
    util::FixedText<1> ReorderFlag;
    util::FixedText<1> Serialized;
    util::FixedText<1> HasSold;
    util::FixedText<15> VendorCode;
    util::Money Price;
    util::Money Cost;
    float QtyOnHand = 0;
    std::int16_t MinQ = 0;
    std::int32_t MaxQ = 0;
    std::int16_t QTYINPACK = 0;
    util::FixedText<1> TaxCode;
    util::FixedText<11> DeptCode;
    util::FixedText<1> NotUsed;
    std::int16_t OnOrder = 0;
    util::Money AvgCost;
    util::FixedText<1> Notes;
    util::FixedText<1> Kit;
    util::FixedText<1> Poll;
    util::FixedText<1> Scalable;
    util::FixedText<1> FoodStamp;
    util::FixedText<8> LinkBreakPack;
    util::FixedText<8> LinkItem;
    util::FixedText<8> LinkStock;
    util::FixedText<1> FlgMatrix;
    util::FixedText<1> FlgMatrixItem;
    util::FixedText<1> AllowDiscounts;
    util::FixedText<20> FLAGS;
    std::int16_t RegionID = 0;
    util::Money PriceIncTax;
    util::FixedText<8> LastSold;
    util::FixedText<1> Status;
    util::FixedText<6> VolumetrcUnit;
    util::FixedText<5> UOM;
    util::FixedText<30> StoreRef;
    util::FixedText<8> LocFront;
    util::FixedText<8> LocBack;
    std::int32_t RecordNum = 0;
    util::FixedText<1> NonDecrement;
    util::FixedText<1> FlgPromoPrice;
    util::FixedText<1> FlgQtyPrice;
    util::FixedText<1> FlgWebEnable;
    util::FixedText<1> FlgPriceLevel;
    util::FixedText<1> FlgBPL;
    util::FixedText<1> NeverOrder;
    util::FixedText<5> SaleCommission;
    util::FixedText<2> Class;
    util::FixedText<6> PriceFactor;
    util::Money Price2;
    std::int16_t UnitsPerUOM = 0;
    std::int32_t BPL1 = 0;
    std::int32_t BPL2 = 0;
    std::int16_t PenLiqorUnit = 0;
    std::int32_t BPL3 = 0;
};

}  // namespace db

/// The item of the last operation on table 1.
extern db::InventoryRecord gInventory;

/// Reads one of the special rows that stand for sale lines without goods.
/// @param number  1 "~NONSTK", 2 "~ROA", 3 "~ROAL", 4 "~DISCNT", 5 "~PAYROL", 6 "~POUT", 7
/// "~VCOUPN",
///                8 "~SCOUPN", 9 "~VDSCNT", 10 "~ROALTX", 11 "~DPOUT"; any other gives kNo.
/// @return kYes when the row is there; `gInventory` holds it then. Blocks; a failed statement is
/// told in a box.
LegacyBool gfbInventory_ReservedRead(std::int16_t number);
/// Reads the item whose `RecordNum` is `number` into `gInventory`. @return kNo when there is none.
LegacyBool gfbInventory_ReadByRecordNum(std::int32_t number);

namespace db {

enum InventoryKey : std::int16_t {
    keyInventoryRecordNum = 0,
    keyInventorySL = 1,
    keyInventoryItemID = 2
};

/// Binds table 1: makes the table when it is missing and brings an older layout up to date (columns
/// "PenLiqorUnit", "BPL3"; names "NeverOrder", "NotUsed", "PriceFactor"; `ItemID` of 25
/// characters).
void bindInventory();

}  // namespace db
