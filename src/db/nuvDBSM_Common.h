#pragma once

#include "util/fixed_text.h"
#include "util/money.h"

#include <cstdint>

namespace db {

/// One row of Common: the store's company data, tax rates, security switches and option flags. Text
/// fields are blank-padded to the width of their column.
struct CommonRecord {
    util::FixedText<10> ProgramVersion;
    util::FixedText<1> DupID;
    util::FixedText<40> Cname;
    util::FixedText<40> WebAddress;
    util::FixedText<25> Ccity;
    util::FixedText<3> Cstate;
    util::FixedText<10> Czip;
    util::FixedText<14> CPhone;
    util::FixedText<14> Cfax;
    util::FixedText<1> MandatoryName;
    std::int32_t RequestedTicket = 0;
    std::int16_t MaxStations = 0;
    util::FixedText<1> USEurope;
    util::FixedText<11> Cups;
    util::FixedText<9> ShippingSL1;
    util::FixedText<9> ShippingSL2;
    util::FixedText<9> ShippingSL3;
    float ExchangeRate = 0;
    util::FixedText<1> Back_Up;
    util::FixedText<3> PackMode;
    util::FixedText<1> Security;
    std::int32_t PONumber = 0;
    std::int16_t StoreNumber = 0;
    util::FixedText<2> Accounting;
    util::FixedText<1> AutoPhoneFormat;
    util::FixedText<1> AutoProperNames;
    util::FixedText<1> OrderOfLookup;
    util::FixedText<1> DefaultARCode;
    util::FixedText<9> D2;
    util::FixedText<1> MultiStore;
    util::FixedText<2> D5;
    float TaxRate1 = 0;
    float TaxRate2 = 0;
    float TaxRate3 = 0;
    float TaxRate4 = 0;
    float TaxRate5 = 0;
    util::Money BreakPoint;
    float TaxRateAbove = 0;
    float TaxRate2nd = 0;
    util::FixedText<1> TaxCity;
    util::FixedText<1> TaxRound;
    util::FixedText<1> TaxLineTot;
    util::Money NoTaxOnFirst;
    util::Money TaxAdjust;
    util::FixedText<1> PrTagTax;
    util::FixedText<1> CreditService;
    util::FixedText<20> CreditUserID;
    util::FixedText<20> CreditPwd;
    util::FixedText<1> AccessAcount;
    util::FixedText<1> AccessInventory;
    util::FixedText<1> AccessConfig;
    util::FixedText<1> AccessOrder;
    util::FixedText<1> AccessVoid;
    util::FixedText<1> AccessReports;
    util::FixedText<1> AccessMargin;
    util::FixedText<1> AccessCost;
    util::FixedText<1> AccessQty;
    util::FixedText<1> CRLimmitActive;
    util::FixedText<6> SlipPrint;
    util::FixedText<1> UpperCaseItemID;
    util::FixedText<1> UpperCaseSL;
    util::FixedText<1> POExportType;
    util::FixedText<1> NamePreFill;
    util::FixedText<2> CheckStatCode;
    util::FixedText<3> CheckCompany;
    util::FixedText<1> FullBack;
    std::int16_t StaFullBack = 0;
    std::int16_t FullBackTime = 0;
    util::FixedText<1> TaxSearch2nd;
    util::FixedText<3> TaxLabel2nd;
    util::FixedText<14> MerchantID;
    util::FixedText<14> PartnerID;
    util::FixedText<15> ReprintMessage;
    util::FixedText<1> NickelAdjust;
    float TaxRate6 = 0;
    util::Money StartupFee;
    util::Money CancelFee;
    util::Money MinPercent;
    util::Money MinDollar;
    util::FixedText<1> PullLayaway;
    util::FixedText<1> NewQty;
    util::FixedText<1> TaxCodeRateAbove;
    util::FixedText<1> BackTime;
    std::int16_t WeeklyNum = 0;
    std::int16_t DailyNum = 0;
    std::int16_t MinFreeSpace = 0;
    util::FixedText<1> POPrintPM;
    util::FixedText<1> MinPriceWarn;
    util::FixedText<1> PriceMethod;
    float DMargin = 0;
    util::FixedText<1> ICV;
    util::FixedText<1> WinPOFlag;
    util::FixedText<1> AllowChangeDiscount;
    util::FixedText<20> CCountry;
    util::FixedText<1> IncrementItems;
    std::int16_t CountryID = 0;
    util::FixedText<35> Email;
    util::FixedText<65> Spare;
};

}  // namespace db

/// The Common row of the last operation on table 0.
extern db::CommonRecord gCommon;

namespace db {

/// Binds table 0: fills its descriptor, makes the table when it is missing, opens it.
void bindCommon();

}  // namespace db
