#include "samplestore/shop.h"

#include "db/clear_record.h"
#include "util/text_codec.h"

#include <string_view>

namespace samplestore {

namespace {

constexpr const char* kGoods[] = {
    "Enamel Mug",       "Salt & Pepper Mill",  "12\" Cast Iron Skillet", "Crème Brûlée Set",
    "Oak Bread Board",  "Linen Tea Towel",     "Chef's Knife 8\"",       "<New> Garlic Press",
    "Preserving Jar",   "Copper Saucepan",     "Wool Blanket",           "Beeswax Candle",
    "Lantern, Storm",   "Garden Trowel",       "Watering Can 2 gal",     "Pruning Shears",
    "Café Press 8-Cup", "Stoneware Bowl 10\"", "Teapot \"Brown Betty\"", "Picnic Basket & Rug",
};
constexpr const char* kVariants[] = {"", " Blue", " Red", " Green", " Large", " Small", " Gift"};
constexpr const char* kDepartments[] = {"KITCHEN", "GARDEN", "HOME", "GIFTS"};

struct SpecialRow {
    const char* sl;
    const char* description;
};
/// The rows that stand for sale lines without goods, numbers 1 to 11.
constexpr SpecialRow kSpecialRows[] = {
    {"~NONSTK", "Non-stock item"},
    {"~ROA", "Received on Account"},
    {"~ROAL", "Layaway Payment"},
    {"~DISCNT", "Dollar Discount"},
    {"~PAYROL", "Payroll Deduction"},
    {"~POUT", "Paid Out"},
    {"~VCOUPN", "Vendor Coupon"},
    {"~SCOUPN", "Store Coupon"},
    {"~VDSCNT", "Vendor Discount"},
    {"~ROALTX", "Layaway Payment Taxed"},
    {"~DPOUT", "Drawer Paid Out"},
};

struct VendorRow {
    const char* code;
    const char* business;
    const char* firstName;
    const char* lastName;
    const char* city;
    std::int16_t term;
};
constexpr VendorRow kVendors[] = {
    {"ACME", "Acme Housewares & Co", "Ruth", "Adler", "Dayton", 30},
    {"BRULE", "Émile Brûlé et Fils", "Émile", "Brûlé", "Montréal", 45},
    {"FORGE", "The \"Old Forge\" Ironworks", "Sam", "Smith", "Tulsa", 60},
    {"GREENFINGERS", "Green Fingers <Garden> Supply", "Pat", "O'Neill", "Salem", 15},
    {"LINENLOFT", "Linen Loft", "Mae", "Wong", "Portland", 20},
    {"POTTERYBARGE15C", "Forty Columns Of Pottery, Glass & China.", "Al", "Fine", "Reno", 90},
};

struct CustomerRow {
    const char* firstName;
    const char* lastName;
    const char* business;
    const char* city;
    const char* state;
    std::int16_t term;
    const char* taxCode;
};
constexpr CustomerRow kCustomers[] = {
    {"John", "O'Brien", "", "Salem", "OR", 0, ""},
    {"Zoë", "Müller", "Müller & Söhne", "Portland", "OR", 30, "A"},
    {"Bob", "Smith", "\"Bob's\" <Farm> Stand", "Eugene", "OR", 15, ""},
    {"Ana", "Núñez", "", "Bend", "OR", 0, "N"},
    {"Grace", "Hill", "County School District", "Salem", "OR", 60, "0"},
    {"Forty-Wide",
     "Fifteen-Letters",
     "A Business Name Of Exactly Forty Letters",
     "Ashland",
     "OR",
     90,
     ""},
    {"Lee", "Chan", "Chan's Café", "Medford", "OR", 45, "A"},
    {"Maria", "Rossi", "", "Corvallis", "OR", 20, ""},
};
constexpr int kCustomerRounds = 8;

template <std::size_t Width>
void put(util::FixedText<Width>& field, std::string_view utf8) {
    field = util::fromUtf8(utf8);
}

std::string padded(int number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - digits.size(), '0') + digits;
}

db::CommonRecord makeCommon() {
    db::CommonRecord common;
    common.ProgramVersion = "10.0";
    common.Cname = "Harbour & Hill Outfitters";
    common.Ccity = "Newport";
    common.Cstate = "OR";
    common.Czip = "97365";
    common.CPhone = "(541) 555-0100";
    common.MaxStations = 5;
    common.USEurope = "U";
    common.ShippingSL1 = "SHIPUPSA";
    common.ShippingSL2 = "SHIPMAIB";
    common.ShippingSL3 = "SHIPFREC";
    common.ExchangeRate = 1;
    common.StoreNumber = 1;
    common.Accounting = "QB";
    common.MultiStore = "N";
    float* const rates[] = {
        &common.TaxRate1,
        &common.TaxRate2,
        &common.TaxRate3,
        &common.TaxRate4,
        &common.TaxRate5,
        &common.TaxRate6,
    };
    for (int index = 0; index < kTaxRateCount; ++index) {
        *rates[index] = kTaxRates[index];
    }
    common.Email = "office@harbour-hill.example";
    return common;
}

std::vector<db::VendorsRecord> makeVendors() {
    std::vector<db::VendorsRecord> vendors;
    for (const VendorRow& row : kVendors) {
        db::VendorsRecord vendor = db::clearedVendors();
        vendor.VendorID = static_cast<std::int32_t>(vendors.size()) + 1;
        vendor.VENDCODE = row.code;
        put(vendor.BUSINESS, row.business);
        put(vendor.FIRSTNAME, row.firstName);
        put(vendor.LASTNAME, row.lastName);
        vendor.ADDRESS = padded(100 + 7 * vendor.VendorID, 3) + " Mill Road";
        put(vendor.CITY, row.city);
        vendor.STATE = "OR";
        vendor.ZIP = "97" + padded(100 + vendor.VendorID, 3);
        vendor.PHONE = "(541) 555-02" + padded(vendor.VendorID, 2);
        vendor.PAYMENTTERM = row.term;
        vendor.EMAIL = "orders" + std::to_string(vendor.VendorID) + "@supplier.example";
        vendors.push_back(vendor);
    }
    return vendors;
}

db::InventoryRecord blankItem(std::int32_t number, std::string_view sl) {
    db::InventoryRecord item = db::clearedInventory();
    item.RecordNum = number;
    item.SL = sl;
    item.ItemID = "ID" + padded(number, 6);
    item.TaxCode = "0";
    item.Kit = "N";
    item.FlgMatrix = "N";
    item.NonDecrement = "N";
    item.PriceFactor = "EA" + padded(number, 4);
    item.LocFront = "F" + padded(number, 4);
    item.LocBack = "B" + padded(number, 4);
    return item;
}

void addSpecialRows(std::vector<db::InventoryRecord>& items) {
    for (const SpecialRow& row : kSpecialRows) {
        db::InventoryRecord item = blankItem(static_cast<std::int32_t>(items.size()) + 1, row.sl);
        item.Description = row.description;
        item.NonDecrement = "Y";
        items.push_back(item);
    }
}

void addOddItems(std::vector<db::InventoryRecord>& items) {
    db::InventoryRecord deleted = blankItem(kDeletedItem, "9000001A");
    deleted.Description = "Discontinued Lamp";
    deleted.Price = util::Money::fromWhole(40);
    deleted.TaxCode = "A";
    deleted.Status = "D";
    items.push_back(deleted);
    for (const bool withCost : {true, false}) {
        db::InventoryRecord service =
            blankItem(kServiceItem + (withCost ? 0 : 1), withCost ? "9000002A" : "9000003A");
        service.Description = withCost ? "Knife Sharpening" : "Gift Wrapping";
        service.Price = util::Money::fromWhole(withCost ? 12 : 5);
        service.Cost = util::Money::fromWhole(withCost ? 4 : 0);
        service.NonDecrement = "Y";
        items.push_back(service);
    }
    const char* const shipping[] = {"SHIPUPSA", "SHIPMAIB", "SHIPFREC"};
    for (int index = 0; index < 3; ++index) {
        db::InventoryRecord item = blankItem(kFirstShippingItem + index, shipping[index]);
        item.Description = "Shipping " + std::to_string(index + 1);
        item.Price = util::Money::fromRaw(75000);
        item.TaxCode = index == 0 ? "A" : "0";
        items.push_back(item);
    }
}

/// Tax code of the `index`-th item: most goods bear the first rate, some another or none.
const char* taxCodeOf(int index) {
    static constexpr const char* kCycle[] = {"A", "A", "A", "B", "A", "C", "A", "0", "A", "D"};
    return kCycle[index % 10];
}

void addGoods(std::vector<db::InventoryRecord>& items, Random& random) {
    int index = 0;
    for (const char* name : kGoods) {
        for (const char* variant : kVariants) {
            const auto number = static_cast<std::int32_t>(items.size()) + 1;
            db::InventoryRecord item =
                blankItem(number, "1" + padded(number, 6) + static_cast<char>('A' + index % 3));
            put(item.Description, std::string(name) + variant);
            item.VendorCode = index % 11 == 0 ? "" : kVendors[index % 6].code;
            item.DeptCode = kDepartments[index % 4];
            item.Price = random.cents(299, 14999);
            item.Cost = util::Money::fromRaw(item.Price.raw() / 200 * 100);
            item.AvgCost = item.Cost;
            item.QtyOnHand = static_cast<float>(random.between(0, 60));
            item.MinQ = static_cast<std::int16_t>(random.between(0, 6));
            item.OnOrder = static_cast<std::int16_t>(random.between(0, 12));
            item.TaxCode = taxCodeOf(index);
            item.Kit = index % 37 == 36 ? "Y" : "N";
            item.FlgMatrix = index % 41 == 40 ? "Y" : "N";
            items.push_back(item);
            ++index;
        }
    }
}

db::NamesRecord makeCustomer(const CustomerRow& row, int number, Random& random) {
    db::NamesRecord customer = db::clearedNames();
    customer.NameID = number;
    const std::string code = util::fromUtf8(row.lastName).substr(0, 8);
    customer.ARCode = code + padded(number, 15 - code.size() < 4 ? 15 - code.size() : 4);
    put(customer.FIRSTNAME, row.firstName);
    put(customer.LASTNAME, row.lastName);
    put(customer.BUSINESS, row.business);
    customer.ADDRESS = padded(10 + number, 3) + " Ocean View Drive";
    customer.ADDRESS2 = number % 3 == 0 ? "Suite \"" + std::to_string(number) + "\"" : "";
    put(customer.CITY, row.city);
    customer.STATE = row.state;
    customer.ZIP = "973" + padded(number, 2);
    customer.PHONE = "(541) 555-1" + padded(number, 3);
    customer.PHONEINDEX = "5415551" + padded(number, 3);
    customer.TAXCODE = row.taxCode;
    customer.PAYMENTTERM = row.term;
    customer.LIMIT = util::Money::fromWhole(random.between(1, 20) * 250);
    customer.BALANCE = number % 4 == 0 ? random.cents(1000, 90000) : util::Money();
    customer.BalanceFwd = customer.BALANCE;
    customer.Country = "USA";
    customer.DELETEFLAG = number % 29 == 0 ? "I" : "";
    customer.ADDEDDATE = "20140601";
    return customer;
}

}  // namespace

float rateOf(char taxCode) {
    return taxCode >= 'A' && taxCode < 'A' + kTaxRateCount ? kTaxRates[taxCode - 'A'] : 0.0F;
}

Shop makeShop(Random& random) {
    Shop shop;
    shop.common = makeCommon();
    shop.vendors = makeVendors();
    addSpecialRows(shop.items);
    addOddItems(shop.items);
    addGoods(shop.items, random);
    for (int round = 0; round < kCustomerRounds; ++round) {
        for (const CustomerRow& row : kCustomers) {
            const int number = static_cast<int>(shop.customers.size()) + 1;
            shop.customers.push_back(makeCustomer(row, number, random));
        }
    }
    return shop;
}

}  // namespace samplestore
