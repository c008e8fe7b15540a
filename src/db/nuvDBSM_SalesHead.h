#pragma once

#include "util/fixed_text.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <cstdint>
#include <string>

namespace db {

/// The head of one sale, with up to five taxes and five tenders. `SaleDate` yyyymmdd.
struct SalesHeadRecord {
    std::int32_t SALEID = 0;
    util::FixedText<8> SaleDate;
    std::int16_t time = 0;
    util::FixedText<8> Scode;
    util::FixedText<7> Invoice;
    std::int16_t Store = 0;
    std::int16_t Station = 0;
    util::FixedText<15> ARCode;
    util::Money TotalSale;
    util::Money Discount;
    util::FixedText<1> Poll;
    util::FixedText<1> Status;
    util::Money SubTotal;
    std::int16_t Taxes = 0;
    std::int16_t Tenders = 0;
    float TaxRate1 = 0;
    util::Money TaxAmount1;
    util::Money TaxTax1;
    float TaxRate2 = 0;
    util::Money TaxAmount2;
    util::Money TaxTax2;
    float TaxRate3 = 0;
    util::Money Taxamount3;
    util::Money TaxTax3;
    float TaxRate4 = 0;
    util::Money TaxAmount4;
    util::Money TaxTax4;
    float Taxrate5 = 0;
    util::Money TaxAmount5;
    util::Money TaxTax5;
    std::int16_t TendType1 = 0;
    util::Money TendAmount1;
    util::FixedText<25> TendRef1;
    util::FixedText<15> TendAuth1;
    std::int16_t TendType2 = 0;
    util::Money TendAmount2;
    util::FixedText<25> TendRef2;
    util::FixedText<15> TendAuth2;
    std::int16_t TendType3 = 0;
    util::Money TendAmount3;
    util::FixedText<25> TendRef3;
    util::FixedText<15> TendAuth3;
    std::int16_t TendType4 = 0;
    util::Money TendAmount4;
    util::FixedText<25> TendRef4;
    util::FixedText<15> TendAuth4;
    std::int16_t TendType5 = 0;
    util::Money TendAmount5;
    util::FixedText<25> TendRef5;
    util::FixedText<15> TendAuth5;
    util::FixedText<1> Taxed;
    util::Money Spare;
    util::FixedText<15> Reference;
    util::FixedText<15> Description;
    util::FixedText<10> Spare2;
    std::int32_t HubUID = 0;
    util::FixedText<1> TaxCode1;
    util::FixedText<1> TaxCode2;
    util::FixedText<1> TaxCode3;
    util::FixedText<1> TaxCode4;
    util::FixedText<1> TaxCode5;
};

}  // namespace db

/// The sale of the last operation on table 9.
extern db::SalesHeadRecord gSalesHead;

/// Opens the sale with the invoice `number` (text as stored, seven digits) and reads it into
/// `gSalesHead`. @return kNo when there is none.
LegacyBool gfbSalesHead_ReadByInvoice(const std::string& number);

namespace db {

enum SalesHeadKey : std::int16_t { keySalesHeadSaleDate = 0, keySalesHeadInvoice = 3 };

/// Binds the heads of sales under `table`: 9, or another number for the hub's copy of the same
/// layout under the SQL name `name`. Makes the table when it is missing.
void bindSalesHead(std::int16_t table = 9, const std::string& name = "SalesHead");

}  // namespace db
