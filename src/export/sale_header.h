#pragma once

#include <string>

/// The steps that the automatic and the manual sales export share, for the `SalesHead` row in the
/// buffer.
namespace exporting {

/// How the two exports fill a sale's header differently.
struct HeaderRules {
    bool exportCustomer = true;     ///< create or update the customer in the company file
    bool personName = true;         ///< a customer without a business is addressed by its name
    bool secondAddressLine = true;  ///< `ADDRESS2` becomes the third address line
};

/// Reads the sale's customer into the `Names` buffer (a cleared record for one that the table does
/// not have) and, as the rules say, sends it to the company file.
/// @return the customer key: `ARCode`, or "VALUE" for a sale without customer.
std::string readSaleCustomer(const HeaderRules& rules);

/// Fills the header of `gSale`: number, rep, date, customer, deposit account, bill address, tax
/// code.
void fillSaleHeader(const std::string& customerKey, const HeaderRules& rules);

/// Reads the sale's items into `gaSaleItems`, turns unknown and deleted ones into "~NONSTK", and
/// adds up the cost that the company file does not book itself. @return true when there is an item.
bool readSaleItems();

}  // namespace exporting
