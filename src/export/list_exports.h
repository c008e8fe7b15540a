#pragma once

#include <string_view>

/// The exports of the store's lists: each in an automatic form, which walks the rows of its table,
/// and a manual one for the one record whose key the operator typed into the setup window. All
/// report to the label of the setup window and log the failure of a record; Stop ends a walk after
/// the record at hand. Manual forms store no mark.

/// Customers with a balance above the mark "Last Name UID Added", which moves to the last row seen;
/// those without a balance are logged and not sent.
void gpNames_export();
/// The customer of `txtNameManual`.
void gpNamesManual_export();

/// All items, whatever the mark "Last Inventory UID Added" says; it moves to the last row seen.
void gpInventory_export();
/// The item of `txtInventoryManual`, typed in display form or as stored.
void gpInventoryManual_export();

/// All vendors. @param window  name of the window whose label shows the progress.
void gpVendors_export(std::string_view window);
/// The vendor of `txtVendorManual`.
void gpVendorsManual_export();

/// All tenders, as payment methods. Kept: the tender's type is what makes the method active, so
/// that "On Account", of type 0, is added as inactive.
void gpTenders_export();
/// The tender whose number stands in `txtTenderManual`.
void gpTendersManual_export();

/// All sales codes: an entry in the list of other names, named for the person with " Rep" behind,
/// and a sales rep for it. A name that is there already is passed over.
void gpSalesCodes_export();
/// The sales code of `txtSalescodeManual`.
void gpSalesCodesManual_export();
