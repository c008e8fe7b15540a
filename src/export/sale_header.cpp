#include "export/sale_header.h"

#include "core/brv_op.h"
#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/clear_record.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "export/record_exports.h"
#include "export/sale_conversion.h"
#include "export/sale_state.h"
#include "qb/clsQBInventory.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

namespace exporting {

namespace {

constexpr char kWalkIn[] = "VALUE";
constexpr std::int32_t kLastSpecialItem = 10;
constexpr std::int32_t kNonStock = 1;
constexpr std::size_t kRepLength = 5;

/// A customer that the table lacks is still told to the company file, so that no sale refers to a
/// name that it does not know.
void fillUnknownCustomer() {
    gNames = db::clearedNames();
    gNames.ARCode = gSalesHead.ARCode.view();
    gNames.TOTALSALES = gSalesHead.TotalSale;
}

void fillDepositAccount() {
    if (gSalesHead.TendType1 != 0) {
        gSale.DepositToAccount = gfsTenderAccount_get(gSalesHead.TendType1);
    } else if (!gSalesHead.TendAmount1.isZero()) {
        gSale.SaleAmount = gSalesHead.TendAmount1;
        gSale.DepositToAccount = gfsTenderAccount_get(0);
    }
}

std::string addressee(const HeaderRules& rules) {
    std::string business = gNames.BUSINESS.trimmed();
    if (!business.empty() || !rules.personName) {
        return business;
    }
    return util::rtrim(gNames.FIRSTNAME.trimmed() + " " + gNames.LASTNAME.trimmed());
}

std::string customerTaxCode() {
    const std::string code = gNames.TAXCODE.trimmed();
    return code == "0" || code == "N" || code == "n" ? "Non" : "Tax";
}

void fillBillAddress(const HeaderRules& rules) {
    gSale.BillAddr1 = addressee(rules);
    gSale.BillAddr2 = gNames.ADDRESS.trimmed();
    const std::string second = gNames.ADDRESS2.trimmed();
    if (rules.secondAddressLine && !second.empty()) {
        gSale.BillAddr3 = second;
    }
    gSale.BillCity = gNames.CITY.trimmed();
    gSale.BillState = gNames.STATE.trimmed();
    gSale.BillPostalCode = gNames.ZIP.trimmed();
    gSale.BillCountry = gNames.Country.trimmed();
    gSale.TaxCode = customerTaxCode();
}

/// True when the company file books the cost of the item in the buffers itself: it knows the item
/// with a cost-of-goods account.
bool companyFileBooksCost() {
    clsQBInventory item;
    item.Name = util::rtrim(gfsItem_name(gSalesItem.SL.str()));
    if (item.ItemQueryRq() == kNo) {
        gpItem_export();
    }
    return !item.COGSAccount.empty();
}

/// Looks the item up; one that is unknown or deleted is sold as the non-stock item.
/// @return true when the `Inventory` buffer holds the item's row.
bool lookUpItem() {
    if (gSalesItem.InvUID != 0 && gSalesItem.InvUID <= kLastSpecialItem) {
        return false;
    }
    gInventory.RecordNum = gSalesItem.InvUID;
    const bool found =
        gfiDB_Operation(db::tableInventory, db::opEqual, db::keyInventoryRecordNum) != kNo;
    if (found && gInventory.Status.view() != "D") {
        return true;
    }
    gSalesItem.SL = "~NONSTK";
    gSalesItem.InvUID = kNonStock;
    return false;
}

void addCost(bool hasInventoryRow) {
    if (gSalesItem.Cost.isZero()) {
        return;
    }
    const bool special = gSalesItem.InvUID <= kLastSpecialItem;
    const bool withoutStock = hasInventoryRow && gInventory.NonDecrement.view() == "Y";
    if (special || (withoutStock && !companyFileBooksCost())) {
        gcCogsTotal += util::times(gSalesItem.Cost, gSalesItem.Shipped);
    }
}

}  // namespace

std::string readSaleCustomer(const HeaderRules& rules) {
    if (gSalesHead.ARCode.trimmed().empty()) {
        gNames.ARCode = kWalkIn;
        return kWalkIn;
    }
    std::string key = gSalesHead.ARCode.str();
    gNames.ARCode = key;
    if (gfiDB_Operation(db::tableNames, db::opEqual, db::keyNamesARCode) != kNo) {
        gNames.BALANCE = {};
    } else {
        fillUnknownCustomer();
    }
    if (rules.exportCustomer) {
        gpCustomer_export();
    }
    return key;
}

void fillSaleHeader(const std::string& customerKey, const HeaderRules& rules) {
    gSale.RefNumber = gSalesHead.Invoice.trimmed();
    gSale.SalesRep = gfvSalesRep_resolve(gSalesHead.Scode.trimmed().substr(0, kRepLength));
    gSale.SaleAmount = gSalesHead.SubTotal;
    gSale.TxnDate = storeDate(gSalesHead.SaleDate.str());
    gSale.CustomerName = util::trim(customerKey);
    fillDepositAccount();
    if (gSale.CustomerName == kWalkIn) {
        gSale.TaxCode = "Tax";
    } else if (gbSalesSummaryMode == kNo) {
        fillBillAddress(rules);
    }
}

bool readSaleItems() {
    for (std::int32_t line = 1; db::readSalesItem(gSalesHead.SALEID, line); ++line) {
        const bool hasInventoryRow = lookUpItem();
        addCost(hasInventoryRow);
        gaSaleItems.push_back(gSalesItem);
    }
    return gaSaleItems.size() > 1;
}

}  // namespace exporting
