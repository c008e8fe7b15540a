#include "db/nuvDBSM_SalesItem.h"

#include "db/table_module.h"

db::SalesItemRecord gSalesItem;

namespace db {

namespace {

constexpr auto kSalesItem = table(
    "SalesItem",
    column("SaleID", "INTEGER NOT NULL", &SalesItemRecord::SaleID),
    column("StoreNum", "SMALLINT", &SalesItemRecord::StoreNum),
    column("Invoice", "CHAR (7) NOT NULL", &SalesItemRecord::Invoice),
    column("LineNum", "NUMERIC NOT NULL", &SalesItemRecord::LineNum),
    column("SCode", "CHAR (8) NOT NULL", &SalesItemRecord::SCode),
    column("InvUID", "INTEGER NOT NULL", &SalesItemRecord::InvUID),
    column("Dept", "CHAR (11) DEFAULT ' '", &SalesItemRecord::Dept),
    column("Vendor", "CHAR (15) DEFAULT ' '", &SalesItemRecord::Vendor),
    column("Ordered", "REAL NOT NULL", &SalesItemRecord::Ordered),
    column("Shipped", "REAL NOT NULL", &SalesItemRecord::Shipped),
    column("Cost", "DECIMAL(18,3) NOT NULL", &SalesItemRecord::Cost),
    column("ListPrice", "DECIMAL (18,3) NOT NULL", &SalesItemRecord::ListPrice),
    column("ItemPrice", "DECIMAL (18,3)NOT NULL", &SalesItemRecord::ItemPrice),
    column("LineTotal", "DECIMAL (18,3)NOT NULL", &SalesItemRecord::LineTotal),
    column("Taxed", "CHAR (1) DEFAULT ' '", &SalesItemRecord::Taxed),
    column("DiscountPC", "REAL NOT NULL", &SalesItemRecord::DiscountPC),
    column("DiscountAmt", "DECIMAL (18,3)NOT NULL", &SalesItemRecord::DiscountAmt),
    column("DiscountType", "INTEGER", &SalesItemRecord::DiscountType),
    column("Description", "CHAR (30) DEFAULT ' '", &SalesItemRecord::Description),
    column("Kit", "CHAR (1) DEFAULT ' '", &SalesItemRecord::Kit),
    column("KitPrice", "DECIMAL(18,3) NOT NULL", &SalesItemRecord::KitPrice),
    column("ListCost", "DECIMAL (18,3)NOT NULL", &SalesItemRecord::ListCost),
    column("TaxRate", "REAL NOT NULL", &SalesItemRecord::TaxRate),
    column("Linetax", "DECIMAL (18,3) NOT NULL", &SalesItemRecord::Linetax),
    column("Poll", "CHAR (1) DEFAULT ' '", &SalesItemRecord::Poll),
    column("Status", "CHAR (1) DEFAULT ' '", &SalesItemRecord::Status),
    column("SaleDate", "CHAR (8) DEFAULT ' '", &SalesItemRecord::SaleDate),
    column("Spare1", "DECIMAL (18,3)NOT NULL", &SalesItemRecord::Spare1),
    column("Exception", "CHAR (2) DEFAULT ' '", &SalesItemRecord::Exception),
    column("Reference", "CHAR (20) DEFAULT ' '", &SalesItemRecord::Reference),
    column("SL", "CHAR (8) NOT NULL", &SalesItemRecord::SL),
    column("Spare2", "CHAR (12) DEFAULT ' '", &SalesItemRecord::Spare2),
    column("HubUID", "INTEGER NOT NULL", &SalesItemRecord::HubUID)
);

constexpr KeyPart kSalesItemKeys[] = {
    {0, "InvUID"},   {0, "SaleID"},  {0, "LineNum"},  {1, "Poll"},    {1, "SaleID"},
    {1, "LineNum"},  {2, "Vendor"},  {2, "SaleID"},   {2, "LineNum"}, {3, "Dept"},
    {3, "SaleID"},   {3, "LineNum"}, {4, "SCode"},    {4, "SaleID"},  {4, "LineNum"},
    {5, "StoreNum"}, {5, "SaleID"},  {5, "StoreNum"}, {6, "InvUID"},  {6, "StoreNum"},
    {6, "SaleID"},   {7, "Vendor"},  {7, "StoreNum"}, {7, "SaleID"},  {8, "Dept"},
    {8, "StoreNum"}, {8, "SaleID"},  {9, "HubUID"},   {9, "LineNum"},
};

constexpr std::string_view kSalesItemIndexes[] = {
    "Create UNIQUE CLUSTERED Index idx_0 On <table>(saleid, LineNum);",
    "Create UNIQUE Index idx_1 On <table>(InvUID, saleid, LineNum);",
    "Create UNIQUE Index idx_2 On <table>(Poll, saleid, LineNum);",
    "Create UNIQUE Index idx_3 On <table>(Vendor, saleid, LineNum);",
    "Create UNIQUE Index idx_4 On <table>(Dept, saleid, LineNum);",
    "Create UNIQUE Index idx_5 On <table>(SCode, saleid, LineNum);",
};

constexpr TableTitles kSalesItemTitles = {"SALESITEM", "SaleItem.NUV"};
constexpr TableTitles kSaleHubItemTitles = {"SALEHUBITEM", "SaleItemHub.NUV"};

}  // namespace

const TableRoutines& salesItemRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kSalesItem, kSalesItemKeys, gSalesItem>();
    return kRoutines;
}

bool readSalesItem(std::int32_t saleId, std::int32_t lineNumber) {
    const std::string statement =
        "SELECT TOP 1 * FROM " + DBTableDescriptors[tableSalesItem].TableName + " WHERE SaleID='" +
        std::to_string(saleId) + "' AND LineNum='" + std::to_string(lineNumber) + "'";
    return gfiDB_Operation(tableSalesItem, opEqual, keySalesItemInvUID, kNo, kNo, statement) != kNo;
}

void bindSalesItem(std::int16_t table, const std::string& name) {
    const bool isHub = table != tableSalesItem;
    define(
        table, kSalesItem, isHub ? kSaleHubItemTitles : kSalesItemTitles, kSalesItemIndexes, name
    );
    makeIfMissing(table);
}

}  // namespace db
