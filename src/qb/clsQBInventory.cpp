#include "qb/clsQBInventory.h"

#include "db/nuvDBSM_Inventory.h"
#include "qb/request_cycle.h"
#include "qb/wire_values.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

namespace {

using qb::Form;
using qb::request;
using qb::send;
using qb::When;

constexpr char kQueryLiteral[] = "ItemQueryRq ";
constexpr qb::Search kQuery = qb::nameSearch("ItemQuery", platform::ResponseType::itemQuery);

constexpr auto kInventoryAdd = request(
    "ItemInventoryAdd",
    send("Name", &clsQBInventory::Name),
    send("AssetAccountRef/FullName", &clsQBInventory::AssetAccount, When::trimmed),
    send("COGSAccountRef/FullName", &clsQBInventory::COGSAccount, When::trimmed),
    send("IncomeAccountRef/FullName", &clsQBInventory::IncomeAccount, When::trimmed),
    send("IsActive", &clsQBInventory::IsActive),
    send("PrefVendorRef/FullName", &clsQBInventory::PrefVendor),
    send("PurchaseCost", &clsQBInventory::PurchaseCost, When::always, Form::price),
    send("PurchaseDesc", &clsQBInventory::PurchaseDesc),
    send("QuantityOnHand", &clsQBInventory::QuantityOnHand),
    send("ReorderPoint", &clsQBInventory::ReorderPoint),
    send("SalesDesc", &clsQBInventory::SalesDesc),
    send("SalesPrice", &clsQBInventory::SalesPrice, When::always, Form::price),
    send("SalesTaxCodeRef/FullName", &clsQBInventory::SalesTaxCode, When::trimmed)
);

// Income account and quantity on hand stay as the company file has them.
constexpr auto kInventoryMod = request(
    "ItemInventoryMod",
    send("ListID", &clsQBInventory::ListID),
    send("EditSequence", &clsQBInventory::EditSequence),
    send("ParentRef/FullName", &clsQBInventory::ParentName, When::trimmed),
    send("Name", &clsQBInventory::Name),
    send("AssetAccountRef/FullName", &clsQBInventory::AssetAccount, When::trimmed),
    send("COGSAccountRef/FullName", &clsQBInventory::COGSAccount, When::trimmed),
    send("IsActive", &clsQBInventory::IsActive),
    send("PrefVendorRef/FullName", &clsQBInventory::PrefVendor, When::trimmed),
    send("PurchaseCost", &clsQBInventory::PurchaseCost, When::always, Form::price),
    send("PurchaseDesc", &clsQBInventory::PurchaseDesc),
    send("ReorderPoint", &clsQBInventory::ReorderPoint),
    send("SalesDesc", &clsQBInventory::SalesDesc),
    send("SalesPrice", &clsQBInventory::SalesPrice, When::always, Form::price),
    send("SalesTaxCodeRef/FullName", &clsQBInventory::SalesTaxCode, When::trimmed)
);

/// What a sold-only item and an other charge have in common.
constexpr auto kSoldOnly = request(
    "",
    send("Name", &clsQBInventory::Name),
    send("IsActive", &clsQBInventory::IsActive),
    send("SalesOrPurchase/Desc", &clsQBInventory::SalesDesc),
    send("SalesOrPurchase/Price", &clsQBInventory::SalesPrice, When::always, Form::price),
    send("SalesOrPurchase/AccountRef/FullName", &clsQBInventory::IncomeAccount, When::trimmed),
    send("SalesTaxCodeRef/FullName", &clsQBInventory::SalesTaxCode, When::trimmed)
);

constexpr auto kBoughtAndSold = request(
    "ItemNonInventoryAdd",
    send("Name", &clsQBInventory::Name),
    send("IsActive", &clsQBInventory::IsActive),
    send("SalesAndPurchase/PrefVendorRef/FullName", &clsQBInventory::PrefVendor, When::trimmed),
    send("SalesAndPurchase/PurchaseCost", &clsQBInventory::PurchaseCost, When::always, Form::price),
    send("SalesAndPurchase/PurchaseDesc", &clsQBInventory::PurchaseDesc),
    send("SalesAndPurchase/SalesDesc", &clsQBInventory::SalesDesc),
    send("SalesAndPurchase/SalesPrice", &clsQBInventory::SalesPrice, When::always, Form::price),
    send(
        "SalesAndPurchase/ExpenseAccountRef/FullName",
        &clsQBInventory::ExpenseAccount,
        When::trimmed
    ),
    send(
        "SalesAndPurchase/IncomeAccountRef/FullName", &clsQBInventory::IncomeAccount, When::trimmed
    ),
    send("SalesTaxCodeRef/FullName", &clsQBInventory::SalesTaxCode, When::trimmed)
);

/// The rate that stands at the start of the tax code's text; empty for a blank one.
std::string taxRate(const clsQBInventory& item) {
    return util::trim(item.SalesTaxCode).empty() ? std::string()
                                                 : qb::wireNumber(util::val(item.SalesTaxCode));
}

constexpr auto kSalesTaxAdd = request(
    "ItemSalesTaxAdd",
    send("Name", &clsQBInventory::Name),
    send("IsActive", &clsQBInventory::IsActive),
    send("TaxVendorRef/FullName", &clsQBInventory::PrefVendor, When::trimmed),
    send("ItemDesc", &clsQBInventory::SalesDesc),
    send("TaxRate", &taxRate, When::trimmed)
);

constexpr auto kSalesTaxCodeAdd = request(
    "SalesTaxCodeAdd",
    send("Name", &clsQBInventory::Name, When::trimmed),
    send("IsActive", &clsQBInventory::IsActive),
    send("Desc", &clsQBInventory::SalesDesc),
    send("IsTaxable", &clsQBInventory::IsTaxable)
);

constexpr auto kPaymentAdd = request(
    "ItemPaymentAdd",
    send("Name", &clsQBInventory::Name),
    send("IsActive", &clsQBInventory::IsActive),
    send("ItemDesc", &clsQBInventory::SalesDesc),
    send("DepositToAccountRef/FullName", &clsQBInventory::ExpenseAccount),
    send("PaymentMethodRef/FullName", &clsQBInventory::IncomeAccount)
);

constexpr qb::Take<clsQBInventory> kCosts[] = {
    {"AverageCost", &clsQBInventory::AverageCost},
    {"COGSAccountRef/FullName", &clsQBInventory::COGSAccount},
};

constexpr qb::Take<clsQBInventory> kIdentity[] = {
    {"ListID", &clsQBInventory::ListID},
    {"EditSequence", &clsQBInventory::EditSequence},
};

LegacyBool addSoldOnly(const char* name, const char* literal, const clsQBInventory& item) {
    return qb::runCycle(name, literal, item.Name, [&](platform::QBElement& body) {
        qb::fill(body, item, kSoldOnly);
    });
}

}  // namespace

