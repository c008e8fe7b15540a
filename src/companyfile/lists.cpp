#include "companyfile/lists.h"

#include "companyfile/status.h"
#include "companyfile/text.h"

#include <algorithm>

namespace companyfile {

namespace {

/// Levels below the first that a full name shows.
constexpr int kDeepest = 20;

std::string nameKey(NameSpace space, std::string_view foldedName) {
    std::string key(1, static_cast<char>('A' + static_cast<int>(space)));
    return key.append(foldedName);
}

}  // namespace

const std::vector<ListKind>& listKinds() {
    static const std::vector<ListKind> kKinds = {
        {"Account", NameSpace::accounts, "Name", true, "accounts"},
        {"Customer", NameSpace::names, "Name", true, "customers"},
        {"Vendor", NameSpace::names, "Name", false, "vendors"},
        {"OtherName", NameSpace::names, "Name", false, "otherNames"},
        {"Employee", NameSpace::names, "Name", false, "employees"},
        {"ItemInventory", NameSpace::items, "Name", true, "items"},
        {"ItemNonInventory", NameSpace::items, "Name", true, "items"},
        {"ItemService", NameSpace::items, "Name", true, "items"},
        {"ItemOtherCharge", NameSpace::items, "Name", true, "items"},
        {"ItemDiscount", NameSpace::items, "Name", true, "items"},
        {"ItemPayment", NameSpace::items, "Name", false, "items"},
        {"ItemSalesTax", NameSpace::items, "Name", false, "items"},
        {"SalesTaxCode", NameSpace::taxCodes, "Name", false, "taxCodes"},
        {"StandardTerms", NameSpace::terms, "Name", false, "terms"},
        {"PaymentMethod", NameSpace::paymentMethods, "Name", false, "paymentMethods"},
        {"SalesRep", NameSpace::salesReps, "Initial", false, "salesReps"},
        {"JobType", NameSpace::jobTypes, "Name", true, "jobTypes"},
        {"ShipMethod", NameSpace::shipMethods, "Name", false, "shipMethods"},
        {"CustomerMsg", NameSpace::customerMessages, "Name", false, "customerMessages"},
    };
    return kKinds;
}

const ListKind* listKind(std::string_view kind) {
    const auto& kinds = listKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(), [&](const ListKind& each) {
        return each.kind == kind;
    });
    return found == kinds.end() ? nullptr : &*found;
}

Lists::Lists(Database& database)
    : database_(database),
      insert_(database.prepare("INSERT INTO entry VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"
      )),
      update_(database.prepare(
          "UPDATE entry SET name = ?, parent = ?, active = ?, modified = ?, edit = ?, "
          "fields = ? WHERE id = ?"
      )),
      figures_(database.prepare(
          "UPDATE entry SET balance = ?, quantity = ?, average_cost = ? WHERE id = ?"
      )),
      delete_(database.prepare("DELETE FROM entry WHERE id = ?")),
      number_(database.prepare(
          "UPDATE meta SET value = value + 1 WHERE key = 'entries' RETURNING value"
      )) {}

void Lists::load() {
    entries_.clear();
    byListId_.clear();
    byName_.clear();
    bySpecial_.clear();
    Statement rows = database_.prepare("SELECT * FROM entry ORDER BY id");
    while (rows.step()) {
        Entry entry;
        entry.id = rows.integer(0);
        entry.kind = listKind(rows.text(1));
        entry.listId = rows.text(2);
        entry.active = rows.integer(5) != 0;
        entry.created = rows.integer(6);
        entry.modified = rows.integer(7);
        entry.editSequence = rows.integer(8);
        entry.balance = fromCents(rows.integer(9));
        entry.quantity = {rows.integer(10)};
        entry.averageCost = {rows.integer(11)};
        entry.special = rows.text(12);
        entry.fields = fieldsFrom(rows.text(13));
        entry.name = rows.text(3);
        entry.parent = rows.integer(4);
        if (entry.kind != nullptr) {
            entries_.emplace(entry.id, std::move(entry));
        }
    }
    // A parent may be younger than its child, so names are put together when all are known.
    for (auto& [id, entry] : entries_) {
        requireEndOfParents(entry);
        nameFully(entry);
        index(entry);
    }
}

Entry* Lists::byListId(std::string_view listId) {
    const auto found = byListId_.find(std::string(listId));
    return found == byListId_.end() ? nullptr : found->second;
}

Entry* Lists::byId(std::int64_t id) {
    const auto found = entries_.find(id);
    return found == entries_.end() ? nullptr : &found->second;
}

Entry* Lists::byName(NameSpace space, std::string_view fullName) {
    const auto found = byName_.find(nameKey(space, folded(trimmed(fullName))));
    return found == byName_.end() ? nullptr : found->second;
}

