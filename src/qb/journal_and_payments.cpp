#include "qb/journal_and_payments.h"

#include "core/brv_op.h"
#include "core/run_log.h"
#include "db/nuvDBSM_SalesHead.h"
#include "qb/request_cycle.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "ui/form.h"
#include "ui/status.h"
#include "util/conversions.h"

namespace {

using qb::fixed;
using qb::request;
using qb::send;
using qb::When;

constexpr char kSummaryWindow[] = "FrmSummaryExport";

/// The window whose label tells how far a journal is: the one that runs the export.
const char* progressWindow() {
    return ui::findForm(kSummaryWindow) != nullptr ? kSummaryWindow : "frmSetup";
}

/// A tender type or a sales code on its way into a list.
struct ListEntry {
    std::string name;
    std::string initial;
    LegacyBool isActive = kNo;
};

constexpr auto kPaymentMethod = request(
    "PaymentMethodAdd", send("Name", &ListEntry::name), send("IsActive", &ListEntry::isActive)
);

constexpr auto kSalesRep = request(
    "SalesRepAdd",
    send("Initial", &ListEntry::initial),
    send("IsActive", &ListEntry::isActive),
    send("SalesRepEntityRef/FullName", &ListEntry::name)
);

/// What a journal entry has above its lines.
struct JournalHeader {
    std::string txnDate;
    std::string refNumber;
    std::string memo;
};

constexpr auto kJournal = request(
    "JournalEntryAdd",
    send("TxnDate", &JournalHeader::txnDate, When::always, qb::Form::date),
    send("RefNumber", &JournalHeader::refNumber),
    send("Memo", &JournalHeader::memo, When::trimmed)
);

std::string lineAmount(const QBJournalLine& line) {
    return qb::wireAmount(line.Amount.abs());
}

/// Both kinds of journal line have these fields.
constexpr auto kJournalLine = request(
    "",
    send("TxnLineID", &QBJournalLine::LineNumber),
    send("AccountRef/FullName", &QBJournalLine::Account),
    send("Amount", &lineAmount),
    send("EntityRef/FullName", &QBJournalLine::Entity, When::trimmed),
    send("Memo", &QBJournalLine::Memo, When::trimmed)
);

std::string depositAccount(const QBPaymentRecord& payment) {
    return util::trim(payment.DepositToAccount);
}

constexpr auto kPayment = request(
    "ReceivePaymentAdd",
    send("CustomerRef/FullName", &QBPaymentRecord::CustomerName),
    send("TxnDate", &QBPaymentRecord::TxnDate, When::always, qb::Form::date),
    send("RefNumber", &QBPaymentRecord::RefNumber, When::aboveBlank),
    send("TotalAmount", &QBPaymentRecord::TotalAmount),
    send("PaymentMethodRef/FullName", &QBPaymentRecord::PaymentMethod, When::aboveBlank),
    send("Memo", &QBPaymentRecord::Memo, When::aboveBlank),
    send("DepositToAccountRef/FullName", &depositAccount, When::aboveBlank),
    fixed<QBPaymentRecord>("IsAutoApply", "false")
);

/// Makes an error the status, with its number in the text.
void tellNumbered(
    const char* literal, const std::string& key, std::int32_t number, const std::string& description
) {
    gsQBStatusMessage = literal + key + " " + std::to_string(number) + " " + description;
}

/// Runs a posting; an error is told with its number.
template <class Body>
void posted(const char* literal, const std::string& key, const Body& body) {
    qb::onLanguageError(body, [&](std::int32_t number, const std::string& description) {
        tellNumbered(literal, key, number, description);
    });
}

/// The cycle of an add; the status text is told under `literal` and `key`.
/// @return true when there is something to tell.
template <class Record, std::size_t Count>
bool addRecord(
    const qb::Request<Record, Count>& table,
    const Record& record,
    const char* literal,
    const std::string& key
) {
    posted(literal, key, [&] {
        if (gfbRequestMsgSet_reset() != kNo) {
            qb::sendRequest(table.name, [&](platform::QBElement& body) {
                qb::fill(body, record, table);
            });
            qb::prefixStatus(literal, key);
        }
    });
    return !util::trim(gsQBStatusMessage).empty();
}

void appendJournalLines(platform::QBElement& body, const std::vector<QBJournalLine>& lines) {
    for (std::size_t index = 1; index < lines.size(); ++index) {
        const QBJournalLine& line = lines[index];
        ui::showStatus(progressWindow(), "Exporting Journal set type " + std::to_string(line.Side));
        if (line.Side == kDebitSide || line.Side == kCreditSide) {
            const char* element =
                line.Side == kDebitSide ? "JournalDebitLine" : "JournalCreditLine";
            QBJournalLine numbered = line;
            numbered.LineNumber = std::to_string(index);
            qb::fill(body.append(element), numbered, kJournalLine);
        }
    }
}

}  // namespace

void gpTenderType_add(const std::string& name, LegacyBool isActive) {
    addRecord(kPaymentMethod, ListEntry{name, "", isActive}, "gpTenderType_add ", name);
}

void gpSalesCode_add(
    const std::string& entityName, const std::string& initial, LegacyBool isActive
) {
    const ListEntry entry{entityName, initial, isActive};
    if (addRecord(kSalesRep, entry, "gpSalesCode_add ", initial)) {
        core::showMessage(gsQBStatusMessage);
    }
}

void gpJournalEntry_add(
    const std::vector<QBJournalLine>& lines,
    const std::string& txnDate,
    const std::string& refNumber,
    const std::string& memo
) {
    constexpr char kLiteral[] = "gpJournalEntry_add ";
    posted(kLiteral, refNumber, [&] {
        qb::sendRequest(kJournal.name, [&](platform::QBElement& body) {
            qb::fill(body, JournalHeader{txnDate, refNumber, memo}, kJournal);
            ui::showStatus(progressWindow(), "Journal COGS...memo set");
            appendJournalLines(body, lines);
        });
        qb::prefixStatus(kLiteral, refNumber);
    });
}

LegacyBool gfbReceivePayment_search() {
    constexpr char kLiteral[] = "ReceivePayment search ";
    constexpr auto kSearch =
        qb::refNumberSearch("ReceivePaymentQuery", platform::ResponseType::receivePaymentQuery);
    const std::string ticket = gSalesHead.Invoice.trimmed();
    LegacyBool result = kNo;
    qb::onLanguageError(
        [&] {
            qb::ReturnList found;
            result = legacyBool(qb::runSearch(kSearch, ticket, kLiteral, ticket, found));
        },
        [&](std::int32_t number, const std::string& description) {
            gnQBErrorNumber = number;
            tellNumbered(kLiteral, ticket, number, description);
        }
    );
    return result;
}

void gpReceivePayment_add(const QBPaymentRecord& payment) {
    if (addRecord(kPayment, payment, "ReceivePaymentAddRq ", payment.RefNumber)) {
        gpQBLink_Log_writing(gsQBStatusMessage);
    }
}
