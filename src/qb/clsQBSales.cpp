#include "qb/clsQBSales.h"

#include "core/brv_op.h"
#include "core/run_log.h"
#include "db/nuvDBSM_SalesHead.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "util/conversions.h"

#include <algorithm>
#include <array>

std::vector<QBSaleLine> gaSaleLines;

namespace {

using qb::Form;
using qb::request;
using qb::send;
using qb::When;

constexpr char kUntaxed[] = "Non";

/// Kept: a sale that goes to a named company file bears its tax item's name as tax code; without a
/// file name only a taxed sale does.
std::string receiptTaxCode(const clsQBSales& sale) {
    static_cast<void>(sale);
    const bool named = !util::trim(gsQBFileName).empty();
    return named || gSalesHead.TaxRate1 != 0.0F ? gsQBSaleTaxItem : kUntaxed;
}

std::string creditTaxCode(const clsQBSales& sale) {
    return util::trim(sale.TaxCode) > "0" ? sale.TaxCode : kUntaxed;
}

std::string taxItem(const clsQBSales& sale) {
    static_cast<void>(sale);
    return gsQBSaleTaxItem;
}

/// Both addresses of a sales receipt and of an invoice.
constexpr auto kAddresses = request(
    "",
    send("BillAddress/Addr1", &clsQBSales::BillAddr1),
    send("BillAddress/Addr2", &clsQBSales::BillAddr2),
    send("BillAddress/Addr3", &clsQBSales::BillAddr3),
    send("BillAddress/Addr4", &clsQBSales::BillAddr4),
    send("BillAddress/City", &clsQBSales::BillCity),
    send("BillAddress/State", &clsQBSales::BillState),
    send("BillAddress/PostalCode", &clsQBSales::BillPostalCode),
    send("BillAddress/Country", &clsQBSales::BillCountry),
    send("ShipAddress/Addr1", &clsQBSales::ShipAddr1),
    send("ShipAddress/Addr2", &clsQBSales::ShipAddr2),
    send("ShipAddress/Addr3", &clsQBSales::ShipAddr3),
    send("ShipAddress/Addr4", &clsQBSales::ShipAddr4),
    send("ShipAddress/City", &clsQBSales::ShipCity),
    send("ShipAddress/State", &clsQBSales::ShipState),
    send("ShipAddress/PostalCode", &clsQBSales::ShipPostalCode),
    send("ShipAddress/Country", &clsQBSales::ShipCountry)
);

constexpr auto kReceipt = request(
    "SalesReceiptAdd",
    send("CustomerRef/FullName", &clsQBSales::CustomerName, When::aboveBlank),
    send("TxnDate", &clsQBSales::TxnDate, When::always, Form::date),
    send("RefNumber", &clsQBSales::RefNumber),
    send("IsPending", &clsQBSales::IsPending),
    send("CheckNumber", &clsQBSales::CheckNumber),
    send("PaymentMethodRef/FullName", &clsQBSales::PaymentMethod, When::aboveBlank),
    send("DueDate", &clsQBSales::DueDate, When::aboveBlank, Form::date),
    send("SalesRepRef/FullName", &clsQBSales::SalesRep, When::aboveBlank),
    send("ShipDate", &clsQBSales::ShipDate, When::aboveBlank, Form::date),
    send("ShipMethodRef/FullName", &clsQBSales::ShipMethod, When::aboveBlank),
    send("Memo", &clsQBSales::Memo, When::aboveBlank),
    send("DepositToAccountRef/FullName", &clsQBSales::DepositToAccount, When::aboveBlank),
    send("CustomerSalesTaxCodeRef/FullName", &receiptTaxCode),
    send("ItemSalesTaxRef/FullName", &taxItem)
);

constexpr auto kReceiptLine = request(
    "SalesReceiptLineAdd",
    send("ItemRef/FullName", &QBSaleLine::Item, When::aboveBlank),
    send("Desc", &QBSaleLine::Description, When::aboveBlank),
    send("Quantity", &QBSaleLine::Quantity, When::nonZero),
    send("Amount", &QBSaleLine::Amount),
    send("ServiceDate", &QBSaleLine::ServiceDate, When::aboveBlank, Form::date),
    send("SalesTaxCodeRef/FullName", &QBSaleLine::TaxCode, When::aboveBlank)
);

// The memo goes into both fields on purpose.
constexpr auto kInvoice = request(
    "InvoiceAdd",
    send("CustomerRef/FullName", &clsQBSales::CustomerName),
    send("TxnDate", &clsQBSales::TxnDate, When::always, Form::date),
    send("RefNumber", &clsQBSales::RefNumber),
    send("TermsRef/FullName", &clsQBSales::Terms, When::aboveBlank),
    send("DueDate", &clsQBSales::DueDate, When::aboveBlank, Form::date),
    send("SalesRepRef/FullName", &clsQBSales::SalesRep, When::aboveBlank),
    send("FOB", &clsQBSales::FOB),
    send("ShipDate", &clsQBSales::ShipDate, When::aboveBlank, Form::date),
    send("ShipMethodRef/FullName", &clsQBSales::ShipMethod, When::aboveBlank),
    send("Memo", &clsQBSales::Memo, When::aboveBlank),
    send("CustomerMsgRef/FullName", &clsQBSales::Memo, When::aboveBlank),
    send("CustomerSalesTaxCodeRef/FullName", &clsQBSales::TaxCode),
    send("ItemSalesTaxRef/FullName", &taxItem)
);

constexpr auto kInvoiceLine = request(
    "InvoiceLineAdd",
    send("ItemRef/FullName", &QBSaleLine::Item),
    send("Desc", &QBSaleLine::Description, When::aboveBlank),
    send("Quantity", &QBSaleLine::Quantity, When::nonZero),
    send("Amount", &QBSaleLine::Amount),
    send("ServiceDate", &QBSaleLine::ServiceDate, When::aboveBlank, Form::date),
    send("SalesTaxCodeRef/FullName", &QBSaleLine::TaxCode, When::aboveBlank)
);

constexpr auto kCreditMemo = request(
    "CreditMemoAdd",
    send("CustomerRef/FullName", &clsQBSales::CustomerName),
    send("TxnDate", &clsQBSales::TxnDate, When::always, Form::date),
    send("RefNumber", &clsQBSales::RefNumber),
    send("BillAddress/Addr1", &clsQBSales::BillAddr1),
    send("BillAddress/Addr2", &clsQBSales::BillAddr2),
    send("BillAddress/Addr3", &clsQBSales::BillAddr3),
    send("BillAddress/City", &clsQBSales::BillCity),
    send("BillAddress/State", &clsQBSales::BillState),
    send("BillAddress/PostalCode", &clsQBSales::BillPostalCode),
    send("TermsRef/FullName", &clsQBSales::Terms, When::aboveBlank),
    send("SalesRepRef/FullName", &clsQBSales::SalesRep),
    send("ItemSalesTaxRef/FullName", &taxItem),
    send("Memo", &clsQBSales::Memo, When::aboveBlank),
    send("CustomerMsgRef/FullName", &clsQBSales::Memo, When::aboveBlank),
    send("CustomerSalesTaxCodeRef/FullName", &creditTaxCode)
);

std::string reversedAmount(const QBSaleLine& line) {
    return qb::wireAmount(-line.Amount);
}

constexpr auto kCreditMemoLine = request(
    "CreditMemoLineAdd",
    send("ItemRef/FullName", &QBSaleLine::Item),
    send("Desc", &QBSaleLine::Description, When::aboveBlank),
    send("Quantity", &QBSaleLine::Quantity, When::nonZero),
    send("Amount", &reversedAmount),
    send("ServiceDate", &QBSaleLine::ServiceDate, When::aboveBlank, Form::date),
    send("SalesTaxCodeRef/FullName", &QBSaleLine::TaxCode, When::aboveBlank)
);

/// The sales categories of the daily totals go out even without an amount.
bool goesOnReceipt(const QBSaleLine& line) {
    constexpr std::array kCategories = {"0100", "0200", "0300", "0400", "0500", "0600"};
    return !line.Amount.isZero() ||
           std::any_of(kCategories.begin(), kCategories.end(), [&](const char* code) {
               return line.Item == code;
           });
}

bool hasAmount(const QBSaleLine& line) {
    return !line.Amount.isZero();
}

/// Puts the method's name in front of a status text and logs it.
void logStatus(const char* literal, const std::string& refNumber) {
    if (util::aboveBlank(util::trim(gsQBStatusMessage))) {
        qb::prefixStatus(literal, refNumber);
        gpQBLink_Log_writing(gsQBStatusMessage);
    }
}

/// A sale that was not sent at all: the log says so, whoever answers the boxes.
void tellUnsent(
    const char* literal,
    const std::string& refNumber,
    std::int32_t number,
    const std::string& description
) {
    qb::tellError(literal, refNumber, number, description);
    gpQBLink_Log_writing(gsQBStatusMessage);
}

/// Sends a sale whose filling ends, with a box, at the first value that cannot be converted.
void post(
    const char* name, const char* literal, const std::string& refNumber, const qb::Filler& filler
) {
    qb::onLanguageError(
        [&] {
            if (gfbRequestMsgSet_reset() != kNo) {
                qb::sendRequest(name, filler);
                logStatus(literal, refNumber);
            }
        },
        [&](std::int32_t number, const std::string& description) {
            tellUnsent(literal, refNumber, number, description);
            core::showMessage(gsQBStatusMessage);
        }
    );
}

/// Searches one kind of transaction for the ticket in the record.
LegacyBool searchTicket(
    const qb::Search& search, const char* literal, const std::string& key, qb::ReturnList& found
) {
    return qb::handled(literal, key, [&] {
        return qb::runSearch(search, gSalesHead.Invoice.trimmed(), literal, key, found);
    });
}

}  // namespace

