#include "db/nuvDBSM_POLine.h"

#include "db/table_module.h"

db::POLineRecord gPOLine;

namespace db {

namespace {

constexpr auto kPOLine = table(
    "POLine",
    column("PO", "CHAR (8)", &POLineRecord::PO),
    column("LineNum", "SMALLINT NOT NULL", &POLineRecord::LineNum),
    column("ARCode", "CHAR (15)", &POLineRecord::ARCode),
    column("SCode", "CHAR (8)", &POLineRecord::SCode),
    column("OrderDate", "CHAR (8)", &POLineRecord::OrderDate),
    column("Quantity2Order", "DECIMAL (12,4) NOT NULL", &POLineRecord::Quantity2Order),
    column("Cost", "DECIMAL (18,4) NOT NULL", &POLineRecord::Cost),
    column("LineTotal", "DECIMAL (18,4) NOT NULL", &POLineRecord::LineTotal),
    column("Tags", "REAL NOT NULL", &POLineRecord::Tags),
    column("ChangeDate", "CHAR (8)", &POLineRecord::ChangeDate),
    column("Status", "CHAR (1)", &POLineRecord::Status),
    column("Store", "SMALLINT NOT NULL", &POLineRecord::Store),
    column("InvUID", "INTEGER NOT NULL", &POLineRecord::InvUID),
    column("Spare", "INTEGER NOT NULL", &POLineRecord::Spare),
    column("OnOrder", "DECIMAL (12,4) NOT NULL", &POLineRecord::OnOrder),
    column("Received", "DECIMAL (12,4) NOT NULL", &POLineRecord::Received),
    column("Poll", "CHAR (1)", &POLineRecord::Poll),
    column("Spare1", "CHAR (19)", &POLineRecord::Spare1)
);

constexpr KeyPart kPOLineKeys[] = {
    {0, "PO"},
    {0, "LineNum"},
    {1, "ARCode"},
    {1, "PO"},
    {1, "LineNum"},
    {2, "PO"},
    {2, "Status"},
    {2, "LineNum"},
    {3, "InvUID"},
    {3, "PO"},
    {4, "Poll"},
    {4, "PO"},
    {4, "LineNum"},
};

constexpr std::string_view kPOLineIndexes[] = {
    "Create Unique Index Index0 On <table>(PO,LineNUM);",
    "Create Unique Index Index1 On <table>(InvUID,PO);",
    "Create Unique Index Index2 On <table>(ARCode,PO,LineNUM);",
    "Create Unique Index Index3 On <table>(Status,PO,LineNUM);",
    "Create Unique Index Index4 On <table>(Poll,PO,LineNUM);",
};

constexpr TableTitles kPOLineTitles = {"POLINE", "POLine.NUV"};

}  // namespace

const TableRoutines& poLineRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kPOLine, kPOLineKeys, gPOLine>();
    return kRoutines;
}

void bindPOLine() {
    define(tablePOLine, kPOLine, kPOLineTitles, kPOLineIndexes);
    makeIfMissing(tablePOLine);
}

}  // namespace db
