#pragma once

#include "qb/return_list.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <memory>
#include <string>
#include <vector>

/// One line of a purchase order or item receipt.
struct QBPOLine {
    std::string Item;  ///< full name of the item
    std::string Description;
    util::Money Amount;
    std::string CustomerName;  ///< may be blank
    float Quantity = 0;
};

/// Lines of the purchase order under construction, from index 1 (element 0 is not sent).
extern std::vector<QBPOLine> gaQBPOLines;

/// A purchase order: fill the members and `gaQBPOLines`, then call a request. Dates are date texts.
class clsQBPO {
public:
    std::string TxnID;
    std::string EditSequence;
    std::string DueDate;
    std::string TxnDate;
    std::string ExpectedDate;
    std::string FOB;
    LegacyBool IsManuallyClosed = kNo;
    LegacyBool IsToBePrinted = kNo;
    std::string Memo;
    std::string RefNumber;  ///< the key: the order's number
    std::string ShipToEntity;
    std::string ShipAddr1;
    std::string ShipAddr2;
    std::string ShipAddr3;
    std::string ShipAddr4;
    std::string ShipCity;
    std::string ShipState;
    std::string ShipPostalCode;
    std::string ShipMethod;
    util::Money Tax1Total;
    util::Money Tax2Total;
    std::string Terms;
    std::string VendorAddr1;
    std::string VendorAddr2;
    std::string VendorAddr3;
    std::string VendorCity;
    std::string VendorState;
    std::string VendorPostalCode;
    std::string VendorCountry;
    std::string VendorMsg;
    std::string VendorName;

    /// Looks for an order whose number contains `RefNumber` and reads the first. The request joins
    /// the set as it stands: the caller has reset it. @return kNo, with a box, when there is none;
    /// kNo without a word, and nothing sent, when `RefNumber` is empty.
    LegacyBool POSearchRq();
    /// Reads the status of the answer into the status texts and keeps the orders found.
    /// @return kYes when the status is 0.
    LegacyBool POSearchRet_count();  // NOLINT(readability-identifier-naming): fixed name
    /// Reads `RefNumber` from the first order of the last search.
    void POKeyRet_get();
    /// Reads the members from the order at `index`; what it lacks becomes empty.
    void POInfoRet_get(int index);
    /// Adds the order with its lines. @return kYes when the company file took it.
    LegacyBool POHeaderAddNewReq();
    /// Deletes the order of `TxnID`; joins the set as it stands.
    LegacyBool PODeleteReq();
    /// Adds an item receipt for the lines. @return kYes when the company file took it.
    LegacyBool POItemReceivedAddRq();

private:
    qb::ReturnList found_;
};

/// The purchase order at work; made on first use by qb::purchaseOrder().
extern std::unique_ptr<clsQBPO> goQBPO;

namespace qb {

/// `goQBPO`, made when there is none.
clsQBPO& purchaseOrder();

}  // namespace qb
