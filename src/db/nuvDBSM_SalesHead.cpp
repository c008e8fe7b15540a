#include "db/nuvDBSM_SalesHead.h"

#include "core/brvDBSM_Interface.h"
#include "db/table_module.h"

db::SalesHeadRecord gSalesHead;

namespace db {

namespace {

constexpr auto kSalesHead = table(
    "SalesHead",
    column("SALEID", "INTEGER", &SalesHeadRecord::SALEID),
    column("SaleDate", "CHAR(8) NOT NULL", &SalesHeadRecord::SaleDate),
    column("time", "smallint NOT NULL", &SalesHeadRecord::time),
    column("Scode", "CHAR(8) NOT NULL", &SalesHeadRecord::Scode),
    column("Invoice", "CHAR(7)", &SalesHeadRecord::Invoice),
    column("Store", "SMALLINT NOT NULL", &SalesHeadRecord::Store),
    column("Station", "SMALLINT NOT NULL", &SalesHeadRecord::Station),
    column("ARCode", "CHAR(15) NOT NULL", &SalesHeadRecord::ARCode),
    column("TotalSale", "DECIMAL(18,2) NOT NULL", &SalesHeadRecord::TotalSale),
    column("Discount", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::Discount),
    column("Poll", "CHAR(1) NOT NULL", &SalesHeadRecord::Poll),
    column("Status", "CHAR(1) NOT NULL", &SalesHeadRecord::Status),
    column("SubTotal", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::SubTotal),
    column("Taxes", "SMALLINT NOT NULL", &SalesHeadRecord::Taxes),
    column("Tenders", "SMALLINT NOT NULL", &SalesHeadRecord::Tenders),
    column("TaxRate1", "REAL NOT NULL", &SalesHeadRecord::TaxRate1),
    column("TaxAmount1", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxAmount1),
    column("TaxTax1", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxTax1),
    column("TaxRate2", "REAL NOT NULL", &SalesHeadRecord::TaxRate2),
    column("TaxAmount2", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxAmount2),
    column("TaxTax2", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxTax2),
    column("TaxRate3", "REAL NOT NULL", &SalesHeadRecord::TaxRate3),
    column("Taxamount3", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::Taxamount3),
    column("TaxTax3", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxTax3),
    column("TaxRate4", "REAL NOT NULL", &SalesHeadRecord::TaxRate4),
    column("TaxAmount4", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxAmount4),
    column("TaxTax4", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxTax4),
    column("Taxrate5", "REAL NOT NULL", &SalesHeadRecord::Taxrate5),
    column("TaxAmount5", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxAmount5),
    column("TaxTax5", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TaxTax5),
    column("TendType1", "SMALLINT NOT NULL", &SalesHeadRecord::TendType1),
    column("TendAmount1", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TendAmount1),
    column("TendRef1", "CHAR(25) NOT NULL", &SalesHeadRecord::TendRef1),
    column("TendAuth1", "CHAR(15) NOT NULL", &SalesHeadRecord::TendAuth1),
    column("TendType2", "SMALLINT NOT NULL", &SalesHeadRecord::TendType2),
    column("TendAmount2", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TendAmount2),
    column("TendRef2", "CHAR(25) NOT NULL", &SalesHeadRecord::TendRef2),
    column("TendAuth2", "CHAR(15) NOT NULL", &SalesHeadRecord::TendAuth2),
    column("TendType3", "SMALLINT NOT NULL", &SalesHeadRecord::TendType3),
    column("TendAmount3", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TendAmount3),
    column("TendRef3", "CHAR(25) NOT NULL", &SalesHeadRecord::TendRef3),
    column("TendAuth3", "CHAR(15) NOT NULL", &SalesHeadRecord::TendAuth3),
    column("TendType4", "SMALLINT NOT NULL", &SalesHeadRecord::TendType4),
    column("TendAmount4", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::TendAmount4),
    column("TendRef4", "CHAR(25) NOT NULL", &SalesHeadRecord::TendRef4),
    column("TendAuth4", "CHAR(15) NOT NULL", &SalesHeadRecord::TendAuth4),
    column("TendType5", "SMALLINT NOT NULL", &SalesHeadRecord::TendType5),
    column("TendAmount5", "DECIMAL(18,2) NOT NULL", &SalesHeadRecord::TendAmount5),
    column("TendRef5", "CHAR(25) NOT NULL", &SalesHeadRecord::TendRef5),
    column("TendAuth5", "CHAR(15) NOT NULL", &SalesHeadRecord::TendAuth5),
    column("Taxed", "CHAR(1) NOT NULL", &SalesHeadRecord::Taxed),
    column("Spare", "DECIMAL (18,2) NOT NULL", &SalesHeadRecord::Spare),
    column("Reference", "CHAR(15) NOT NULL", &SalesHeadRecord::Reference),
    column("Description", "CHAR(15) NOT NULL", &SalesHeadRecord::Description),
    column("Spare2", "CHAR(10) NOT NULL", &SalesHeadRecord::Spare2),
    column("HubUID", "INTEGER", &SalesHeadRecord::HubUID),
    column("TaxCode1", "CHAR(1) NOT NULL", &SalesHeadRecord::TaxCode1),
    column("TaxCode2", "CHAR(1) NOT NULL", &SalesHeadRecord::TaxCode2),
    column("TaxCode3", "CHAR(1) NOT NULL", &SalesHeadRecord::TaxCode3),
    column("TaxCode4", "CHAR(1) NOT NULL", &SalesHeadRecord::TaxCode4),
    column("TaxCode5", "CHAR(1) NOT NULL", &SalesHeadRecord::TaxCode5)
);

constexpr KeyPart kSalesHeadKeys[] = {
    {0, "SaleDate"}, {0, "SALEID"}, {1, "ARCode"},   {1, "SALEID"}, {2, "Poll"},   {2, "SALEID"},
    {3, "Invoice"},  {4, "ARCode"}, {4, "Invoice"},  {5, "Store"},  {5, "SALEID"}, {6, "SaleDate"},
    {6, "Store"},    {6, "SALEID"}, {7, "ARCode"},   {7, "Store"},  {7, "SALEID"}, {8, "Store"},
    {8, "Invoice"},  {9, "ARCode"}, {9, "SaleDate"}, {9, "Store"},  {9, "SALEID"}, {10, "HubUID"},
};

constexpr std::string_view kSalesHeadIndexes[] = {
    "Create UNIQUE Index idx_0 On <table>(STORE, SALEID);",
    "Create UNIQUE index idx_1 On <table>(SaleDATE, STORE, SALEID);",
    "Create UNIQUE Index idx_2 On <table>(ARCODE, STORE, SALEID);",
    "Create UNIQUE Index idx_3 On <table>(STORE, INVOICE);",
    "Create UNIQUE Index idx_4 On <table>(ARCODE, SaleDate, STORE, SALEID);",
    "Create UNIQUE Index idx_5 On <table>(HUBUID);",
    "Create UNIQUE Index idx_0 On <table>(SALEID);",
};

constexpr TableTitles kSalesHeadTitles = {"SALESHEAD", "SalesHead.NUV"};
constexpr TableTitles kSalesHubHeadTitles = {"SALESHUBHEAD", "SalesHead.NUV"};

}  // namespace

const TableRoutines& salesHeadRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kSalesHead, kSalesHeadKeys, gSalesHead>();
    return kRoutines;
}

void bindSalesHead(std::int16_t table, const std::string& name) {
    const bool isHub = table != tableSalesHead;
    define(
        table, kSalesHead, isHub ? kSalesHubHeadTitles : kSalesHeadTitles, kSalesHeadIndexes, name
    );
    makeIfMissing(table);
}

}  // namespace db

LegacyBool gfbSalesHead_ReadByInvoice(const std::string& number) {
    const std::string& name = DBTableDescriptors[db::tableSalesHead].TableName;
    const std::string statement =
        "SELECT * from " + name + " Where Invoice='" + gfsDB_QuoteKey(number, kYes) + "'";
    if (gfbDB_OpenBySQL(statement, db::tableSalesHead) == kNo) {
        return kNo;
    }
    db_pRecord_fromRow(db::tableSalesHead);
    return kYes;
}