LegacyBool clsQBSales::CreditMemoSearchRq() {
    constexpr auto kSearch =
        qb::refNumberSearch("CreditMemoQuery", platform::ResponseType::creditMemoQuery);
    return searchTicket(kSearch, "Credit Memo search ", gSalesHead.Invoice.trimmed(), creditMemos_);
}

LegacyBool clsQBSales::SalesReceiptSearchRq() {
    constexpr auto kSearch =
        qb::refNumberSearch("SalesReceiptQuery", platform::ResponseType::salesReceiptQuery);
    return searchTicket(kSearch, "SalesReceipt search ", RefNumber, salesReceipts_);
}

LegacyBool clsQBSales::InvoiceSearchRq() {
    constexpr auto kSearch =
        qb::refNumberSearch("InvoiceQuery", platform::ResponseType::invoiceQuery);
    return searchTicket(
        kSearch, "Incoice search ", RefNumber, invoices_
    );  // Kept: as logs have it.
}

void clsQBSales::SalesReceiptAddRq() {
    post(kReceipt.name, "SalesAddNewReq ", RefNumber, [&](platform::QBElement& body) {
        qb::fill(body, *this, kReceipt);
        qb::fill(body, *this, kAddresses);
        qb::appendLines(body, kReceiptLine, gaSaleLines, goesOnReceipt);
    });
}

