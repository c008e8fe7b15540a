#include "db/nuvDBSM_POHistory.h"

#include "db/table_module.h"

db::POHistoryRecord gPOHistory;

namespace db {

namespace {

constexpr auto kPOHistory = table(
    "POHistory",
    column("DateReceived", "CHAR(8)", &POHistoryRecord::DateReceived),
    column("PONumber", "CHAR (10)", &POHistoryRecord::PONumber),
    column("InvUID", "INTEGER NOT NULL", &POHistoryRecord::InvUID),
    column("Spare", "SMALLINT NOT NULL", &POHistoryRecord::Spare),
    column("UnitQty", "REAL NOT NULL", &POHistoryRecord::UnitQty),
    column("UnitCost", "DECIMAL (18,3) NOT NULL", &POHistoryRecord::UnitCost),
    column("Pack", "SMALLINT NOT NULL", &POHistoryRecord::Pack),
    column("VendorCode", "CHAR (15)", &POHistoryRecord::VendorCode),
    column("Status", "CHAR (1)", &POHistoryRecord::Status),
    column("Poll", "CHAR (1)", &POHistoryRecord::Poll),
    column("ARCode", "CHAR (15)", &POHistoryRecord::ARCode),
    column("SalesCode", "CHAR (8)", &POHistoryRecord::SalesCode),
    column("UniqueID", "INTEGER NOT NULL", &POHistoryRecord::UniqueID),
    column("DateOrdered", "CHAR(8)", &POHistoryRecord::DateOrdered),
    column("SPARE2", "CHAR(20)", &POHistoryRecord::SPARE2)
);

constexpr KeyPart kPOHistoryKeys[] = {
    {0, "Status"},   {0, "DateReceived"}, {0, "PONumber"}, {0, "InvUID"},     {1, "Status"},
    {1, "InvUID"},   {1, "DateReceived"}, {2, "PONumber"}, {2, "InvUID"},     {3, "ARCode"},
    {3, "InvUID"},   {3, "InvUID"},       {4, "UniqueID"}, {5, "VendorCode"}, {5, "UniqueID"},
    {6, "Poll"},     {6, "UniqueID"},     {7, "Status"},   {7, "VendorCode"}, {7, "InvUID"},
    {7, "UniqueID"},
};

constexpr std::string_view kPOHistoryIndexes[] = {
    "Create Index idx_0 On <table>(Status, DateReceived, PONumber, InvUID);",
    "Create Index idx_1 On <table>(Status, InvUID, DateReceived);",
    "Create Index idx_2 On <table>(PONumber,InvUID);",
    "Create Index idx_3 On <table>(ARCode,DateReceived,InvUID);",
    "Create UNIQUE Index idx_4 On <table>(UniqueID);",
    "Create unique Index idx_5 On <table>(VendorCode, UniqueID);",
    "Create unique Index idx_6 On <table>(Poll, UniqueID);",
    "Create UNIQUE Index idx_7 On <table>(Status, InvUID, DateReceived,UniqueID);",
};

constexpr TableTitles kPOHistoryTitles = {"PO HISTORY", "POHistory.NUV"};

}  // namespace

const TableRoutines& poHistoryRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kPOHistory, kPOHistoryKeys, gPOHistory>();
    return kRoutines;
}

void bindPOHistory() {
    define(tablePOHistory, kPOHistory, kPOHistoryTitles, kPOHistoryIndexes);
    makeIfMissing(tablePOHistory);
}

}  // namespace db
