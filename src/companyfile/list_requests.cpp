#include "companyfile/accounts.h"
#include "companyfile/answer_shapes.h"
#include "companyfile/booking.h"
#include "companyfile/ledger.h"
#include "companyfile/references.h"
#include "companyfile/text.h"
#include "companyfile/values.h"

#include <algorithm>
#include <array>

namespace companyfile {

namespace {

/// Elements of an add that are no fields of the entry: they name it or start its figures.
constexpr std::array<std::string_view, 9> kNotKept = {
    "Name",
    "Initial",
    "IsActive",
    "ParentRef",
    "OpenBalance",
    "OpenBalanceDate",
    "QuantityOnHand",
    "TotalValue",
    "InventoryDate",
};

/// Elements that a modify may change and never clear.
constexpr std::array<std::string_view, 5> kNeverCleared = {
    "Name", "IncomeAccountRef", "COGSAccountRef", "AssetAccountRef", "IsActive"};

template <std::size_t size>
bool isOneOf(const std::array<std::string_view, size>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string entryName(const ListKind& kind, const Element& fields) {
    if (kind.kind != "Employee") {
        return std::string(trimmed(fields.at(kind.nameField)));
    }
    // An employee has no name element: the name is put together.
    std::string name;
    for (const char* part : {"FirstName", "MiddleName", "LastName"}) {
        const std::string_view text = trimmed(fields.at(part));
        name.append(name.empty() || text.empty() ? "" : " ").append(text);
    }
    return name;
}

void prepareAccount(Ledger& ledger, Entry& account) {
    const std::string_view number = account.fields.at("AccountNumber");
    for (const Entry* other : ledger.lists().startingWith(NameSpace::accounts, "")) {
        if (!number.empty() && other->fields.at("AccountNumber") == number) {
            throw cannotSave(
                "Account list, element " + quoted(account.name),
                "The account number is already in use."
            );
        }
    }
    account.special = specialOf(ledger, account);
}

/// An empty reference passes the schema as one that was not sent.
void prepareStockItem(Ledger& ledger, Entry& item) {
    for (const char* account : {"IncomeAccountRef", "COGSAccountRef", "AssetAccountRef"}) {
        if (referenced(ledger.lists(), item.fields, account) == nullptr) {
            throw StatusError(3270, "A posting account is missing: " + quoted(account) + ".");
        }
    }
}

std::string_view openingDate(const Element& sent, std::string_view field) {
    return sent.at(field);
}

void openAccount(Ledger& ledger, Entry& account, const Element& sent) {
    const util::Money amount = amountFrom(sent.at("OpenBalance"));
    const std::string_view type = accountType(account);
    if (type != "AccountsReceivable" && type != "AccountsPayable") {
        bookOpening(
            ledger,
            openingDate(sent, "OpenBalanceDate"),
            {account.id, isDebitType(type) ? amount : -amount, 0},
            specialAccount(ledger, "OpeningBalanceEquity")
        );
    }
}

void openCustomer(Ledger& ledger, Entry& customer, const Element& sent) {
    const std::int64_t receivable = specialAccount(ledger, "AccountsReceivable").id;
    bookOpening(
        ledger,
        openingDate(sent, "OpenBalanceDate"),
        {receivable, amountFrom(sent.at("OpenBalance")), customer.id},
        specialAccount(ledger, "UncategorizedIncome")
    );
}

void openVendor(Ledger& ledger, Entry& vendor, const Element& sent) {
    const std::int64_t payable = specialAccount(ledger, "AccountsPayable").id;
    bookOpening(
        ledger,
        openingDate(sent, "OpenBalanceDate"),
        {payable, -amountFrom(sent.at("OpenBalance")), vendor.id},
        specialAccount(ledger, "UncategorizedExpenses")
    );
}

void openItem(Ledger& ledger, Entry& item, const Element& sent) {
    bookStock(ledger, item, sent);
}

/// What the making of an entry takes beyond writing it down.
struct Making {
    std::string_view kind;
    void (*prepare)(Ledger&, Entry&);
    std::string_view figure;  ///< `open` is called when this was sent and is not zero
    void (*open)(Ledger&, Entry&, const Element&);
};
constexpr Making kMakings[] = {
    {"Account", prepareAccount, "OpenBalance", openAccount},
    {"Customer", nullptr, "OpenBalance", openCustomer},
    {"Vendor", nullptr, "OpenBalance", openVendor},
    {"ItemInventory", prepareStockItem, "QuantityOnHand", openItem},
};

const Making* makingOf(std::string_view kind) {
    const auto* found =
        std::find_if(std::begin(kMakings), std::end(kMakings), [&](const auto& row) {
            return row.kind == kind;
        });
    return found == std::end(kMakings) ? nullptr : found;
}

/// Brings the children into the order of the schema.
void sortAsSchema(Element& element, const std::vector<util::SchemaField>& schema) {
    const auto place = [&](const Element& child) {
        return util::schemaField(schema, child.name) - schema.data();
    };
    std::stable_sort(
        element.children.begin(),
        element.children.end(),
        [&](const Element& left, const Element& right) { return place(left) < place(right); }
    );
}

/// Takes what a modify sent over into the fields of an entry: empty clears, absent leaves alone.
void mergeFields(Element& fields, Element& sent, const std::vector<util::SchemaField>& schema) {
    for (Element& child : sent.children) {
        const util::SchemaField* field = util::schemaField(schema, child.name);
        const bool group =
            field != nullptr && field->type == "AGGREGATE" && !child.name.ends_with("Ref");
        if (group) {
            Element merged{child.name, {}, {}};
            if (const Element* kept = fields.find(child.name)) {
                merged = *kept;
            }
            mergeFields(merged, child, field->fields);
            sortAsSchema(merged, field->fields);
            child.children = std::move(merged.children);
        }
        fields.remove(child.name);
        if (!child.text.empty() || !child.children.empty()) {
            fields.children.push_back(std::move(child));
        }
    }
}

/// The entry that a modify or delete means. @throws StatusError 3000 or 3120.
Entry& entryWithId(Ledger& ledger, const ListKind* kind, std::string_view listId) {
    requireIdForm(listId, "ListID");
    Entry* entry = ledger.lists().byListId(listId);
    if (entry == nullptr || entry->kind != kind) {
        throw unknownId(listId);
    }
    return *entry;
}

void requireNotCleared(const Element& fields) {
    for (const Element& child : fields.children) {
        if (isOneOf(kNeverCleared, child.name) && child.text.empty() && child.children.empty()) {
            throw StatusError(
                3190, "The element " + quoted(child.name) + " cannot be cleared in this request."
            );
        }
    }
}

/// Takes name, activity and parent out of the fields of a modify.
void takeIdentity(Ledger& ledger, Entry& entry, Element& sent) {
    if (sent.has(entry.kind->nameField)) {
        entry.name = trimmed(sent.at(entry.kind->nameField));
    }
    if (sent.has("IsActive")) {
        entry.active = sent.at("IsActive") == "true";
    }
    if (sent.has("ParentRef")) {
        const Entry* parent = referenced(ledger.lists(), sent, "ParentRef");
        for (const Entry* above = parent; above != nullptr;
             above = ledger.lists().byId(above->parent)) {
            if (above->id == entry.id) {
                throw StatusError(
                    3130,
                    "There is an invalid reference to the parent " + quoted(parent->fullName) +
                        " in the " + std::string(entry.kind->kind) + " list."
                );
            }
        }
        entry.parent = parent == nullptr ? 0 : parent->id;
    }
    std::erase_if(sent.children, [](const Element& child) {
        return isOneOf(kNotKept, child.name) || child.name == "ListID" ||
               child.name == "EditSequence";
    });
}

StatusError cannotDelete(std::string_view id, std::string_view reason) {
    return {
        3160,
        "Cannot delete the object specified by the id = " + quoted(id) + "." + programSays(reason)};
}

bool isUsed(Ledger& ledger, const Entry& entry) {
    if (!entry.special.empty() || ledger.transactions().refersTo(entry.id, entry.listId)) {
        return true;
    }
    const auto& entries = ledger.lists().all();
    return std::any_of(entries.begin(), entries.end(), [&](const auto& each) {
        return each.second.parent == entry.id ||
               fieldsXml(each.second.fields).find(entry.listId) != std::string::npos;
    });
}

Element figure(const char* name, std::string text) {
    return {name, std::move(text), {}};
}

void addFigures(const Entry& entry, Element& record) {
    const std::string_view kind = entry.kind->kind;
    auto& children = record.children;
    if (kind == "Account") {
        const bool debit = isDebitType(accountType(entry));
        const std::string balance = amountText(debit ? entry.balance : -entry.balance);
        children.push_back(figure("Balance", balance));
        children.push_back(figure("TotalBalance", balance));
        if (!entry.special.empty()) {
            children.push_back(figure("SpecialAccountType", entry.special));
        }
    } else if (kind == "Customer" || kind == "Vendor") {
        children.push_back(figure("Balance", amountText(entry.balance)));
        children.push_back(figure("TotalBalance", amountText(entry.balance)));
    } else if (kind == "ItemInventory") {
        children.push_back(figure("QuantityOnHand", entry.quantity.text()));
        children.push_back(figure("AverageCost", entry.averageCost.text(2)));
        children.push_back(figure("QuantityOnOrder", "0"));
        children.push_back(figure("QuantityOnSalesOrder", "0"));
    }
}

}  // namespace

void requireIdForm(std::string_view id, std::string_view field) {
    if (!isIdForm(id)) {
        throw StatusError(
            3000,
            "The given object ID " + quoted(id) + " in the field " + quoted(field) + " is invalid."
        );
    }
}

Entry& makeEntry(Ledger& ledger, const ListKind& kind, Element fields) {
    Entry entry;
    entry.kind = &kind;
    entry.name = entryName(kind, fields);
    if (entry.name.empty()) {
        throw missingElement(kind.nameField);
    }
    checkAddresses(fields);
    resolveReferences(ledger.lists(), fields, kind.kind);
    entry.active = fields.at("IsActive") != "false";
    if (const Entry* parent = referenced(ledger.lists(), fields, "ParentRef")) {
        entry.parent = parent->id;
    }
    entry.fields.children = fields.children;
    std::erase_if(entry.fields.children, [](const Element& child) {
        return isOneOf(kNotKept, child.name);
    });
    const Making* making = makingOf(kind.kind);
    if (making != nullptr && making->prepare != nullptr) {
        making->prepare(ledger, entry);
    }
    Entry& kept = ledger.lists().add(std::move(entry), ledger.now());
    if (making != nullptr && !Decimal::fromText(fields.at(making->figure)).isZero()) {
        making->open(ledger, kept, fields);
    }
    return kept;
}

Answer addEntry(Ledger& ledger, const ListKind& kind, Request& request) {
    Answer answer;
    answer.status = checkValues(request, false);
    const Entry& entry = makeEntry(ledger, kind, std::move(request.fields));
    answer.records = {entryRecord(ledger, entry)};
    return answer;
}

Answer modifyEntry(Ledger& ledger, const ListKind& kind, Request& request) {
    Answer answer;
    answer.status = checkValues(request, true);
    Element& sent = request.fields;
    Entry changed = entryWithId(ledger, &kind, sent.at("ListID"));
    const std::string_view editSequence = sent.at("EditSequence");
    if (editSequence != std::to_string(changed.editSequence)) {
        throw StatusError(
            3200, "The provided edit sequence " + quoted(editSequence) + " is out-of-date."
        );
    }
    requireNotCleared(sent);
    resolveReferences(ledger.lists(), sent, kind.kind);
    takeIdentity(ledger, changed, sent);
    mergeFields(changed.fields, sent, request.schema->fields);
    checkAddresses(changed.fields);
    const Entry& entry = ledger.lists().change(std::move(changed), ledger.now());
    answer.records = {entryRecord(ledger, entry)};
    return answer;
}

Answer deleteEntry(Ledger& ledger, Request& request) {
    checkValues(request, false);
    const std::string type(request.fields.at("ListDelType"));
    const std::string listId(request.fields.at("ListID"));
    Entry& entry = entryWithId(ledger, listKind(type), listId);
    if (isUsed(ledger, entry)) {
        throw cannotDelete(listId, "This list element is in use and cannot be deleted.");
    }
    const std::string fullName = entry.fullName;
    ledger.lists().remove(entry);
    return {
        {},
        {figure("ListDelType", type),
         figure("ListID", listId),
         figure("TimeDeleted", momentText(ledger.now())),
         figure("FullName", fullName)},
        false};
}

Element entryRecord(Ledger& ledger, const Entry& entry) {
    Element record{std::string(entry.kind->kind) + "Ret", {}, {}};
    const auto add = [&](std::string_view name, std::string text) {
        record.children.push_back({std::string(name), std::move(text), {}});
    };
    add("ListID", entry.listId);
    add("TimeCreated", momentText(entry.created));
    add("TimeModified", momentText(entry.modified));
    add("EditSequence", std::to_string(entry.editSequence));
    add(entry.kind->nameField, entry.name);
    add("IsActive", entry.active ? "true" : "false");
    if (entry.kind->hasFullName) {
        add("FullName", entry.fullName);
        add("Sublevel", std::to_string(entry.sublevel));
    }
    if (const Entry* parent = ledger.lists().byId(entry.parent)) {
        record.children.push_back({"ParentRef", {}, {figure("ListID", parent->listId)}});
    }
    addFigures(entry, record);
    record.children.insert(
        record.children.end(), entry.fields.children.begin(), entry.fields.children.end()
    );
    arrange(record);
    showReferences(ledger.lists(), record);
    return record;
}

}  // namespace companyfile