void clsQBSales::InvoiceAddRq() {
    constexpr char kLiteral[] = "InvoiceAddRq ";
    const std::string mark = util::trim(TaxCode);
    TaxCode = TaxCode.empty() || mark == "A" || mark == "Tax" ? "Tax" : kUntaxed;
    // Kept: a value that cannot be converted is left out, and the invoice goes out all the same.
    const auto skipping = [&](const auto& step) {
        qb::onLanguageError(step, [&](std::int32_t number, const std::string& description) {
            qb::tellError(kLiteral, RefNumber, number, description);
        });
    };
    qb::onLanguageError(
        [&] {
            if (gfbRequestMsgSet_reset() == kNo) {
                return;
            }
            platform::QBElement& body = requestMsgSet->append(kInvoice.name);
            qb::fill(body, *this, kInvoice, skipping);
            qb::fill(body, *this, kAddresses, skipping);
            qb::appendLines(body, kInvoiceLine, gaSaleLines, hasAmount, skipping);
            if (gfbRequests_do() != kNo && gfbResponse_get() == kNo) {
                gpQBLink_Log_writing(gsQBStatusMessage);
            }
            logStatus(kLiteral, RefNumber);
        },
        [&](std::int32_t number, const std::string& description) {
            tellUnsent(kLiteral, RefNumber, number, description);
        }
    );
}

void clsQBSales::CreditMemoAddRq() {
    post(kCreditMemo.name, "CreditMemoAddRq ", RefNumber, [&](platform::QBElement& body) {
        qb::fill(body, *this, kCreditMemo);
        qb::appendLines(body, kCreditMemoLine, gaSaleLines, qb::everyLine<QBSaleLine>);
    });
}
