#include "db/nuvDBSM_POHeader.h"

#include "db/table_module.h"

db::POHeaderRecord gPOHeader;

namespace db {

namespace {

constexpr auto kPOHeader = table(
    "POHeader",
    column("PO", "CHAR (8)", &POHeaderRecord::PO),
    column("VendorPONum", "CHAR (12)", &POHeaderRecord::VendorPONum),
    column("SENTOUT", "CHAR (1)", &POHeaderRecord::SENTOUT),
    column("VENDORCODE", "CHAR (15)", &POHeaderRecord::VENDORCODE),
    column("WHO", "CHAR (15)", &POHeaderRecord::WHO),
    column("ETADATE", "CHAR (8)", &POHeaderRecord::ETADATE),
    column("REMARKS", "CHAR (1)", &POHeaderRecord::REMARKS),
    column("SCODE", "CHAR (8)", &POHeaderRecord::SCODE),
    column("ORDERDATE", "CHAR (8)", &POHeaderRecord::ORDERDATE),
    column("TOTAL", "Decimal (18,2) NOT NULL", &POHeaderRecord::TOTAL),
    column("CHANGEDATE", "CHAR(8)", &POHeaderRecord::CHANGEDATE),
    column("STATUS", "CHAR(1)", &POHeaderRecord::STATUS),
    column("POTYPE", "CHAR(1)", &POHeaderRecord::POTYPE),
    column("Store", "SMALLINT NOT NULL", &POHeaderRecord::Store),
    column("SHIPDATE", "CHAR(8) DEFAULT ' '", &POHeaderRecord::SHIPDATE),
    column("CANCELDATE", "CHAR(8)", &POHeaderRecord::CANCELDATE),
    column("CostCenter", "CHAR(2)", &POHeaderRecord::CostCenter),
    column("ApprovedBy", "CHAR(8)", &POHeaderRecord::ApprovedBy),
    column("BillTo", "CHAR (15)", &POHeaderRecord::BillTo),
    column("ShippingMethod", "CHAR(16)", &POHeaderRecord::ShippingMethod),
    column("ShipUID", "integer NOT NULL", &POHeaderRecord::ShipUID),
    column("POLL", "CHAR(1)", &POHeaderRecord::POLL),
    column("Spare1", "CHAR(19)", &POHeaderRecord::Spare1)
);

constexpr KeyPart kPOHeaderKeys[] = {
    {0, "PO"},
    {1, "VendorPONum"},
    {2, "SENTOUT"},
    {2, "VENDORCODE"},
    {2, "PO"},
    {3, "WHO"},
    {3, "SENTOUT"},
    {3, "PO"},
    {4, "STATUS"},
    {4, "PO"},
    {5, "STATUS"},
    {5, "POTYPE"},
    {5, "PO"},
    {6, "POLL"},
    {6, "PO"},
};

constexpr std::string_view kPOHeaderIndexes[] = {
    "Create Unique Index Index0 On <table>(PO);",
    "Create Unique Index Index1 On <table>(VendorPONum);",
    "Create Unique Index Index2 On <table>(SentOut, VendorCode, PO);",
    "Create Unique Index Index3 On <table>(Who, SentOut, PO);",
    "Create Index Index4 On <table>(Status,PO);",
    "Create Unique Index Index5 On <table>(Status,POType, PO);",
    "Create Index Index6 On <table>(Poll,PO);",
};

constexpr TableTitles kPOHeaderTitles = {"POHEADER", "POHeader.NUV"};
}  // namespace

const TableRoutines& poHeaderRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kPOHeader, kPOHeaderKeys, gPOHeader>();
    return kRoutines;
}

void bindPOHeader() {
    define(tablePOHeader, kPOHeader, kPOHeaderTitles, kPOHeaderIndexes);
    makeIfMissing(tablePOHeader);
}

}  // namespace db
