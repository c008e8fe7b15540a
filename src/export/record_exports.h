#pragma once

#include <string>

/// Sends the customer in the `Names` buffer to the company file: search, then modify or add. A
/// failure is logged.
void gpCustomer_export();

/// Sends the item in the `Inventory` buffer: search, then modify (an inventory item) or add an item
/// of its kind. Makes sure of the vendor that it refers to. The quantity on hand in the buffer
/// becomes its rounded value. A failure is logged, but for an entry that is there already.
void gpItem_export();

/// Brings the item in the `Inventory` buffer up to date when its average cost differs from that of
/// the company file; adds it when the company file lacks it. A failure is logged.
void gpItemCost_export();

/// Sends the vendor in the `Vendors` buffer: search, then modify or add. A failure is logged.
void gpVendor_export();

namespace exporting {

/// Name of the terms of the company file for a store's payment term in days, as "Net 30".
const char* termsName(int paymentTerm);
/// Makes sure that the company file has the vendor that an item refers to, from its row or, without
/// a row, the vendor "Default". @return the vendor's name.
std::string ensureVendor(const std::string& code);
/// Forgets which vendors the company file has (another company file was opened).
void resetRecordExports();

}  // namespace exporting
