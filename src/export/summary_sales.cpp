#include "core/brv_op.h"
#include "core/sm_files.h"
#include "export/export_run.h"
#include "export/sale_state.h"
#include "export/summary_export.h"
#include "export/summary_files.h"
#include "export/summary_journal.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "util/basic_error.h"
#include "util/conversions.h"

#include <algorithm>
#include <limits>

namespace exporting {

namespace {

constexpr char kUntaxed[] = "Non";
constexpr char kNegativeTenderItem[] = "6005";
constexpr char kReturnsItem[] = "Returns";
constexpr char kUntaxedCategory[] = "0600";
constexpr std::size_t kMostNegativeTenders = 5;
constexpr std::size_t kMostReturns = 6;
constexpr int kTooManyRows = 9;

/// What of a day goes into its journal entry.
struct DayJournal {
    std::vector<SummaryRow> negativeTenders;
    std::vector<SummaryRow> returns;
    util::Money cost;
};

void keep(
    std::vector<SummaryRow>& rows, const SummaryRow& row, std::size_t most, const char* what
) {
    if (rows.size() == most) {
        throw util::BasicError(
            kTooManyRows, "it holds more than " + std::to_string(most) + " " + what
        );
    }
    rows.push_back(row);
}

/// A negative tender or sales category changes its item and is noted for the journal.
void divert(SummaryRow& row, DayJournal& journal) {
    if (row.amount >= util::Money()) {
        return;
    }
    const SummaryCode meaning = summaryCode(row.code);
    if (meaning == SummaryCode::tender) {
        row.code = kNegativeTenderItem;
        keep(journal.negativeTenders, row, kMostNegativeTenders, "negative tenders");
    } else if (meaning == SummaryCode::salesCategory) {
        row.code = kReturnsItem;
        keep(journal.returns, row, kMostReturns, "returns");
    }
}

util::Money lineAmount(const SummaryRow& row) {
    if (row.code == kNegativeTenderItem || util::upper(row.description) == "TIPS") {
        return row.amount.abs();
    }
    const bool redeemed = row.description.find("edeemed") != std::string::npos;
    return redeemed ? -row.amount : row.amount;
}

void fillLine(QBSaleLine& line, const SummaryRow& row, bool dayHasSales) {
    line.Amount = lineAmount(row);
    line.Item = row.code;
    line.Description = row.description;
    const bool untaxed = namesTaxItem(row.description) || row.code == kUntaxedCategory;
    line.TaxCode = untaxed ? kUntaxed : "";
    if (dayHasSales) {
        line.TaxCode2 = line.TaxCode;
    } else if (!line.Amount.isZero()) {
        gsSaleTaxItem = kUntaxed;
    }
}

/// Cost of the day: the cost row, with the second cost when that follows it directly.
util::Money costAt(const std::vector<SummaryRow>& rows, std::size_t index) {
    const util::Money cost = rows[index].amount;
    const std::size_t next = index + 1;
    const bool hasSecond =
        next < rows.size() && summaryCode(rows[next].code) == SummaryCode::secondCost;
    return hasSecond ? cost.abs() + rows[next].amount.abs() : cost;
}

/// Makes the lines of the receipt, up to the cost row.
DayJournal convertRows(SummaryDay& day) {
    DayJournal journal;
    gaSaleLines.assign(day.rows.size() + 1, QBSaleLine());
    gnSaleLineCount = 0;
    for (std::size_t index = 0; index < day.rows.size(); ++index) {
        SummaryRow& row = day.rows[index];
        if (summaryCode(row.code) == SummaryCode::costOfGoods) {
            journal.cost = costAt(day.rows, index);
            break;
        }
        divert(row, journal);
        fillLine(gaSaleLines[index + 1], row, day.hasSales);
        ++gnSaleLineCount;
    }
    constexpr int kMostCounted = std::numeric_limits<std::int16_t>::max();
    gSale.LineCount = static_cast<std::int16_t>(std::min(gnSaleLineCount, kMostCounted));
    return journal;
}

void fillHead() {
    showSummaryStatus("Create sales receipt Header...");
    gSale = clsQBSales();
    gSale.RefNumber = util::format(gsFromDate, "YYMMDD", qb::dateOrder());
    gSale.TaxCode = kUntaxed;
    gSale.TxnDate = util::format(gsFromDate, "Short Date", qb::dateOrder());
}

void addJournalLines(const DayJournal& journal) {
    gaJournalLines.assign(1, QBJournalLine());
    for (const SummaryRow& tender : journal.negativeTenders) {
        addJournalPair(kNegativeTenderAccounts, tender.amount, tender.description);
    }
    for (const SummaryRow& returned : journal.returns) {
        addJournalPair(kReturnAccounts, returned.amount, returned.description);
    }
    if (!journal.cost.isZero()) {
        addJournalPair(kCostAccounts, journal.cost, gSale.RefNumber);
    }
}

/// @return false when no request set could be made for the journal.
bool postJournal() {
    bool ready = false;
    qb::onLanguageError(
        [&] { ready = gfbRequestMsgSet_reset() != kNo; },
        [](std::int32_t number, const std::string& description) {
            tellUnposted(
                "The journal entry " + gSale.RefNumber +
                " was not posted. Error: " + std::to_string(number) + " " + description
            );
        }
    );
    if (!ready) {
        return false;
    }
    showSummaryStatus("Exporting Journal COGS...");
    if (gaJournalLines.size() > 1) {
        postSummaryJournal(gSale.RefNumber);
    }
    return true;
}

/// Reads the day and makes its receipt and its journal; sends nothing.
/// @return false when the file cannot be posted; that has been told.
bool prepareDay(SummaryDay& day, DayJournal& journal) {
    bool prepared = false;
    qb::onLanguageError(
        [&] {
            day = readSummary(summaryText(gsSummaryFile));
            gsSaleTaxItem = day.taxItem;
            if (!day.rows.empty()) {
                fillHead();
                showSummaryStatus("Create sales receipt Line...");
                journal = convertRows(day);
            }
            prepared = true;
        },
        [](std::int32_t, const std::string& description) {
            tellUnposted(
                "Nothing of " + gsFromDate + " was posted. The file " + util::trim(gsSummaryFile) +
                " cannot be posted: " + description
            );
        }
    );
    return prepared;
}

/// @return false when the journal could not be posted.
bool postDay(const SummaryDay& day, const DayJournal& journal) {
    showSummaryStatus("Exporting sales receipt...");
    gSale.SalesReceiptAddRq();
    if (!day.hasSales) {
        return true;  // Kept: a day without sales has no journal, negative tenders or not.
    }
    showSummaryStatus("Creating Journal COGS...");
    addJournalLines(journal);
    return postJournal();
}

}  // namespace

}  // namespace exporting

LegacyBool gfbSummaryFile_post() {
    if (!exporting::ensureSession()) {
        return kNo;
    }
    const exporting::ExportLock lock;
    if (!lock.isHeld()) {
        return kNo;
    }
    exporting::showSummaryStatus("Reading Import File...");
    gsSaleTaxItem.clear();
    exporting::SummaryDay day;
    exporting::DayJournal journal;
    if (!exporting::prepareDay(day, journal)) {
        return kNo;
    }
    if (day.rows.empty()) {
        core::showMessage("nothing found to export on sales receipt");
    } else if (!exporting::postDay(day, journal)) {
        return kNo;
    }
    if (!gsPOSummaryFile.empty() && gfbFile_Exists(gsPOSummaryFile) != kNo) {
        gfbPOSummaryFile_post();
    }
    return kYes;
}
