#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/sale_columns.h"
#include "export/sale_conversion.h"
#include "export/sale_state.h"
#include "util/conversions.h"

namespace {

constexpr std::int64_t kOnAccountTender = 0;

std::string description() {
    return gSalesHead.Description.trimmed();
}

/// A journal line of the sale's customer, on the side of `signedAmount`.
void addEntry(
    const std::string& account,
    util::Money amount,
    const std::string& memo,
    util::Money signedAmount
) {
    QBJournalLine& line = exporting::addJournalLine(signedAmount);
    line.Account = account;
    line.Amount = amount;
    line.Memo = memo;
    line.Entity = gSalesHead.ARCode.trimmed();
}

util::Money firstLineTotal() {
    return gaSaleItems.size() > 1 ? gaSaleItems[1].LineTotal : util::Money();
}

std::string layawayAccount() {
    return core::fixedAccount(core::FixedAccount::salesLayaway);
}

void journalLayawayComplete() {
    const util::Money deposit = firstLineTotal();
    addEntry(gfsTenderAccount_get(kOnAccountTender), deposit, description(), gSalesHead.SubTotal);
    gSalesHead.SubTotal = -deposit;
    addEntry(layawayAccount(), deposit, description(), gSalesHead.SubTotal);
}

void journalPayrollDeduction() {
    const util::Money deduction = firstLineTotal();
    addEntry(gfsTenderAccount_get(kOnAccountTender), deduction, "Payroll Deduction", deduction);
    addEntry(layawayAccount(), deduction, description(), deduction);
    gSalesHead.SubTotal = deduction;
    // The deduction leaves one account for the other: the second line stands opposite the first.
    const std::int16_t firstSide = gaJournalLines.at(gaJournalLines.size() - 2).Side;
    gaJournalLines.back().Side = firstSide == 0 ? 1 : 0;
}

/// The tenders of a layaway payment; the side is the reverse of the rule for the other lines.
void mpSaleTenders_journal() {
    for (int slot = exporting::slotCount(gSalesHead.Tenders) - 1; slot >= 0; --slot) {
        const exporting::TenderColumns& columns =
            exporting::kTenderColumns.at(static_cast<std::size_t>(slot));
        const std::int16_t type = gSalesHead.*columns.type;
        if (gfiTender_lookup(type) == 99) {
            continue;
        }
        QBJournalLine& line = exporting::addJournalLine(util::Money());
        line.Side = gSalesHead.SubTotal < util::Money() ? 1 : 0;
        line.Account = gfsTenderAccount_get(type);
        line.Amount = gSalesHead.*columns.amount;
        line.Memo = (gSalesHead.*columns.reference).trimmed();
        if (gTenderTypes.TenderType == 0) {
            line.Entity = gSalesHead.ARCode.trimmed();
        }
    }
}

}  // namespace

void mpSaleSpecials_journal() {
    const std::string kind = description();
    // The whole words do not fit the column of 15 characters: what fits of them counts.
    if (kind == "Layaway Complet") {
        gbLayawayComplete = kYes;
    }
    if (kind == "ROA") {
        gbSaleHasPayment = kYes;
        addEntry(
            gfsTenderAccount_get(kOnAccountTender), gSalesHead.SubTotal, kind, gSalesHead.SubTotal
        );
    } else if (gbLayawayComplete != kNo) {
        journalLayawayComplete();
    } else if (kind == "ROAL") {
        addEntry(
            layawayAccount(),
            gSalesHead.TotalSale,
            gSalesHead.Reference.trimmed(),
            gSalesHead.TotalSale
        );
        mpSaleTenders_journal();
    } else if (kind == "PAYROL") {
        journalPayrollDeduction();
    }
}
