#include "core/link_setup.h"
#include "core/run_log.h"
#include "db/nuvDBSM_Inventory.h"
#include "export/export_run.h"
#include "export/record_exports.h"
#include "export/sale_conversion.h"
#include "qb/clsQBInventory.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

namespace {

using AddRequest = LegacyBool (clsQBInventory::*)();

/// What kind of item a row becomes in the company file.
enum class ItemKind { otherCharge, nonInventory, nonInventoryWithCost, inventory };

constexpr char kMiscellaneous[] = "Miscellaneous";

AddRequest addRequest(ItemKind kind) {
    switch (kind) {
    case ItemKind::otherCharge:
        return &clsQBInventory::OtherChargeAddNewReq;
    case ItemKind::nonInventory:
        return &clsQBInventory::NonInvtAddNewReq;
    case ItemKind::nonInventoryWithCost:
        return &clsQBInventory::NonInvtWithCostAddNewReq;
    case ItemKind::inventory:
        break;
    }
    return &clsQBInventory::InvtAddNewReq;
}

ItemKind kindOf(const std::string& name) {
    if (name.starts_with("~") || exporting::isShippingItem(gInventory.SL.str())) {
        return ItemKind::otherCharge;
    }
    const bool withoutStock = gInventory.FlgMatrix.view() == "Y" || gInventory.Kit.view() > "N" ||
                              gInventory.NonDecrement.view() == "Y";
    if (!withoutStock) {
        return ItemKind::inventory;
    }
    return gInventory.Cost.isZero() ? ItemKind::nonInventory : ItemKind::nonInventoryWithCost;
}

std::string orMiscellaneous(const std::string& account) {
    return util::trim(account).empty() ? kMiscellaneous : util::trim(account);
}

/// Income account of the tax row that bears the item's tax code, else of the first row.
std::string taxRowAccount() {
    const std::string code = gInventory.TaxCode.trimmed();
    for (const NuvTaxRow& row : gaNuvTax) {
        if (!row.taxId.empty() && util::trim(row.taxId) == code &&
            !util::trim(row.salesAccount).empty()) {
            return row.salesAccount;
        }
    }
    return gaNuvTax.front().salesAccount;
}

std::string incomeAccount(const std::string& name) {
    struct SpecialAccount {
        const char* name;
        core::FixedAccount row;
    };
    static constexpr SpecialAccount kSpecials[] = {
        {"~POUT", core::FixedAccount::cashPaidOut},
        {"~ROAL", core::FixedAccount::salesLayaway},
    };
    std::string account;
    if (exporting::isShippingItem(gInventory.SL.str())) {
        account = core::fixedAccount(core::FixedAccount::shippingIncome);
    }
    for (const SpecialAccount& special : kSpecials) {
        if (name == special.name) {
            account = core::fixedAccount(special.row);
        }
    }
    return orMiscellaneous(account.empty() ? taxRowAccount() : account);
}

void fillAccounts(clsQBInventory& item, ItemKind kind) {
    item.IncomeAccount = incomeAccount(item.Name);
    const std::string costOfGoods = core::fixedAccount(core::FixedAccount::costOfGoodsSold);
    if (kind == ItemKind::inventory) {
        item.AssetAccount = core::fixedAccount(core::FixedAccount::inventory);
        item.COGSAccount = costOfGoods;
    } else if (kind == ItemKind::nonInventoryWithCost) {
        item.ExpenseAccount = orMiscellaneous(costOfGoods);
    }
}

void fillItem(clsQBInventory& item) {
    item.Name = util::rtrim(gfsItem_name(gInventory.SL.str()));
    item.AverageCost = gInventory.AvgCost;
    item.PurchaseCost = gInventory.Cost;
    item.SalesDesc = util::rtrim(gInventory.Description.str());
    item.PurchaseDesc = item.SalesDesc;
    item.IsActive = legacyBool(gInventory.Status.view() != "D");
    item.SalesPrice = gInventory.Price;
    gInventory.QtyOnHand = static_cast<float>(gfdRound(gInventory.QtyOnHand, 0));
    item.QuantityOnHand = gInventory.QtyOnHand;
    item.InventorySpare = gInventory.OnOrder;
    item.ReorderPoint = gInventory.MinQ;
    item.SalesTaxCode = gInventory.TaxCode.trimmed();
}

/// An entry that the company file has already needs no word in the log.
void logItemStatus() {
    if (gsQBStatusMessage.find("the list element is already in use.") == std::string::npos) {
        exporting::logGatewayStatus();
    }
}

}  // namespace

void gpItemCost_export() {
    clsQBInventory item;
    item.Name = util::rtrim(gfsItem_name(gInventory.SL.str()));
    if (item.ItemQueryRq() == kNo) {
        gpItem_export();
        return;
    }
    // An item that the company file keeps no stock of has no cost to bring up to date.
    if (item.ListID.empty() || item.AverageCost == gInventory.AvgCost) {
        return;
    }
    fillItem(item);
    item.PrefVendor = exporting::ensureVendor(gInventory.VendorCode.trimmed());
    fillAccounts(item, ItemKind::inventory);
    item.InvtModifyReq();
    logItemStatus();
}

void gpItem_export() {
    clsQBInventory item;
    fillItem(item);
    item.PrefVendor = exporting::ensureVendor(gInventory.VendorCode.trimmed());
    const ItemKind kind = kindOf(item.Name);
    fillAccounts(item, kind);
    if (item.ItemQueryRq() == kNo) {
        (item.*addRequest(kind))();
    } else if (!item.ListID.empty()) {
        item.InvtModifyReq();
    }
    logItemStatus();
}
