#pragma once

#include "qb/return_list.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <string>

/// An item of any kind: fill the members, then call the method of the kind. References are full
/// names.
class clsQBInventory {
public:
    std::string ListID;
    std::string EditSequence;
    std::string Name;  ///< the key: the item's code in its display form
    std::string ParentName;
    LegacyBool IsActive = kNo;
    std::string SalesTaxCode;  ///< tax code; the rate as text for a sales tax item
    std::string PurchaseDesc;
    std::string SalesDesc;
    util::Money SalesPrice;
    util::Money PurchaseCost;
    util::Money AverageCost;  ///< as read
    std::string PrefVendor;   ///< preferred vendor; tax vendor of a sales tax item
    float ReorderPoint = 0;
    float QuantityOnHand = 0;
    float InventorySpare = 0;
    std::string IncomeAccount;  ///< payment method of a payment item
    std::string COGSAccount;
    std::string AssetAccount;
    std::string ExpenseAccount;  ///< deposit account of a payment item
    LegacyBool IsTaxable = kNo;

    /// The adds, one for each kind of item. @return kYes when the company file took it.
    LegacyBool OtherChargeAddNewReq();
    LegacyBool InvtAddNewReq();
    /// Changes the inventory item of `ListID`; income account and quantity on hand stay.
    LegacyBool InvtModifyReq();
    /// A non-inventory item that is bought and sold, or sold only.
    LegacyBool NonInvtWithCostAddNewReq();
    LegacyBool NonInvtAddNewReq();
    LegacyBool SalesTaxInvtAddNewReq();
    LegacyBool SalesTaxCodeAddNewReq();
    LegacyBool PaymentInvtAddNewReq();

    /// Is the item of the `gInventory` record (display form of its `SL`) in the company file? Asks
    /// for names that begin with `Name`. An inventory item is read; `ListID` stays empty for the
    /// other kinds, whose names are not compared. `Name` is the display form afterwards.
    LegacyBool ItemQueryRq();
    /// Reads the element at `index` of the last query; an inventory item of another name empties
    /// `Name`. @return kYes only when the element is no inventory item (and nothing was read).
    LegacyBool ItemInfoRet_get(int index);

private:
    qb::ReturnList found_;
};