Entry* Lists::specialAccount(std::string_view special) {
    const auto found = bySpecial_.find(special);
    return found == bySpecial_.end() ? nullptr : found->second;
}

std::vector<Entry*> Lists::startingWith(NameSpace space, std::string_view prefix) {
    const std::string key = nameKey(space, prefix);
    std::vector<Entry*> found;
    for (auto place = byName_.lower_bound(key);
         place != byName_.end() && place->first.starts_with(key);
         ++place) {
        found.push_back(place->second);
    }
    return found;
}

void Lists::requireEndOfParents(const Entry& entry) {
    std::size_t steps = 0;
    for (const Entry* above = &entry; above != nullptr; above = byId(above->parent)) {
        if (++steps > entries_.size()) {
            database_.damaged("entry " + std::to_string(entry.id) + " has parents without end");
        }
    }
}

void Lists::nameFully(Entry& entry) {
    entry.fullName = entry.name;
    entry.sublevel = 0;
    for (const Entry* above = byId(entry.parent); above != nullptr && entry.sublevel < kDeepest;
         above = byId(above->parent)) {
        entry.fullName = above->name + ":" + entry.fullName;
        ++entry.sublevel;
    }
    entry.foldedName = folded(entry.fullName);
}

void Lists::index(Entry& entry) {
    byListId_[entry.listId] = &entry;
    byName_[nameKey(entry.kind->space, entry.foldedName)] = &entry;
    if (!entry.special.empty()) {
        bySpecial_[entry.special] = &entry;
    }
}

void Lists::unindex(const Entry& entry) {
    byListId_.erase(entry.listId);
    byName_.erase(nameKey(entry.kind->space, entry.foldedName));
    if (!entry.special.empty()) {
        bySpecial_.erase(entry.special);
    }
}

void Lists::requireGoodName(const Entry& entry) const {
    if (entry.name.find(':') != std::string::npos) {
        throw StatusError(
            3090,
            "There was an error when storing " + quoted(entry.name) + " in the " +
                quoted(entry.kind->nameField) + " field." +
                programSays("Names in this list cannot contain a colon.  The colon is a special "
                            "character used to indicate a parent/child relationship.")
        );
    }
    const auto found = byName_.find(nameKey(entry.kind->space, entry.foldedName));
    if (found != byName_.end() && found->second->id != entry.id) {
        throw StatusError(
            3100, "The name " + quoted(entry.name) + " of the list element is already in use."
        );
    }
}

Entry& Lists::add(Entry entry, std::int64_t now) {
    nameFully(entry);
    requireGoodName(entry);
    number_.bind().step();
    entry.id = number_.integer(0);
    number_.bind();
    constexpr std::int64_t kFirstListId = 0x80000000;
    entry.listId = idText(kFirstListId + entry.id, now);
    entry.created = entry.modified = entry.editSequence = now;
    insert_
        .bind(
            entry.id,
            entry.kind->kind,
            entry.listId,
            entry.name,
            entry.parent,
            entry.active,
            now,
            now,
            now,
            cents(entry.balance),
            entry.quantity.raw,
            entry.averageCost.raw,
            entry.special,
            fieldsXml(entry.fields)
        )
        .run();
    Entry& kept = entries_.emplace(entry.id, std::move(entry)).first->second;
    index(kept);
    return kept;
}

Entry& Lists::change(Entry changed, std::int64_t now) {
    nameFully(changed);
    requireGoodName(changed);
    Entry& entry = entries_.at(changed.id);
    unindex(entry);
    const bool renamed = entry.fullName != changed.fullName;
    entry = std::move(changed);
    entry.modified = now;
    entry.editSequence = std::max(now, entry.editSequence + 1);
    index(entry);
    if (renamed) {
        renameChildren(entry);
    }
    update_
        .bind(
            entry.name,
            entry.parent,
            entry.active,
            entry.modified,
            entry.editSequence,
            fieldsXml(entry.fields),
            entry.id
        )
        .run();
    return entry;
}

void Lists::renameChildren(const Entry& parent) {
    for (auto& [id, child] : entries_) {
        if (child.parent == parent.id && child.kind == parent.kind) {
            unindex(child);
            nameFully(child);
            index(child);
            renameChildren(child);
        }
    }
}

void Lists::saveFigures(const Entry& entry) {
    figures_.bind(cents(entry.balance), entry.quantity.raw, entry.averageCost.raw, entry.id).run();
}

void Lists::remove(const Entry& entry) {
    delete_.bind(entry.id).run();
    unindex(entry);
    entries_.erase(entry.id);
}

}  // namespace companyfile
