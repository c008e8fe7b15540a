#include "companyfile/dump.h"

#include "companyfile/references.h"
#include "companyfile/text.h"

#include <algorithm>
#include <cstdio>

namespace companyfile {

namespace {

std::string fullName(Ledger& ledger, std::int64_t id) {
    const Entry* entry = ledger.lists().byId(id);
    return entry == nullptr ? std::string() : entry->fullName;
}

std::string referencedName(Ledger& ledger, const Element& fields, std::string_view path) {
    const Entry* entry = referenced(ledger.lists(), fields, path);
    return entry == nullptr ? std::string() : entry->fullName;
}

std::string jsonText(std::string_view text) {
    std::string out = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            out += '\\';
            out += character;
        } else if (byte < 0x20) {
            constexpr std::string_view kDigits = "0123456789abcdef";
            out += "\\u00";
            out += kDigits[byte >> 4U];
            out += kDigits[byte & 0xFU];
        } else {
            out += character;
        }
    }
    return out + '"';
}

/// Members of one JSON object in the order in which they come.
class JsonObject {
public:
    void raw(std::string_view key, std::string_view value) {
        out_ += out_.size() > 1 ? ", " : "";
        out_.append(jsonText(key)).append(": ").append(value);
    }
    void text(std::string_view key, std::string_view value) { raw(key, jsonText(value)); }
    [[nodiscard]] std::string close() const { return out_ + "}"; }

private:
    std::string out_ = "{";
};

std::string joined(const std::vector<std::string>& values, std::string_view separator) {
    std::string out;
    for (const std::string& value : values) {
        out.append(out.empty() ? "" : separator).append(value);
    }
    return out;
}

/// Moments depend on the clock of the day, ids in references only repeat the name.
bool isShown(const Element& element, bool inReference) {
    return element.name != "TimeCreated" && element.name != "TimeModified" &&
           !(inReference && element.name == "ListID");
}

std::string jsonOf(const Element& element) {
    if (element.children.empty()) {
        return jsonText(element.text);
    }
    JsonObject object;
    for (const Element& child : element.children) {
        if (isShown(child, element.name.ends_with("Ref"))) {
            object.raw(child.name, jsonOf(child));
        }
    }
    return object.close();
}

void addMembers(JsonObject& object, const Element& record) {
    for (const Element& child : record.children) {
        if (isShown(child, false)) {
            object.raw(child.name, jsonOf(child));
        }
    }
}

std::string entryJson(Ledger& ledger, const Entry& entry) {
    JsonObject object;
    if (entry.kind->space == NameSpace::items) {
        object.text("kind", entry.kind->kind);
    }
    addMembers(object, entryRecord(ledger, entry));
    return object.close();
}

std::string linesJson(Ledger& ledger, const Transaction& transaction) {
    std::vector<std::string> lines;
    for (const Line& line : transaction.lines) {
        JsonObject object;
        object.text("kind", line.kind);
        Element record = lineRecord(ledger, *transaction.kind, line);
        record.remove("TxnLineID");
        addMembers(object, record);
        lines.push_back(object.close());
    }
    return "[" + joined(lines, ", ") + "]";
}

std::string postingsJson(Ledger& ledger, const Transaction& transaction) {
    std::vector<std::string> postings;
    for (const Posting& posting : transaction.postings) {
        const bool debit = posting.amount > util::Money();
        JsonObject object;
        object.text("account", fullName(ledger, posting.account));
        object.text("debit", amountText(debit ? posting.amount : util::Money()));
        object.text("credit", amountText(debit ? util::Money() : -posting.amount));
        postings.push_back(object.close());
    }
    return "[" + joined(postings, ", ") + "]";
}

std::string transactionJson(Ledger& ledger, const Transaction& transaction) {
    JsonObject object;
    object.text("type", transaction.kind->type);
    object.raw("txnNumber", std::to_string(transaction.id));
    object.text("TxnDate", transaction.date);
    object.text("RefNumber", transaction.refNumber);
    object.text("name", fullName(ledger, transaction.name));
    Element header = transaction.header;
    showReferences(ledger.lists(), header);
    addMembers(object, header);
    object.raw("lines", linesJson(ledger, transaction));
    object.text("total", amountText(transaction.total));
    object.text("tax", amountText(transaction.tax));
    object.raw("postings", postingsJson(ledger, transaction));
    return object.close();
}

std::string listJson(std::string_view key, const std::vector<std::string>& rows) {
    const std::string name = "  " + jsonText(key) + ": [";
    return rows.empty() ? name + "]" : name + "\n    " + joined(rows, ",\n    ") + "\n  ]";
}

LineSummary summaryOf(Ledger& ledger, const Line& line) {
    LineSummary summary;
    summary.kind = line.kind;
    summary.item = referencedName(ledger, line.fields, "ItemRef");
    summary.account = referencedName(ledger, line.fields, "AccountRef");
    summary.entity = referencedName(ledger, line.fields, "EntityRef");
    const std::string_view description = line.fields.at("Desc");
    summary.description = description.empty() ? line.fields.at("Memo") : description;
    summary.quantity = line.fields.at("Quantity");
    summary.taxCode = referencedName(ledger, line.fields, "SalesTaxCodeRef");
    summary.amount = amountFrom(line.fields.at("Amount"));
    return summary;
}

}  // namespace

TransactionSummary summaryOf(Ledger& ledger, const Transaction& transaction) {
    TransactionSummary summary;
    summary.type = transaction.kind->type;
    summary.txnId = transaction.txnId;
    summary.txnNumber = transaction.id;
    summary.date = transaction.date;
    summary.refNumber = transaction.refNumber;
    summary.name = fullName(ledger, transaction.name);
    summary.memo = transaction.header.at("Memo");
    summary.total = transaction.total;
    summary.tax = transaction.tax;
    for (const Line& line : transaction.lines) {
        summary.lines.push_back(summaryOf(ledger, line));
    }
    for (const Posting& posting : transaction.postings) {
        const bool debit = posting.amount > util::Money();
        summary.postings.push_back(
            {fullName(ledger, posting.account),
             debit ? posting.amount : util::Money(),
             debit ? util::Money() : -posting.amount}
        );
    }
    return summary;
}

std::string dumpOf(Ledger& ledger) {
    std::vector<std::string> lists;
    std::vector<std::string_view> keys;
    for (const ListKind& kind : listKinds()) {
        if (std::find(keys.begin(), keys.end(), kind.dumpKey) == keys.end()) {
            keys.push_back(kind.dumpKey);
        }
    }
    for (const std::string_view key : keys) {
        std::vector<std::string> rows;
        for (const auto& [id, entry] : ledger.lists().all()) {
            if (entry.kind->dumpKey == key) {
                rows.push_back(entryJson(ledger, entry));
            }
        }
        lists.push_back(listJson(key, rows));
    }
    std::vector<std::string> rows;
    for (const std::int64_t id : ledger.transactions().ofType("")) {
        rows.push_back(transactionJson(ledger, ledger.transactions().load(id)));
    }
    lists.push_back(listJson("transactions", rows));
    return "{\n" + joined(lists, ",\n") + "\n}\n";
}

}  // namespace companyfile
