#include "export/sale_post.h"

#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/run_record.h"
#include "export/sale_conversion.h"
#include "export/sale_state.h"
#include "platform/ports/platform.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"

namespace {

constexpr util::Money kZero;
constexpr std::int32_t kRefundOnAccount = 2;

enum class SaleRequest { none, salesReceipt, invoice, creditMemo };

struct RequestRow {
    SaleRequest request;
    const char* kind;
    void (clsQBSales::*send)();
};
constexpr RequestRow kRequests[] = {
    {SaleRequest::salesReceipt, "SalesReceipt", &clsQBSales::SalesReceiptAddRq},
    {SaleRequest::invoice, "Invoice", &clsQBSales::InvoiceAddRq},
    {SaleRequest::creditMemo, "CreditMemo", &clsQBSales::CreditMemoAddRq},
};

/// True when the company file holds the sale already. Kept: the first tender alone decides which
/// kind of transaction is looked for.
bool alreadyPosted() {
    const util::Money total = gSalesHead.TotalSale;
    const bool namedCustomer = util::aboveBlank(gSalesHead.ARCode.trimmed());
    if (namedCustomer && gSalesHead.TendType1 == 0 && total > kZero) {
        return gSale.InvoiceSearchRq() != kNo;
    }
    if (namedCustomer && gSalesHead.TendType1 == 0 && total < kZero) {
        return gSale.CreditMemoSearchRq() != kNo;
    }
    if (!namedCustomer && total.isZero()) {
        return false;
    }
    return gSale.SalesReceiptSearchRq() != kNo;
}

/// A document of a sale that an earlier run may have sent is looked for before it goes out again:
/// the search above does not see journals, nor kinds that the first tender hides.
bool isSentBefore(const std::string& kind) {
    return exporting::salesRecord().mayBePosted(gSalesHead.Invoice.str()) &&
           exporting::isPostedAlready(kind, gSalesHead.Invoice.trimmed());
}

void addCostLine(const std::string& account, util::Money signedAmount) {
    QBJournalLine& line = exporting::addJournalLine(signedAmount);
    line.Account = account;
    line.Amount = gcCogsTotal.rounded(2).abs();
    line.Memo = gSalesHead.Invoice.trimmed();
}

void addCostJournal() {
    const std::string inventory = core::fixedAccount(core::FixedAccount::inventory);
    if (gcCogsTotal.isZero() || inventory.empty()) {
        return;
    }
    addCostLine(inventory, gcCogsTotal);
    const std::string costOfGoods = core::fixedAccount(core::FixedAccount::costOfGoodsSold);
    if (!costOfGoods.empty()) {
        addCostLine(costOfGoods, gcCogsTotal);
        gaJournalLines.back().Side = gcCogsTotal < kZero ? 1 : 0;
    }
}

void postJournal() {
    if (gaJournalLines.size() <= 1 || isSentBefore("JournalEntry")) {
        return;
    }
    gpJournalEntry_add(
        gaJournalLines,
        exporting::storeDate(gSalesHead.SaleDate.str()),
        gSalesHead.Invoice.trimmed(),
        ""
    );
    if (util::aboveBlank(util::trim(gsQBStatusMessage))) {
        gpQBLink_Log_writing(gsQBStatusMessage);
    }
}

bool isJournalOnly() {
    const std::string kind = gSalesHead.Description.trimmed();
    return kind == "ROAL" || kind == "PAYROL";
}

SaleRequest requestOnAccount() {
    const util::Money total = gcSaleGrandTotal;
    if (total > kZero) {
        return SaleRequest::invoice;
    }
    if (total < kZero) {
        const bool refund = gaSaleItems.back().InvUID == kRefundOnAccount;
        return refund ? SaleRequest::invoice : SaleRequest::creditMemo;
    }
    if (gSalesHead.TotalSale > kZero) {
        return SaleRequest::invoice;
    }
    return gSalesHead.TotalSale < kZero ? SaleRequest::creditMemo : SaleRequest::none;
}

SaleRequest chooseRequest() {
    if (isJournalOnly()) {
        return SaleRequest::none;
    }
    if (gbSaleOnAccount != kNo) {
        return requestOnAccount();
    }
    if (gbSaleHasPayment != kNo) {
        return gcSaleGrandTotal < kZero ? SaleRequest::creditMemo : SaleRequest::none;
    }
    return gSalesHead.SubTotal.isZero() ? SaleRequest::none : SaleRequest::salesReceipt;
}

void sendRequest(SaleRequest request) {
    for (const RequestRow& row : kRequests) {
        if (row.request == request && !isSentBefore(row.kind)) {
            (gSale.*row.send)();
        }
    }
}

}  // namespace

void gpSale_post() {
    platform::desktop().pendingEvents();
    gaJournalLines.assign(1, QBJournalLine());
    if (alreadyPosted()) {
        return;
    }
    mpSaleTaxes_total();
    mpSaleSpecials_journal();
    mpSaleLines_convert();
    mpSaleTenders_convert();
    addCostJournal();
    if (gfbRequestMsgSet_reset() == kNo) {
        return;
    }
    postJournal();
    if (gbSalesSummaryMode != kNo) {
        exporting::addSaleToTotals();
        return;
    }
    sendRequest(chooseRequest());
}
