#pragma once

#include "config/clsINI_Services.h"
#include "util/legacy_bool.h"
#include "util/money.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A row of the account table: a tender of the point of sale, or one of the eight fixed accounts,
/// and the account of the company file that it is mapped to.
struct NuvAccountRow {
    std::int16_t tenderNumber = 0;  ///< number of the tender; 0 in the fixed rows
    std::int16_t tenderType = 0;    ///< type of the tender; 0 in the fixed rows
    std::string AcctDesc;   ///< 20 characters for a tender; the row's key in the file, trimmed
    std::string QBAccount;  ///< full name of the account; empty when not mapped
};

/// A row of the tax table: a tax identifier ("0", "A" to "F") and where its sales go.
struct NuvTaxRow {
    std::string taxId;
    std::string salesAccount;
};

/// Rows 0 to T are the tenders in the order of their table, T+1 to T+8 the fixed accounts.
extern std::vector<NuvAccountRow> goNuvAcct;
/// Highest tender index T; -1 while no tender is known.
extern std::int16_t gnTenderUpper;
/// Rows 0 to 6 are stored and read; row 7 stays empty.
extern std::array<NuvTaxRow, 8> gaNuvTax;
/// The settings file `QBLINK.NUV`.
extern clsINI_Services gLinkIni;

extern std::string gsNetTerms;
extern LegacyBool gbUseAR;
extern LegacyBool gbUseAP;
/// "Last Invoices Posted", seven digits, and its date.
extern std::string gsLastInvoice;
extern std::string gsLastInvoiceDate;
/// "Last Purchase Order Posted": eight digits, and the last receipt's number.
extern std::string gsLastPODate;
extern std::int32_t gnLastPOUID;
/// Highest record numbers of the list exports.
extern std::int16_t gnLastInventoryUID;
extern std::int16_t gnLastNameUID;
extern std::string gsTaxPayee;
extern std::string gsVendorsAccountPayable;

/// Fills the globals above, `goNuvAcct` and the tax table from `QBLINK.NUV` of the data folder.
/// @return kYes when the file is there and bears the link identifier. A failure shows "Unable To
/// Read Setup" with its text and gives kNo. Writes a trace line.
LegacyBool gfbAccounts_Setup_reading();

/// Account of the company file for tender `id`: the last tender row of that number; empty: none.
std::string gfsTenderAccount_get(std::int64_t id);
/// The point-of-sale description of tender `id`, as 20 characters; empty: none.
std::string gfsTenderName_get(std::int64_t id);

namespace core {

/// The fixed rows behind the tenders: row T + value.
enum class FixedAccount : std::int16_t {
    pettyCash = 1,
    cashPaidOut,
    inventory,
    costOfGoodsSold,
    shippingIncome,
    salesTaxPayable,
    salesReturns,
    salesLayaway,
};

/// Right-trimmed account of a fixed row; empty when it is not mapped or the table was not built.
std::string fixedAccount(FixedAccount row);

/// One tender as the table builder takes it.
struct TenderRow {
    std::int16_t number = 0;
    std::int16_t type = 0;
    std::string description;  ///< 20 characters
};

/// Sizes `goNuvAcct` to the tenders and the eight fixed rows, names the rows, and sets the tax
/// identifiers. Accounts start empty.
void buildAccountTable(const std::vector<TenderRow>& tenders);

/// Full name of `QBLINK.NUV`.
std::string linkSetupFile();
/// Opens `gLinkIni` on `QBLINK.NUV`; true when the file can be read and written. A save that was
/// cut off is taken back first.
bool openLinkSetup();
/// Keeps all of `QBLINK.NUV` as `QBLINK.SAV` beside it, for as long as a save takes.
/// @throws PlatformError when that cannot be written; nothing is changed then.
void keepLinkSetup();
/// Ends a save: what was kept is removed. @throws PlatformError when it cannot be.
void dropKeptLinkSetup();
/// Takes back a save that was cut off: puts the kept file in the place of what is there. Does
/// nothing when none is kept. @throws PlatformError when the file cannot be put back; it stays
/// kept.
void putBackLinkSetup();
/// Writes one key of section "IMPORT HIST"; the file must have been opened by openLinkSetup().
void storeMark(const std::string& key, const std::string& value);

/// One key of section "IMPORT HIST" as `QBLINK.NUV` holds it now; empty when the file cannot be
/// read.
std::string storedMark(const std::string& key);

/// Puts the state of this module back to its start values.
void resetLinkSetup();

}  // namespace core
