#pragma once

#include "db/nuvDBSM_SalesHead.h"
#include "util/fixed_text.h"
#include "util/money.h"

#include <array>
#include <cstdint>

/// The numbered columns of a sale's head as rows: five taxes and five tenders.
namespace exporting {

inline constexpr int kSaleSlots = 5;

struct TaxColumns {
    float db::SalesHeadRecord::*rate;
    util::Money db::SalesHeadRecord::*amount;
    util::Money db::SalesHeadRecord::*tax;
};

struct TenderColumns {
    std::int16_t db::SalesHeadRecord::*type;
    util::Money db::SalesHeadRecord::*amount;
    util::FixedText<25> db::SalesHeadRecord::*reference;
};

inline constexpr std::array<TaxColumns, kSaleSlots> kTaxColumns = {{
    {&db::SalesHeadRecord::TaxRate1,
     &db::SalesHeadRecord::TaxAmount1,
     &db::SalesHeadRecord::TaxTax1},
    {&db::SalesHeadRecord::TaxRate2,
     &db::SalesHeadRecord::TaxAmount2,
     &db::SalesHeadRecord::TaxTax2},
    {&db::SalesHeadRecord::TaxRate3,
     &db::SalesHeadRecord::Taxamount3,
     &db::SalesHeadRecord::TaxTax3},
    {&db::SalesHeadRecord::TaxRate4,
     &db::SalesHeadRecord::TaxAmount4,
     &db::SalesHeadRecord::TaxTax4},
    {&db::SalesHeadRecord::Taxrate5,
     &db::SalesHeadRecord::TaxAmount5,
     &db::SalesHeadRecord::TaxTax5},
}};

inline constexpr std::array<TenderColumns, kSaleSlots> kTenderColumns = {{
    {&db::SalesHeadRecord::TendType1,
     &db::SalesHeadRecord::TendAmount1,
     &db::SalesHeadRecord::TendRef1},
    {&db::SalesHeadRecord::TendType2,
     &db::SalesHeadRecord::TendAmount2,
     &db::SalesHeadRecord::TendRef2},
    {&db::SalesHeadRecord::TendType3,
     &db::SalesHeadRecord::TendAmount3,
     &db::SalesHeadRecord::TendRef3},
    {&db::SalesHeadRecord::TendType4,
     &db::SalesHeadRecord::TendAmount4,
     &db::SalesHeadRecord::TendRef4},
    {&db::SalesHeadRecord::TendType5,
     &db::SalesHeadRecord::TendAmount5,
     &db::SalesHeadRecord::TendRef5},
}};

/// A count column of the head, held to the slots that exist.
constexpr int slotCount(std::int16_t stored) {
    return stored < 0 ? 0 : (stored > kSaleSlots ? kSaleSlots : stored);
}

}  // namespace exporting
