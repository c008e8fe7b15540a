#include "db/NuvDBSM_TenderTypes.h"

#include "db/table_module.h"

db::TenderTypesRecord gTenderTypes;

namespace db {

namespace {

constexpr auto kTenderTypes = table(
    "TenderTypes",
    column("TenderID", "BIGINT", &TenderTypesRecord::TenderID),
    column("Description", "CHAR( 20)", &TenderTypesRecord::Description),
    column("TenderType", "SMALLINT", &TenderTypesRecord::TenderType),
    column("EDC", "CHAR( 1)", &TenderTypesRecord::EDC),
    column("Drawer", "CHAR( 1)", &TenderTypesRecord::Drawer),
    column("PrintReceipt", "CHAR( 1)", &TenderTypesRecord::PrintReceipt),
    column("ExchangeRate", "REAL", &TenderTypesRecord::ExchangeRate)
);

constexpr std::string_view kTenderTypesIndexes[] = {
    "Create UNIQUE CLUSTERED Index idx_0 On <table>(TenderID);",
};

constexpr KeyPart kTenderTypesKeys[] = {
    {0, "TenderID"},
};

constexpr TableTitles kTenderTypesTitles = {"TENDER TYPES", "TenderTypes.NUV"};

struct DefaultTender {
    std::string_view description;
    std::string_view drawer = "N";
};

/// The tenders of a new store; the place in the list is the number.
constexpr DefaultTender kDefaultTenders[] = {
    {"On Account"},
    {"Cash", "Y"},
    {"Check"},
    {"Master Card"},
    {"Visa"},
    {"Discover"},
    {"AMEX"},
    {"Debit"},
    {"Layaway Account"},
    {"Other Credit Card"},
};

}  // namespace

const TableRoutines& tenderTypesRoutines() {
    static constexpr TableRoutines kRoutines =
        routinesOf<kTenderTypes, kTenderTypesKeys, gTenderTypes>();
    return kRoutines;
}

void bindTenderTypes() {
    define(tableTenderTypes, kTenderTypes, kTenderTypesTitles, kTenderTypesIndexes);
    if (makeIfMissing(tableTenderTypes)) {
        gpTenderTypes_AddDefaults();
    }
}

}  // namespace db

void gpTenderTypes_AddDefaults() {
    std::int16_t number = 0;
    for (const db::DefaultTender& tender : db::kDefaultTenders) {
        gTenderTypes = db::TenderTypesRecord();
        gTenderTypes.TenderID = number;
        gTenderTypes.Description = tender.description;
        gTenderTypes.TenderType = number;
        gTenderTypes.EDC = "N";
        gTenderTypes.Drawer = tender.drawer;
        gTenderTypes.PrintReceipt = " ";
        gfiDB_Operation(db::tableTenderTypes, db::opInsert, db::keyTenderTypesTenderID);
        ++number;
    }
}

LegacyBool gfbTenderTypes_ReadAll() {
    const std::string& name = DBTableDescriptors[db::tableTenderTypes].TableName;
    return gfbDB_OpenBySQL("SELECT * FROM " + name + " ORDER BY TENDERID", db::tableTenderTypes);
}
