#include "db/nuvDBSM_Names.h"

#include "db/clear_record.h"
#include "db/connection.h"
#include "db/table_module.h"

db::NamesRecord gNames;

namespace db {

namespace {

constexpr auto kNames = table(
    "Names",
    column("NameID", "INTEGER NOT NULL", &NamesRecord::NameID),
    column("ARCode", "CHAR (15) NOT NULL", &NamesRecord::ARCode),
    column("BUSINESS", "CHAR (40) DEFAULT ' '", &NamesRecord::BUSINESS),
    column("LASTNAME", "CHAR (15) DEFAULT ' '", &NamesRecord::LASTNAME),
    column("ZIP", "CHAR (10) DEFAULT ' '", &NamesRecord::ZIP),
    column("MAIL", "CHAR (2) DEFAULT ' '", &NamesRecord::MAIL),
    column("FIRSTNAME", "CHAR (15) DEFAULT ' '", &NamesRecord::FIRSTNAME),
    column("ADDRESS", "CHAR (40) DEFAULT ' '", &NamesRecord::ADDRESS, Quotes::blanked),
    column("CITY", "CHAR (20) DEFAULT ' '", &NamesRecord::CITY),
    column("STATE", "CHAR (3) DEFAULT ' '", &NamesRecord::STATE),
    column("PHONE", "CHAR (14) DEFAULT ' '", &NamesRecord::PHONE),
    column("FAX", "CHAR (14) DEFAULT ' '", &NamesRecord::FAX),
    column("DISCOUNT", "SMALLINT", &NamesRecord::DISCOUNT),
    column("TOTALSALES", "DECIMAL (18,2)", &NamesRecord::TOTALSALES),
    column("LASTDATE", "CHAR (8) DEFAULT ' '", &NamesRecord::LASTDATE),
    column("BALANCE", "DECIMAL (18,2)", &NamesRecord::BALANCE),
    column("TAXCODE", "CHAR (1) DEFAULT ' '", &NamesRecord::TAXCODE),
    column("LIMIT", "DECIMAL(18,2)", &NamesRecord::LIMIT),
    column("NOTES", "CHAR (1) DEFAULT ' '", &NamesRecord::NOTES),
    column("PREVSTDATE", "CHAR (8) DEFAULT ' '", &NamesRecord::PREVSTDATE),
    column("STMNTDATE", "CHAR (8) DEFAULT ' '", &NamesRecord::STMNTDATE),
    column("MINPAYMENT", "CHAR (6) DEFAULT ' '", &NamesRecord::MINPAYMENT),
    column("PriceLevelExpDate", "CHAR (8) DEFAULT ' '", &NamesRecord::PriceLevelExpDate),
    column("PRICELEVEL", "CHAR (1) DEFAULT ' '", &NamesRecord::PRICELEVEL),
    column("MODIFIED", "CHAR (1) DEFAULT ' '", &NamesRecord::MODIFIED),
    column("STORENUM", "SMALLINT", &NamesRecord::STORENUM),
    column("BalLastStmnt", "DECIMAL(18,2)", &NamesRecord::BalLastStmnt),
    column("Country", "CHAR (12) DEFAULT ' '", &NamesRecord::Country),
    column("DELETEFLAG", "CHAR (1) DEFAULT ' '", &NamesRecord::DELETEFLAG),
    column("PAYMENTTERM", "SMALLINT", &NamesRecord::PAYMENTTERM),
    column("RECURAMOUNT", "DECIMAL(18,2)", &NamesRecord::RECURAMOUNT),
    column("RECURAMOUNTDESC", "CHAR (12) DEFAULT ' '", &NamesRecord::RECURAMOUNTDESC),
    column("NEXTINVDATE", "CHAR (8) DEFAULT ' '", &NamesRecord::NEXTINVDATE),
    column("POLL", "CHAR (1) DEFAULT ' '", &NamesRecord::POLL),
    column("FreqBuyer", "CHAR (1) DEFAULT ' '", &NamesRecord::FreqBuyer),
    column("ConsolidatedBalance", "DECIMAL(18,2)", &NamesRecord::ConsolidatedBalance),
    column("BalanceFwd", "DECIMAL(18,2)", &NamesRecord::BalanceFwd),
    column("ADDRESS2", "CHAR (30) DEFAULT ' '", &NamesRecord::ADDRESS2, Quotes::blanked),
    column("EMAIL", "CHAR (40) DEFAULT ' '", &NamesRecord::EMAIL, Quotes::blanked),
    column("TITLE", "CHAR (5) DEFAULT ' '", &NamesRecord::TITLE),
    column("COSTPLUS", "SMALLINT", &NamesRecord::COSTPLUS),
    column("FLAGS", "CHAR (6) DEFAULT ' '", &NamesRecord::FLAGS),
    column("PHONEEXTN", "CHAR (6) DEFAULT ' '", &NamesRecord::PHONEEXTN),
    column("ADDEDDATE", "CHAR (8) DEFAULT ' '", &NamesRecord::ADDEDDATE),
    column("CELLPHONE", "CHAR (14) DEFAULT ' '", &NamesRecord::CELLPHONE),
    column("TAXID", "CHAR (20) DEFAULT ' '", &NamesRecord::TAXID),
    column("LayawayBalance", "DECIMAL(18,2)", &NamesRecord::LayawayBalance),
    column("MEMBERSHIP", "CHAR (1) DEFAULT ' '", &NamesRecord::MEMBERSHIP),
    column("MEMBTYPE", "CHAR (1) DEFAULT ' '", &NamesRecord::MEMBTYPE),
    column("MSTARTDATE", "CHAR (8) DEFAULT ' '", &NamesRecord::MSTARTDATE),
    column("MEXPIRYDATE", "CHAR (8) DEFAULT ' '", &NamesRecord::MEXPIRYDATE),
    column("PHONEINDEX", "CHAR (12) DEFAULT ' '", &NamesRecord::PHONEINDEX)
);

constexpr KeyPart kNamesKeys[] = {
    {0, "NameID"},     {1, "ARCode"},   {2, "LASTNAME"},  {2, "FIRSTNAME"},   {2, "ARCode"},
    {3, "ZIP"},        {3, "LASTNAME"}, {3, "FIRSTNAME"}, {4, "MAIL"},        {4, "ARCode"},
    {5, "BUSINESS"},   {5, "ARCode"},   {6, "CITY"},      {6, "FIRSTNAME"},   {6, "ARCode", 16392},
    {7, "FIRSTNAME"},  {7, "LASTNAME"}, {7, "ARCode"},    {8, "NEXTINVDATE"}, {8, "ARCode"},
    {9, "PHONEINDEX"}, {9, "ARCode"},
};

constexpr std::string_view kNamesIndexes[] = {
    "Create UNIQUE Index idx_0 On <table>(NameID);",
    "Create UNIQUE CLUSTERED Index idx_1 On <table>(ARCode);",
    "Create Index idx_2 On <table>(LASTNAME,FIRSTNAME,ARCode);",
    "Create Index idx_3 On <table>(Zip,LASTNAME,FIRSTNAME);",
    "Create Index idx_4 On <table>(Mail,ARCODE);",
    "Create Index idx_5 On <table>(Business,ARCODE);",
    "Create Index idx_6 On <table>(City,LASTNAME,FIRSTNAME);",
    "Create Index idx_7 On <table>(FIRSTNAME,LASTNAME,ARCode);",
    "Create Index idx_8 On <table>(NextInvDate,ARCode);",
    "Create Index idx_9 On <table>(PhoneIndex,ARCode);",
};

constexpr TableTitles kNamesTitles = {"NAMES", "Names.NUV"};

}  // namespace

const TableRoutines& namesRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kNames, kNamesKeys, gNames>();
    return kRoutines;
}

NamesRecord clearedNames() {
    return clearedRecord<kNames>();
}

void bindNames() {
    define(tableNames, kNames, kNamesTitles, kNamesIndexes);
    if (makeIfMissing(tableNames)) {
        return;
    }
    const std::string& name = DBTableDescriptors[tableNames].TableName;
    if (hasColumn(name, "ConSalesTotal") &&
        gfbDB_RenameColumn(name, "ConSalesTotal", "LayawayBalance") != kNo) {
        gfiDB_ExecuteSQL("UPDATE " + name + " SET layawaybalance = 0");
    }
}

}  // namespace db
