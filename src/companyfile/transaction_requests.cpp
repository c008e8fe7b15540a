#include "companyfile/answer_shapes.h"
#include "companyfile/booking.h"
#include "companyfile/ledger.h"
#include "companyfile/references.h"
#include "companyfile/text.h"
#include "companyfile/values.h"

#include <algorithm>

namespace companyfile {

namespace {

bool isLine(std::string_view name) {
    return name.ends_with("LineAdd") || name.ends_with("LineGroupAdd") ||
           name.ends_with("GroupLineAdd") || name.starts_with("Journal");
}

void (*bookingOf(Family family))(const Entering&) {
    switch (family) {
    case Family::sale:
        return bookSale;
    case Family::journal:
        return bookJournal;
    case Family::payment:
        return bookPayment;
    case Family::purchase:
    case Family::order:
        return bookPurchase;
    case Family::internal:
        break;
    }
    throw StatusError(1030, "This request is not supported by this implementation.");
}

/// Parts the fields of an add into header and lines, all references resolved.
void readFields(Ledger& ledger, Element& fields, Transaction& transaction) {
    const std::string type(transaction.kind->type);
    for (Element& child : fields.children) {
        if (!isLine(child.name)) {
            transaction.header.children.push_back(std::move(child));
            continue;
        }
        resolveReferences(ledger.lists(), child, type + " line");
        Line line;
        std::string_view kind = child.name;
        removeSuffix(kind, "Add");
        line.kind = kind;
        line.fields.children = std::move(child.children);
        line.fields.remove("TxnLineID");
        transaction.lines.push_back(std::move(line));
    }
    resolveReferences(ledger.lists(), transaction.header, type);
}

/// Takes date, number and name out of the header, which keeps the other fields.
void takeIdentity(Ledger& ledger, Transaction& transaction) {
    Element& header = transaction.header;
    const TransactionKind& kind = *transaction.kind;
    transaction.date = header.at("TxnDate");
    if (transaction.date.empty()) {
        transaction.date = ledger.today();
    }
    transaction.refNumber = header.at("RefNumber");
    if (transaction.refNumber.empty()) {
        transaction.refNumber = ledger.transactions().nextReference(kind.type);
    }
    if (const Entry* name = referenced(ledger.lists(), header, kind.nameField)) {
        transaction.name = name->id;
    }
    header.remove("TxnDate");
    header.remove("RefNumber");
}

Element applicationRecord(const Transaction& target, const char* name, util::Money amount) {
    Element record{name, {}, {}};
    record.set("TxnID", target.txnId);
    record.set("TxnType", target.kind->type);
    record.set("TxnDate", target.date);
    record.set("RefNumber", target.refNumber);
    record.set("Amount", amountText(amount));
    arrange(record);
    return record;
}

void addFigures(Ledger& ledger, const Transaction& transaction, Element& record) {
    const auto add = [&](const char* name, std::string text) {
        record.children.push_back({name, std::move(text), {}});
    };
    const bool invoice = transaction.kind->type == "Invoice";
    const util::Money applied =
        invoice ? ledger.transactions().appliedTo(transaction.id) : util::Money();
    const util::Money rest = transaction.total - applied;
    util::Money unused = transaction.total;
    for (const Application& share : transaction.applied) {
        unused -= share.amount;
    }
    add("Subtotal", amountText(transaction.total - transaction.tax));
    add("SalesTaxTotal", amountText(transaction.tax));
    for (const char* name : {"TotalAmount", "CreditAmount", "CreditRemaining", "OpenAmount"}) {
        add(name, amountText(transaction.total));
    }
    add("AppliedAmount", amountText(-applied));
    add("BalanceRemaining", amountText(rest));
    add("IsPaid", rest.isZero() ? "true" : "false");
    add("UnusedPayment", amountText(unused));
    add("UnusedCredits", "0.00");
}

void addApplications(Ledger& ledger, const Transaction& transaction, Element& record) {
    for (const Application& share : transaction.applied) {
        const Transaction target = ledger.transactions().load(share.target);
        Element applied = applicationRecord(target, "AppliedToTxnRet", share.amount);
        applied.set(
            "BalanceRemaining",
            amountText(target.total - ledger.transactions().appliedTo(target.id))
        );
        arrange(applied);
        record.children.push_back(std::move(applied));
    }
}

void addLinks(Ledger& ledger, const Transaction& transaction, Element& record) {
    for (const auto& [payment, amount] : ledger.transactions().paymentsOf(transaction.id)) {
        Element link = applicationRecord(ledger.transactions().load(payment), "LinkedTxn", -amount);
        link.set("LinkType", "AMTTYPE");  // Kept: the word that stands for a link by amount.
        arrange(link);
        record.children.push_back(std::move(link));
    }
}

}  // namespace

Answer addTransaction(Ledger& ledger, const TransactionKind& kind, Request& request) {
    Answer answer;
    answer.status = checkValues(request, false);
    checkAddresses(request.fields);
    Transaction transaction;
    transaction.kind = &kind;
    const auto book = bookingOf(kind.family);
    readFields(ledger, request.fields, transaction);
    takeIdentity(ledger, transaction);
    book({ledger, transaction, answer.status});
    enter(ledger, transaction);
    answer.records = {transactionRecord(ledger, transaction, true, true)};
    return answer;
}

Answer deleteTransaction(Ledger& ledger, Request& request) {
    checkValues(request, false);
    const std::string type(request.fields.at("TxnDelType"));
    const std::string txnId(request.fields.at("TxnID"));
    requireIdForm(txnId, "TxnID");
    const std::int64_t id = ledger.transactions().withTxnId(type, txnId);
    if (id == 0) {
        throw unknownId(txnId);
    }
    if (!ledger.transactions().appliedTo(id).isZero()) {
        throw StatusError(
            3160,
            "Cannot delete the object specified by the id = " + quoted(txnId) + "." +
                programSays("A payment has been applied to this transaction.")
        );
    }
    const Transaction transaction = ledger.transactions().load(id);
    takeBack(ledger, transaction);
    Answer answer;
    answer.records = {
        {"TxnDelType", type, {}},
        {"TxnID", txnId, {}},
        {"TimeDeleted", momentText(ledger.now()), {}},
        {"RefNumber", transaction.refNumber, {}}};
    return answer;
}

Element lineRecord(Ledger& ledger, const TransactionKind& kind, const Line& line) {
    const bool journal = kind.family == Family::journal;
    Element record{line.kind + (journal ? "" : "Ret"), {}, {}};
    record.children.push_back({"TxnLineID", line.lineId, {}});
    record.children.insert(
        record.children.end(), line.fields.children.begin(), line.fields.children.end()
    );
    arrange(record);
    showReferences(ledger.lists(), record);
    return record;
}

Element
transactionRecord(Ledger& ledger, const Transaction& transaction, bool withLines, bool withLinks) {
    Element record{std::string(transaction.kind->type) + "Ret", {}, {}};
    record.set("TxnID", transaction.txnId);
    record.set("TimeCreated", momentText(transaction.created));
    record.set("TimeModified", momentText(transaction.modified));
    record.set("EditSequence", std::to_string(transaction.editSequence));
    record.set("TxnNumber", std::to_string(transaction.id));
    record.set("TxnDate", transaction.date);
    record.set("RefNumber", transaction.refNumber);
    addFigures(ledger, transaction, record);
    record.children.insert(
        record.children.end(),
        transaction.header.children.begin(),
        transaction.header.children.end()
    );
    if (withLinks) {
        addLinks(ledger, transaction, record);
    }
    addApplications(ledger, transaction, record);
    arrange(record);
    showReferences(ledger.lists(), record);
    if (withLines) {
        for (const Line& line : transaction.lines) {
            record.children.push_back(lineRecord(ledger, *transaction.kind, line));
        }
    }
    return record;
}

}  // namespace companyfile
