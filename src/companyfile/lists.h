#pragma once

#include "companyfile/database.h"
#include "companyfile/decimal.h"
#include "companyfile/element.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace companyfile {

/// Entries of one name space may not share a name.
enum class NameSpace : std::uint8_t {
    accounts,
    names,
    items,
    terms,
    paymentMethods,
    salesReps,
    taxCodes,
    jobTypes,
    shipMethods,
    customerMessages,
};

/// One kind of list entry.
struct ListKind {
    std::string_view kind;  ///< as in the request without Add, "ItemInventory"
    NameSpace space;
    std::string_view nameField;  ///< element that holds the name
    bool hasFullName;            ///< answers carry FullName and Sublevel, entries may have parents
    std::string_view dumpKey;    ///< name of its list in a dump
};
/// The description of a kind; null for what is no kind of list entry.
const ListKind* listKind(std::string_view kind);
/// All kinds in the order of a dump.
const std::vector<ListKind>& listKinds();

/// One list entry in memory.
struct Entry {
    std::int64_t id = 0;  ///< place in the order of creation
    const ListKind* kind = nullptr;
    std::string listId;
    std::string name;
    std::string fullName;    ///< chain of parents and name
    std::string foldedName;  ///< fullName as it compares
    int sublevel = 0;
    std::int64_t parent = 0;  ///< id; 0: none
    bool active = true;
    std::int64_t created = 0;  ///< seconds since 1970
    std::int64_t modified = 0;
    std::int64_t editSequence = 0;
    /// Customers: what they owe; vendors: what they are owed; accounts: debits less credits.
    util::Money balance;
    Decimal quantity;  ///< inventory items: on hand
    Decimal averageCost;
    std::string special;  ///< SpecialAccountType of an account
    Element fields;       ///< the other elements, references as ListID
};

/// All list entries, kept in memory and written through to the file.
class Lists {
public:
    /// Empty until load() was called.
    explicit Lists(Database& database);

    /// Reads everything again.
    void load();
    /// The entry with a ListID; null when there is none.
    Entry* byListId(std::string_view listId);
    Entry* byId(std::int64_t id);
    /// The entry of a name space by full name without regard to case and blanks around it; null:
    /// none.
    Entry* byName(NameSpace space, std::string_view fullName);
    /// The account that fulfils a special purpose; null: none yet.
    Entry* specialAccount(std::string_view special);
    /// The entries of a name space whose folded full name begins with `prefix`, in the order of
    /// their names.
    std::vector<Entry*> startingWith(NameSpace space, std::string_view prefix);

    /// Writes a new entry; id, list id and the full name are set here. `now` becomes its times.
    /// @throws StatusError 3090 (colon in the name) or 3100 (name in use).
    Entry& add(Entry entry, std::int64_t now);
    /// Puts `changed` in the place of the entry with its id, with a new edit sequence and the full
    /// name that follows.
    /// @throws StatusError 3090 or 3100, the entry unchanged.
    Entry& change(Entry changed, std::int64_t now);
    /// Writes balance, quantity and cost, which leave the edit sequence alone.
    void saveFigures(const Entry& entry);
    void remove(const Entry& entry);

    /// In order of creation.
    [[nodiscard]] std::map<std::int64_t, Entry>& all() { return entries_; }

private:
    void index(Entry& entry);
    void unindex(const Entry& entry);
    void requireEndOfParents(const Entry& entry);
    void nameFully(Entry& entry);
    void renameChildren(const Entry& parent);
    void requireGoodName(const Entry& entry) const;

    Database& database_;
    Statement insert_;
    Statement update_;
    Statement figures_;
    Statement delete_;
    Statement number_;
    std::map<std::int64_t, Entry> entries_;
    std::unordered_map<std::string, Entry*> byListId_;
    std::map<std::string, Entry*, std::less<>> byName_;
    std::map<std::string, Entry*, std::less<>> bySpecial_;
};

}  // namespace companyfile
