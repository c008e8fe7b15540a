#pragma once

#include "util/legacy_bool.h"
#include "util/money.h"

#include <cstdint>
#include <string>
#include <vector>

/// Side of a journal line.
inline constexpr std::int16_t kDebitSide = 0;
inline constexpr std::int16_t kCreditSide = 1;

/// One line of a journal entry.
struct QBJournalLine {
    std::int16_t Side =
        kDebitSide;          ///< kDebitSide, kCreditSide; a line of another side is not filled
    std::string LineNumber;  ///< place in the array, from 1
    std::string Account;     ///< full name
    util::Money Amount;      ///< goes out without its sign
    std::string Entity;      ///< full name of a customer or vendor, may be blank
    std::string Memo;        ///< may be blank
};

/// A payment that a customer made on account.
struct QBPaymentRecord {
    std::string CustomerName;
    std::string TxnDate;  ///< date text in the store's order
    util::Money TotalAmount;
    std::string PaymentMethod;
    std::string Memo;
    std::string RefNumber;  ///< ticket number
    std::string DepositToAccount;
};

/// Adds a payment method. A refusal is in `gsQBStatusMessage`, as for all routines here.
/// @param isActive  0: added as inactive; the tender export passes the tender's type.
void gpTenderType_add(const std::string& name, LegacyBool isActive);

/// Adds a sales rep of up to five initials for an entry of the name lists. A failure shows a box.
void gpSalesCode_add(
    const std::string& entityName, const std::string& initial, LegacyBool isActive
);

/// Adds a journal entry with the lines from index 1 (element 0 is unused). Joins the request set as
/// it stands: the caller has reset it. Shows its progress in `frmSetup`.
/// @param txnDate  date text  @param memo  not sent when blank
void gpJournalEntry_add(
    const std::vector<QBJournalLine>& lines,
    const std::string& txnDate,
    const std::string& refNumber,
    const std::string& memo
);

/// Is there a payment whose reference number contains the ticket of the `gSalesHead` record?
LegacyBool gfbReceivePayment_search();

/// Adds a payment that is applied to no invoice. A failure goes to the run log too.
void gpReceivePayment_add(const QBPaymentRecord& payment);
