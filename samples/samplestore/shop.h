#pragma once

#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_Vendors.h"
#include "samplestore/random.h"

#include <string>
#include <vector>

/// The shop behind the sample store: what it sells, from whom it buys, who buys there.
namespace samplestore {

/// Tax rates of the shop in per cent, by the identifiers "A" to "F".
inline constexpr float kTaxRates[] = {8.25F, 5.5F, 2.25F, 10.0F, 1.75F, 3.0F};
inline constexpr int kTaxRateCount = 6;
/// Payee of the sales tax.
inline constexpr char kTaxPayee[] = "State Revenue Office";
/// Number of the item that was deleted from the shop's list.
inline constexpr std::int32_t kDeletedItem = 12;
/// Number of the first item that is sold without being taken from stock; two, the first with cost.
inline constexpr std::int32_t kServiceItem = 13;
/// Number of the first of three shipping items.
inline constexpr std::int32_t kFirstShippingItem = 15;
/// Customers at the end of the list who never buy: those without a balance must not reach the
/// books.
inline constexpr int kQuietCustomers = 8;
/// Number of the first ordinary item.
inline constexpr std::int32_t kFirstGoods = 18;

/// The shop's people; their codes become the initials of the company file's sales reps.
struct Person {
    const char* code;
    const char* firstName;
    const char* lastName;
};
inline constexpr Person kPeople[] = {
    {"ANNA", "Anna", "Keller"},
    {"BEN", "Ben", "O'Hara"},
    {"CHLOE", "Chloe", "Martin"},
    {"DAVID", "David", "Okafor"},
    {"ELENA", "Elena", "Petrova"},
    {"SAMANTHA", "Sam", ""},  // one word, and a code longer than its initials may be
};

struct Shop {
    db::CommonRecord common;
    std::vector<db::VendorsRecord> vendors;
    std::vector<db::InventoryRecord> items;  ///< by `RecordNum`, from 1 at index 0
    std::vector<db::NamesRecord> customers;
};

/// The shop with a stock of about 150 items and about 60 customers.
Shop makeShop(Random& random);

/// Tax rate of an item's tax code in per cent; 0 for an untaxed one.
float rateOf(char taxCode);

}  // namespace samplestore
