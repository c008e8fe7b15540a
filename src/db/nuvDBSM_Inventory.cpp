#include "db/nuvDBSM_Inventory.h"

#include "core/brvDBSM_Interface.h"
#include "db/clear_record.h"
#include "db/connection.h"
#include "db/table_module.h"
#include "util/conversions.h"

db::InventoryRecord gInventory;

namespace db {

namespace {

constexpr auto kInventory = table(
    "Inventory",
    column("SL", "CHAR (8) NOT NULL DEFAULT ' '", &InventoryRecord::SL),
    column("ItemID", "CHAR (25) NOT NULL DEFAULT ' '", &InventoryRecord::ItemID),
    column("Description", "CHAR (30) DEFAULT ' '", &InventoryRecord::Description),
    column("SubDescription", "CHAR (20) DEFAULT ' '", &InventoryRecord::SubDescription),
    column("ReorderFlag", "CHAR (1) DEFAULT ' '", &InventoryRecord::ReorderFlag),
    column("Serialized", "CHAR (1) DEFAULT ' '", &InventoryRecord::Serialized),
    column("HasSold", "CHAR (1) DEFAULT ' '", &InventoryRecord::HasSold),
    column("VendorCode", "CHAR (15) DEFAULT ' '", &InventoryRecord::VendorCode),
    column("Price", "DECIMAL (18,4)", &InventoryRecord::Price),
    column("Cost", "DECIMAL (18,4)", &InventoryRecord::Cost),
    column("QtyOnHand", "REAL", &InventoryRecord::QtyOnHand),
    column("MinQ", "SMALLINT", &InventoryRecord::MinQ),
    column("MaxQ", "INT", &InventoryRecord::MaxQ),
    column("QTYINPACK", "SMALLINT", &InventoryRecord::QTYINPACK),
    column("TaxCode", "CHAR (1) DEFAULT ' '", &InventoryRecord::TaxCode),
    column("DeptCode", "CHAR (11) DEFAULT ' '", &InventoryRecord::DeptCode),
    column("NotUsed", "CHAR (1) DEFAULT ' '", &InventoryRecord::NotUsed),
    column("OnOrder", "SMALLINT", &InventoryRecord::OnOrder),
    column("AvgCost", "DECIMAL (18,4)", &InventoryRecord::AvgCost),
    column("Notes", "CHAR (1) DEFAULT ' '", &InventoryRecord::Notes),
    column("Kit", "CHAR (1) DEFAULT ' '", &InventoryRecord::Kit),
    column("Poll", "CHAR (1) DEFAULT ' '", &InventoryRecord::Poll),
    column("Scalable", "CHAR(1) DEFAULT ' '", &InventoryRecord::Scalable),
    column("FoodStamp", "CHAR(1) DEFAULT ' '", &InventoryRecord::FoodStamp),
    column("LinkBreakPack", "CHAR(8) DEFAULT ' '", &InventoryRecord::LinkBreakPack),
    column("LinkItem", "CHAR(8) DEFAULT ' '", &InventoryRecord::LinkItem),
    column("LinkStock", "CHAR(8) DEFAULT ' '", &InventoryRecord::LinkStock),
    column("FlgMatrix", "CHAR(1) DEFAULT ' '", &InventoryRecord::FlgMatrix),
    column("FlgMatrixItem", "CHAR(1) DEFAULT ' '", &InventoryRecord::FlgMatrixItem),
    column("AllowDiscounts", "CHAR(1) DEFAULT ' '", &InventoryRecord::AllowDiscounts),
    column("FLAGS", "CHAR(20) DEFAULT ' '", &InventoryRecord::FLAGS),
    column("RegionID", "SMALLINT", &InventoryRecord::RegionID),
    column("PriceIncTax", "DECIMAL(18,2)", &InventoryRecord::PriceIncTax),
    column("LastSold", "CHAR(8) DEFAULT ' '", &InventoryRecord::LastSold),
    column("Status", "CHAR(1) DEFAULT ' '", &InventoryRecord::Status),
    column("VolumetrcUnit", "CHAR(6) DEFAULT ' '", &InventoryRecord::VolumetrcUnit),
    column("UOM", "CHAR(5) DEFAULT ' '", &InventoryRecord::UOM),
    column("StoreRef", "CHAR(30) DEFAULT ' '", &InventoryRecord::StoreRef),
    column("LocFront", "CHAR(8) DEFAULT ' '", &InventoryRecord::LocFront),
    column("LocBack", "CHAR(8) DEFAULT ' '", &InventoryRecord::LocBack),
    column("RecordNum", "INTEGER", &InventoryRecord::RecordNum),
    column("NonDecrement", "CHAR(1) DEFAULT ' '", &InventoryRecord::NonDecrement),
    column("FlgPromoPrice", "CHAR(1) DEFAULT ' '", &InventoryRecord::FlgPromoPrice),
    column("FlgQtyPrice", "CHAR(1) DEFAULT ' '", &InventoryRecord::FlgQtyPrice),
    column("FlgWebEnable", "CHAR(1) DEFAULT ' '", &InventoryRecord::FlgWebEnable),
    column("FlgPriceLevel", "CHAR(1) DEFAULT ' '", &InventoryRecord::FlgPriceLevel),
    column("FlgBPL", "CHAR(1) DEFAULT ' '", &InventoryRecord::FlgBPL),
    column("NeverOrder", "CHAR(1) DEFAULT ' '", &InventoryRecord::NeverOrder),
    column("SaleCommission", "CHAR(5) DEFAULT ' '", &InventoryRecord::SaleCommission),
    column("Class", "CHAR(2) DEFAULT ' '", &InventoryRecord::Class),
    column("PriceFactor", "CHAR(6) DEFAULT ' '", &InventoryRecord::PriceFactor),
    column("Price2", "DECIMAL (18,4)", &InventoryRecord::Price2),
    column("UnitsPerUOM", "SMALLINT", &InventoryRecord::UnitsPerUOM),
    column("BPL1", "INTEGER", &InventoryRecord::BPL1),
    column("BPL2", "INTEGER", &InventoryRecord::BPL2),
    column("PenLiqorUnit", "SMALLINT DEFAULT 0", &InventoryRecord::PenLiqorUnit),
    column("BPL3", "INTEGER DEFAULT 0", &InventoryRecord::BPL3)
);

constexpr KeyPart kInventoryKeys[] = {
    {0, "RecordNum"},   {1, "SL"},          {2, "ItemID"},
    {3, "Description"}, {3, "SL"},          {4, "SubDescription"},
    {4, "Description"}, {5, "VendorCode"},  {5, "Description"},
    {6, "VendorCode"},  {6, "ItemID"},      {7, "VendorCode"},
    {7, "Description"}, {8, "DeptCode"},    {8, "ItemID"},
    {9, "PriceFactor"}, {9, "Description"}, {10, "LocFront"},
    {10, "RecordNum"},  {11, "LocBack"},    {11, "RecordNum"},
    {12, "Poll"},       {12, "RecordNum"},
};

constexpr std::string_view kInventoryIndexes[] = {
    "Create UNIQUE CLUSTERED Index idx_0 On <table>(RecordNum);",
    "Create UNIQUE Index idx_1 On <table>(SL);",
    "Create UNIQUE Index idx_2 On <table>(ItemID);",
    "Create UNIQUE Index idx_3 On <table>(Description, SL);",
    "Create UNIQUE Index idx_4 On <table>(SubDescription, SL);",
    "Create UNIQUE Index idx_5 On <table>(VendorCode, SL);",
    "Create UNIQUE Index idx_6 On <table>(VendorCode, ItemID);",
    "Create Index idx_7 On <table>(VendorCode, Description);",
    "Create UNIQUE Index idx_8 On <table>(DeptCode, ItemID);",
    "Create Index idx_9 On <table>(PriceFactor, Description);",
    "Create UNIQUE Index idx_10 on <table>(LocFront, RecordNum);",
    "Create UNIQUE Index idx_11 on <table>(LocBack, RecordNum);",
    "Create UNIQUE Index idx_12 on <table>(Poll, RecordNum);",
};

constexpr TableTitles kInventoryTitles = {"INVENTRY", "invt.NUV"};

/// Codes of the rows that stand for sale lines without goods; number 1 is the first.
constexpr std::string_view kReservedCodes[] = {
    "~NONSTK",
    "~ROA",
    "~ROAL",
    "~DISCNT",
    "~PAYROL",
    "~POUT",
    "~VCOUPN",
    "~SCOUPN",
    "~VDSCNT",
    "~ROALTX",
    "~DPOUT",
};

/// Place of the price factor in the oldest column order, where it was called "Spare1".
constexpr std::int16_t kOldSpareOrdinal = 50;
constexpr std::int16_t kItemIDOrdinal = kInventory.ordinalOf("ItemID");
constexpr std::size_t kOldItemIDWidth = 15;

void addColumnIfMissing(const std::string& name, const char* column, const char* type) {
    if (!hasColumn(name, column)) {
        gfbDB_AddColumn(tableInventory, column, type);
    }
}

void renameFlag(const std::string& name) {
    if (hasColumn(name, "Flg2") && gfbDB_RenameColumn(name, "Flg2", "NeverOrder") != kNo) {
        gfiDB_ExecuteSQL("UPDATE " + name + " SET NeverOrder = ' '");
    }
}

/// Moves the price factor to the column that the oldest layout kept spare.
void movePriceFactor(const std::string& name) {
    if (gfiDB_FieldCount(tableInventory) <= kOldSpareOrdinal ||
        !util::sameName(gfvDB_GetFieldName(tableInventory, kOldSpareOrdinal), "Spare1")) {
        return;
    }
    gfiDB_ExecuteSQL("UPDATE " + name + " SET Spare1 = PriceFactor where PriceFactor > ' '");
    if (gfbDB_RenameColumn(name, "PriceFactor", "NotUsed") != kNo) {
        gfbDB_RenameColumn(name, "Spare1", "PriceFactor");
    }
}

/// Widens `ItemID` of a table that was made with 15 characters; its indexes stand in the way.
void widenItemID(const std::string& name) {
    if (statementText(gfvDB_GetField(tableInventory, kItemIDOrdinal)).size() != kOldItemIDWidth) {
        return;
    }
    for (std::size_t index = 0; index < std::size(kInventoryIndexes); ++index) {
        gfiDB_ExecuteSQL("Drop index " + name + ".idx_" + std::to_string(index));
    }
    gfiDB_ExecuteSQL("ALTER TABLE " + name + " ALTER COLUMN itemID CHAR(25)");
    for (const std::string& statement : indexStatements(tableInventory, kInventoryIndexes)) {
        gfiDB_ExecuteSQL(statement);
    }
}

void upgrade() {
    std::string name = DBTableDescriptors[tableInventory].TableName;
    if (gfiDB_RecordCount(tableInventory, name) < 1) {
        return;  // an empty table is never upgraded
    }
    addColumnIfMissing(name, "PenLiqorUnit", "SMALLINT ");
    addColumnIfMissing(name, "BPL3", "INTEGER ");
    renameFlag(name);
    if (gfbDB_OpenTable(tableInventory) != kNo) {
        movePriceFactor(name);
        widenItemID(name);
    }
}

/// Opens the item that a statement finds and reads it into the record.
LegacyBool readBy(const std::string& condition) {
    const std::string& name = DBTableDescriptors[tableInventory].TableName;
    const std::string statement = "SELECT * from " + name + " WHERE " + condition;
    if (gfbDB_OpenBySQL(statement, tableInventory) == kNo) {
        return kNo;
    }
    db_pRecord_fromRow(tableInventory);
    return kYes;
}

}  // namespace

const TableRoutines& inventoryRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kInventory, kInventoryKeys, gInventory>();
    return kRoutines;
}

InventoryRecord clearedInventory() {
    return clearedRecord<kInventory>();
}

void bindInventory() {
    define(tableInventory, kInventory, kInventoryTitles, kInventoryIndexes);
    if (!makeIfMissing(tableInventory)) {
        upgrade();
    }
}

}  // namespace db

LegacyBool gfbInventory_ReservedRead(std::int16_t number) {
    if (number < 1 || number > static_cast<std::int16_t>(std::size(db::kReservedCodes))) {
        return kNo;
    }
    const std::string code(db::kReservedCodes[number - 1]);
    return db::readBy("SL = '" + code + "'");
}

LegacyBool gfbInventory_ReadByRecordNum(std::int32_t number) {
    return db::readBy("recordnum = '" + std::to_string(number) + "'");
}