LegacyBool clsQBInventory::OtherChargeAddNewReq() {
    return addSoldOnly("ItemOtherChargeAdd", "OtherChargeAddNewReq ", *this);
}

LegacyBool clsQBInventory::InvtAddNewReq() {
    return qb::runCycle(kInventoryAdd, *this, "InvtAddNewReq ", Name);
}

LegacyBool clsQBInventory::InvtModifyReq() {
    return qb::runCycle(kInventoryMod, *this, "InvtModifyReq ", Name);
}

LegacyBool clsQBInventory::NonInvtWithCostAddNewReq() {
    // Kept: a refusal is logged under the shorter name.
    return qb::runCycle(
        kBoughtAndSold, *this, {"NonInvtAddNewReq ", "NonInvtWithCostAddNewReq "}, Name
    );
}

LegacyBool clsQBInventory::NonInvtAddNewReq() {
    return addSoldOnly("ItemNonInventoryAdd", "NonInvtAddNewReq ", *this);
}

LegacyBool clsQBInventory::SalesTaxInvtAddNewReq() {
    return qb::runCycle(kSalesTaxAdd, *this, "SalesTaxInvtAddNewReq ", Name);
}

LegacyBool clsQBInventory::SalesTaxCodeAddNewReq() {
    return qb::runCycle(kSalesTaxCodeAdd, *this, "SalesTaxCodeAddNewReq ", Name);
}

LegacyBool clsQBInventory::PaymentInvtAddNewReq() {
    return qb::runCycle(kPaymentAdd, *this, "PaymentInvtAddNewReq ", Name);
}

LegacyBool clsQBInventory::ItemQueryRq() {
    const std::string key = Name;
    return qb::handled(kQueryLiteral, key, [&] {
        if (!qb::runSearch(kQuery, key, kQueryLiteral, key, found_)) {
            return false;
        }
        const std::string code = util::trim(gfsItem_name(gInventory.SL.str()));
        bool isFound = false;
        for (int index = 0; index < found_.count() && !isFound; ++index) {
            Name = key;
            ItemInfoRet_get(index);
            isFound = util::trim(Name) == code;
        }
        Name = code;
        return isFound;
    });
}

LegacyBool clsQBInventory::ItemInfoRet_get(int index) {
    const platform::QBElement& item = found_.at(index);
    if (item.name() != "ItemInventoryRet") {
        return kYes;
    }
    const bool isOther =
        item.has("Name") && util::trim(item.find("Name").text()) != util::trim(Name);
    if (isOther) {
        Name.clear();
    } else {
        // Only the item itself may be changed afterwards, never one whose name merely begins alike.
        qb::read(item, *this, kIdentity);
    }
    qb::read(item, *this, kCosts);
    return kNo;
}
