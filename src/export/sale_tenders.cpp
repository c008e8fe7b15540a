#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SalesHead.h"
#include "export/run_record.h"
#include "export/sale_columns.h"
#include "export/sale_conversion.h"
#include "export/sale_state.h"
#include "qb/posted_transactions.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"
#include "util/sm_date_time.h"

#include <algorithm>

namespace {

constexpr std::int64_t kNoTender = 99;
constexpr std::int16_t kCreditCard = 3;
constexpr std::int16_t kDebitCard = 4;
constexpr util::Money kZero;

/// One tender of the sale, and whether the sale's payment was looked for already.
struct TenderStep {
    std::int16_t type = 0;
    util::Money amount;
};

/// What the company file holds of the sale's payments; the search is made once, before the first
/// one.
struct PaymentSearch {
    bool made = false;
    /// Payments that stay back: all of them when any was found; but of a sale whose run was cut off
    /// only as many as were found.
    std::size_t posted = 0;
};

std::size_t postedPayments() {
    if (gfbReceivePayment_search() == kNo) {
        return 0;
    }
    if (!exporting::salesRecord().mayBePosted(gSalesHead.Invoice.str())) {
        return exporting::kTenderColumns.size();
    }
    return qb::postedTransactions("ReceivePayment", gSalesHead.Invoice.trimmed()).size();
}

void addPaidOutLine(util::Money amount) {
    QBSaleLine& line = exporting::addSaleLine();
    line.Amount = amount;
    line.Description = "Paid Out";
    line.Item = "~POUT";
}

void payOnAccount(const TenderStep& tender, PaymentSearch& search) {
    gbSaleHasPayment = kYes;
    QBPaymentRecord payment;
    payment.CustomerName = gSalesHead.ARCode.trimmed();
    payment.TxnDate = exporting::storeDate(gSalesHead.SaleDate.str());
    payment.RefNumber = gSalesHead.Invoice.trimmed();
    payment.TotalAmount = tender.amount;
    payment.PaymentMethod = exporting::paymentMethodName();
    payment.DepositToAccount = util::trim(gfsTenderAccount_get(tender.type));
    payment.Memo = payment.PaymentMethod;
    if (!search.made) {
        search = {true, postedPayments()};
    }
    if (search.posted > 0) {
        --search.posted;
    } else {
        gpReceivePayment_add(payment);
    }
}

/// The line that the count points at becomes the return: the invoice then carries it alone.
void returnOnAccount() {
    const auto place = static_cast<std::size_t>(std::max(gnSaleLineCount, 1));
    if (gaSaleLines.size() <= place) {
        gaSaleLines.resize(place + 1);
    }
    QBSaleLine& line = gaSaleLines[place];
    line.Amount = -gSalesHead.SubTotal;
    line.Description = "Returns";
    line.Item = "Return";
    gSale.CustomerName = gSalesHead.ARCode.trimmed();
    gSale.SaleAmount = -gSalesHead.TotalSale;
    gbSaleOnAccount = kYes;
}

void convertMoneyTender(const TenderStep& tender, PaymentSearch& search) {
    const bool paymentOnAccount = gSalesHead.Description.view().substr(0, 4) == "ROA ";
    if (!paymentOnAccount) {
        if (gSalesHead.TotalSale < kZero && tender.amount < kZero) {
            addPaidOutLine(-tender.amount);
        }
    } else if (gSalesHead.TotalSale > kZero) {
        payOnAccount(tender, search);
    } else if (gSalesHead.TotalSale < kZero) {
        returnOnAccount();
    }
}

void convertOnAccountTender(const TenderStep& tender) {
    gbSaleOnAccount = kYes;
    if (tender.amount < kZero) {
        gbSaleHasPayment = kYes;
    }
    if (tender.amount != gSalesHead.TotalSale) {
        // Brings the invoice of a part-paid sale to the amount that was put on account.
        addPaidOutLine(tender.amount - gSalesHead.TotalSale);
    }
}

}  // namespace

std::string gfvSalesRep_resolve(const std::string& code) {
    const std::string wanted = util::trim(code);
    const auto first =
        gaQBSalesReps.begin() + std::min<std::ptrdiff_t>(1, std::ssize(gaQBSalesReps));
    return std::find(first, gaQBSalesReps.end(), wanted) != gaQBSalesReps.end() ? wanted : "H";
}

std::int64_t gfiTender_lookup(std::int64_t id) {
    gTenderTypes.TenderID = id;
    const bool found =
        gfiDB_Operation(db::tableTenderTypes, db::opEqual, db::keyTenderTypesTenderID) != kNo;
    return found ? id : kNoTender;
}

void mpSaleTenders_convert() {
    gnSaleLineCount = static_cast<int>(gaSaleItems.size()) - 1;
    if (gbLayawayComplete != kNo) {
        return;
    }
    PaymentSearch search;
    for (int slot = exporting::slotCount(gSalesHead.Tenders) - 1; slot >= 0; --slot) {
        const exporting::TenderColumns& columns =
            exporting::kTenderColumns.at(static_cast<std::size_t>(slot));
        const TenderStep tender{gSalesHead.*columns.type, gSalesHead.*columns.amount};
        if (gfiTender_lookup(tender.type) == kNoTender) {
            continue;
        }
        if (gTenderTypes.TenderType != 0) {
            convertMoneyTender(tender, search);
        } else {
            convertOnAccountTender(tender);
        }
    }
}

namespace exporting {

std::string paymentMethodName() {
    const std::string name = gTenderTypes.Description.trimmed();
    if (gTenderTypes.TenderType == kCreditCard) {
        return name + " Credit Card";
    }
    return gTenderTypes.TenderType == kDebitCard ? name + " Debit Card" : name;
}

std::string storeDate(const std::string& stored) {
    return gfsDate_display(stored, gCommon.USEurope.str());
}

}  // namespace exporting
