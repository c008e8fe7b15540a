#pragma once

#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_Vendors.h"

namespace db {

/// Records with blank texts and zeros: the start of one that is filled by hand.
NamesRecord clearedNames();
InventoryRecord clearedInventory();
VendorsRecord clearedVendors();

}  // namespace db
