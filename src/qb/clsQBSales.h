#pragma once

#include "qb/return_list.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <cstdint>
#include <string>
#include <vector>

/// One line of a sales receipt, an invoice or a credit memo.
struct QBSaleLine {
    std::string Item;         ///< full name of the item
    std::string ServiceDate;  ///< date text, may be blank
    std::string Description;
    float Quantity = 0;  ///< 0: not sent
    util::Money Amount;
    std::string TaxCode;
    std::string TaxCode2;  ///< takes part in no request
};

/// Lines of the sale under conversion, from index 1 (element 0 is never sent).
extern std::vector<QBSaleLine> gaSaleLines;

/// One ticket on its way to the company file: fill the members and `gaSaleLines`, then call a
/// request. Dates are date texts in the store's order. The sales tax item is `gsQBSaleTaxItem`.
class clsQBSales {
public:
    std::string TxnDate;
    std::string RefNumber;  ///< ticket number
    std::string CustomerName;
    std::string DueDate;
    std::string ShipDate;
    util::Money SaleAmount;  ///< takes part in no request
    std::string FOB;
    LegacyBool IsPending = kNo;
    std::string Memo;
    std::string CheckNumber;
    std::string ShipMethod;
    std::string ShipAddr1;
    std::string ShipAddr2;
    std::string ShipAddr3;
    std::string ShipAddr4;
    std::string ShipCity;
    std::string ShipState;
    std::string ShipPostalCode;
    std::string ShipCountry;
    std::string BillAddr1;
    std::string BillAddr2;
    std::string BillAddr3;
    std::string BillAddr4;
    std::string BillCity;
    std::string BillState;
    std::string BillPostalCode;
    std::string BillCountry;
    std::string PaymentMethod;
    std::string DepositToAccount;
    std::string SalesRep;
    std::string Terms;
    std::string TaxCode;  ///< tax code of the customer; an invoice replaces it by "Tax" or "Non"
    std::int16_t LineCount = 0;  ///< kept for the engines; takes part in no request

    /// Is there a transaction whose reference number contains the ticket of the `gSalesHead`
    /// record? `gnQBReturnedCount` is the count. A ticket that is not there shows the "not found"
    /// box.
    LegacyBool CreditMemoSearchRq();
    LegacyBool SalesReceiptSearchRq();
    LegacyBool InvoiceSearchRq();

    /// Adds the transaction. A refusal is in `gsQBStatusMessage` and in the run log. A member that
    /// cannot be converted ends a sales receipt and a credit memo with a box and nothing sent; an
    /// invoice goes out without that field.
    void SalesReceiptAddRq();
    void InvoiceAddRq();
    void CreditMemoAddRq();

private:
    qb::ReturnList creditMemos_;
    qb::ReturnList salesReceipts_;
    qb::ReturnList invoices_;
};
