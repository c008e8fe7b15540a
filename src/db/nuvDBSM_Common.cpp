#include "db/nuvDBSM_Common.h"

#include "db/table_module.h"

db::CommonRecord gCommon;

namespace db {

namespace {

constexpr auto kCommon = table(
    "Common",
    column("ProgramVersion", "CHAR (10)", &CommonRecord::ProgramVersion),
    column("DupID", "CHAR (1)", &CommonRecord::DupID),
    column("Cname", "CHAR (40)", &CommonRecord::Cname),
    column("WebAddress", "CHAR (40)", &CommonRecord::WebAddress),
    column("Ccity", "CHAR (25)", &CommonRecord::Ccity),
    column("Cstate", "CHAR (3)", &CommonRecord::Cstate),
    column("Czip", "CHAR (10)", &CommonRecord::Czip),
    column("CPhone", "CHAR (14)", &CommonRecord::CPhone),
    column("Cfax", "CHAR (14)", &CommonRecord::Cfax),
    column("MandatoryName", "CHAR (1)", &CommonRecord::MandatoryName),
    column("RequestedTicket", "INTEGER", &CommonRecord::RequestedTicket),
    column("MaxStations", "SMALLINT", &CommonRecord::MaxStations),
    column("USEurope", "CHAR (1)", &CommonRecord::USEurope),
    column("Cups", "CHAR (11)", &CommonRecord::Cups),
    column("ShippingSL1", "CHAR (9)", &CommonRecord::ShippingSL1),
    column("ShippingSL2", "CHAR (9)", &CommonRecord::ShippingSL2),
    column("ShippingSL3", "CHAR (9)", &CommonRecord::ShippingSL3),
    column("ExchangeRate", "REAL", &CommonRecord::ExchangeRate),
    column("Back_Up", "CHAR (1)", &CommonRecord::Back_Up),
    column("PackMode", "CHAR (3)", &CommonRecord::PackMode),
    column("Security", "CHAR (1)", &CommonRecord::Security),
    column("PONumber", "INTEGER", &CommonRecord::PONumber),
    column("StoreNumber", "SMALLINT", &CommonRecord::StoreNumber),
    column("Accounting", "CHAR (2)", &CommonRecord::Accounting),
    column("AutoPhoneFormat", "CHAR (1)", &CommonRecord::AutoPhoneFormat),
    column("AutoProperNames", "CHAR (1)", &CommonRecord::AutoProperNames),
    column("OrderOfLookup", "CHAR (1)", &CommonRecord::OrderOfLookup),
    column("DefaultARCode", "CHAR (1)", &CommonRecord::DefaultARCode),
    column("D2", "CHAR (9)", &CommonRecord::D2),
    column("MultiStore", "CHAR (1)", &CommonRecord::MultiStore),
    column("D5", "CHAR (2)", &CommonRecord::D5),
    column("TaxRate1", "REAL", &CommonRecord::TaxRate1),
    column("TaxRate2", "REAL", &CommonRecord::TaxRate2),
    column("TaxRate3", "REAL", &CommonRecord::TaxRate3),
    column("TaxRate4", "REAL", &CommonRecord::TaxRate4),
    column("TaxRate5", "REAL", &CommonRecord::TaxRate5),
    column("BreakPoint", "DECIMAL", &CommonRecord::BreakPoint),
    column("TaxRateAbove", "REAL", &CommonRecord::TaxRateAbove),
    column("TaxRate2nd", "REAL", &CommonRecord::TaxRate2nd),
    column("TaxCity", "CHAR (1)", &CommonRecord::TaxCity),
    column("TaxRound", "CHAR (1)", &CommonRecord::TaxRound),
    column("TaxLineTot", "CHAR (1)", &CommonRecord::TaxLineTot),
    column("NoTaxOnFirst", "decimal", &CommonRecord::NoTaxOnFirst),
    column("TaxAdjust", "DECIMAL", &CommonRecord::TaxAdjust),
    column("PrTagTax", "CHAR (1)", &CommonRecord::PrTagTax),
    column("CreditService", "CHAR (1)", &CommonRecord::CreditService),
    column("CreditUserID", "CHAR (20)", &CommonRecord::CreditUserID),
    column("CreditPwd", "CHAR (20)", &CommonRecord::CreditPwd),
    column("AccessAcount", "CHAR (1)", &CommonRecord::AccessAcount),
    column("AccessInventory", "CHAR (1)", &CommonRecord::AccessInventory),
    column("AccessConfig", "CHAR (1)", &CommonRecord::AccessConfig),
    column("AccessOrder", "CHAR (1)", &CommonRecord::AccessOrder),
    column("AccessVoid", "CHAR (1)", &CommonRecord::AccessVoid),
    column("AccessReports", "CHAR (1)", &CommonRecord::AccessReports),
    column("AccessMargin", "CHAR (1)", &CommonRecord::AccessMargin),
    column("AccessCost", "CHAR (1)", &CommonRecord::AccessCost),
    column("AccessQty", "CHAR (1)", &CommonRecord::AccessQty),
    column("CRLimmitActive", "CHAR (1)", &CommonRecord::CRLimmitActive),
    column("SlipPrint", "CHAR (6)", &CommonRecord::SlipPrint),
    column("UpperCaseItemID", "CHAR (1)", &CommonRecord::UpperCaseItemID),
    column("UpperCaseSL", "CHAR (1)", &CommonRecord::UpperCaseSL),
    column("POExportType", "CHAR (1)", &CommonRecord::POExportType),
    column("NamePreFill", "CHAR (1)", &CommonRecord::NamePreFill),
    column("CheckStatCode", "CHAR (2)", &CommonRecord::CheckStatCode),
    column("CheckCompany", "CHAR (3)", &CommonRecord::CheckCompany),
    column("FullBack", "CHAR (1)", &CommonRecord::FullBack),
    column("StaFullBack", "SMALLINT", &CommonRecord::StaFullBack),
    column("FullBackTime", "SMALLINT", &CommonRecord::FullBackTime),
    column("TaxSearch2nd", "CHAR (1)", &CommonRecord::TaxSearch2nd),
    column("TaxLabel2nd", "CHAR (3)", &CommonRecord::TaxLabel2nd),
    column("MerchantID", "CHAR (14)", &CommonRecord::MerchantID),
    column("PartnerID", "CHAR (14)", &CommonRecord::PartnerID),
    column("ReprintMessage", "CHAR (15)", &CommonRecord::ReprintMessage),
    column("NickelAdjust", "CHAR (1)", &CommonRecord::NickelAdjust),
    column("TaxRate6", "REAL", &CommonRecord::TaxRate6),
    column("StartupFee", "DECIMAL", &CommonRecord::StartupFee),
    column("CancelFee", "DECIMAL", &CommonRecord::CancelFee),
    column("MinPercent", "DECIMAL", &CommonRecord::MinPercent),
    column("MinDollar", "DECIMAL", &CommonRecord::MinDollar),
    column("PullLayaway", "CHAR (1)", &CommonRecord::PullLayaway),
    column("NewQty", "CHAR (1)", &CommonRecord::NewQty),
    column("TaxCodeRateAbove", "CHAR (1)", &CommonRecord::TaxCodeRateAbove),
    column("BackTime", "CHAR (1)", &CommonRecord::BackTime),
    column("WeeklyNum", "SMALLINT", &CommonRecord::WeeklyNum),
    column("DailyNum", "SMALLINT", &CommonRecord::DailyNum),
    column("MinFreeSpace", "SMALLINT", &CommonRecord::MinFreeSpace),
    column("POPrintPM", "CHAR (1)", &CommonRecord::POPrintPM),
    column("MinPriceWarn", "CHAR (1)", &CommonRecord::MinPriceWarn),
    column("PriceMethod", "CHAR (1)", &CommonRecord::PriceMethod),
    column("DMargin", "REAL", &CommonRecord::DMargin),
    column("ICV", "CHAR (1)", &CommonRecord::ICV),
    column("WinPOFlag", "CHAR (1)", &CommonRecord::WinPOFlag),
    column("AllowChangeDiscount", "CHAR (1)", &CommonRecord::AllowChangeDiscount),
    column("CCountry", "CHAR (20)", &CommonRecord::CCountry),
    column("IncrementItems", "CHAR (1)", &CommonRecord::IncrementItems),
    column("CountryID", "SMALLINT", &CommonRecord::CountryID),
    column("Email", "CHAR (35)", &CommonRecord::Email),
    column("Spare", "CHAR (65)", &CommonRecord::Spare)
);

constexpr std::string_view kCommonIndexes[] = {
    "Create UNIQUE Index idx_0 On <table>(DupID);",
};

constexpr TableTitles kCommonTitles = {"COMMON", "COMMON.NUV"};

}  // namespace

const TableRoutines& commonRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kCommon, kNoKeys, gCommon>();
    return kRoutines;
}

void bindCommon() {
    define(tableCommon, kCommon, kCommonTitles, kCommonIndexes);
    makeIfMissing(tableCommon);
    gfbDB_OpenTable(tableCommon);
}

}  // namespace db
