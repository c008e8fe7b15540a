#include "platform/sqlite/catalog_schema.h"

#include "platform/sql_dialect/dialect.h"
#include "platform/sql_dialect/tokens.h"
#include "platform/sql_dialect/translator.h"
#include "util/text_codec.h"

#include <algorithm>

namespace platform {

namespace {

/// An index that the link needs for a walk or a look-up of its own.
struct HelperIndex {
    std::string_view table;
    std::vector<std::string> columns;
    bool inScript;  ///< the table's index script makes one that serves
};

const std::vector<HelperIndex>& helperIndexes() {
    static const std::vector<HelperIndex> kIndexes = {
        {"SalesHead", {"Invoice"}, false},
        {"SalesItem", {"SaleID", "LineNum"}, true},
        {"Names", {"ARCode"}, true},
        {"Names", {"NameID"}, true},
        {"Inventory", {"SL"}, true},
        {"Inventory", {"RecordNum"}, true},
        {"Vendors", {"VENDCODE"}, true},
        {"POHistory", {"UniqueID"}, true},
        {"POHeader", {"PO"}, true},
    };
    return kIndexes;
}

void addOnce(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(name);
    }
}

/// The columns of an index from its statement: the first column that each term names, once each.
std::vector<std::string> indexColumns(const TableSchema& table, const std::string& statement) {
    const auto tokens = tokenize(statement);
    std::vector<std::string> columns;
    int depth = 0;
    bool isSeen = true;
    for (const auto& token : tokens) {
        if (token.is("(")) {
            isSeen = ++depth == 1 ? false : isSeen;
        } else if (token.is(")")) {
            --depth;
        } else if (token.is(",") && depth == 1) {
            isSeen = false;
        } else if (depth > 0 && !isSeen && token.kind == TokenKind::word) {
            const auto* column = table.find(token.text);
            if (column != nullptr) {
                isSeen = true;
                addOnce(columns, column->name);
            }
        }
    }
    return columns;
}

void readColumns(const Database& database, TableSchema& table) {
    Query info(database, "SELECT name,type,\"notnull\",dflt_value FROM pragma_table_info(?)");
    info.bind({table.name});
    while (info.step()) {
        ColumnInfo column;
        column.name = info.text(0);
        column.type = info.text(1);
        column.nullable = info.number(2) == 0;
        column.defaultText = info.text(3);
        readType(column);  // a type of another program's making is a text without width
        table.columns.push_back(std::move(column));
    }
}

void readIndexes(const Database& database, TableSchema& table) {
    Query info(
        database,
        "SELECT l.name,l.\"unique\",m.sql FROM pragma_index_list(?) l JOIN sqlite_master m ON "
        "m.type='index' AND m.name=l.name WHERE m.sql IS NOT NULL ORDER BY m.rowid"
    );
    info.bind({table.name});
    while (info.step()) {
        IndexInfo index;
        index.storeName = info.text(0);
        index.unique = info.number(1) != 0;
        index.columns = indexColumns(table, info.text(2));
        const std::string prefix = table.name + ".";
        index.name = index.storeName;
        if (index.name.size() > prefix.size() &&
            sameSqlName(std::string_view(index.name).substr(0, prefix.size()), prefix)) {
            index.name.erase(0, prefix.size());
        }
        table.indexes.push_back(std::move(index));
    }
}

bool serves(const IndexInfo& index, const std::vector<std::string>& columns) {
    return index.columns.size() >= columns.size() &&
           std::equal(columns.begin(), columns.end(), index.columns.begin(), sameSqlName);
}

void prepareHelper(Database& database, CatalogSchema& schema, const HelperIndex& helper) {
    const auto* table = schema.table(helper.table);
    const bool isNeeded =
        table != nullptr &&
        std::all_of(
            helper.columns.begin(),
            helper.columns.end(),
            [&](const std::string& column) { return table->find(column) != nullptr; }
        ) &&
        std::none_of(table->indexes.begin(), table->indexes.end(), [&](const IndexInfo& index) {
            return serves(index, helper.columns);
        });
    if (isNeeded) {
        const IndexInfo index{"walk_" + helper.columns.front(), false, helper.columns};
        database.run(indexStatement(*table, index, kEmbeddedDialect));
    }
}

/// True for an index over a text column that sorts the column by its bytes.
bool sortsByBytes(const Database& database, const TableSchema& table, const IndexInfo& index) {
    Query query(database, "SELECT sql FROM sqlite_master WHERE type='index' AND name=?");
    query.bind({index.storeName});
    const std::string statement = query.step() ? util::toUtf8(query.text(0)) : std::string();
    return std::any_of(index.columns.begin(), index.columns.end(), [&](const std::string& name) {
        const ColumnInfo& column = table.column(name);
        return column.kind == ColumnKind::text &&
               statement.find(kEmbeddedDialect.orderKey(kEmbeddedDialect.quoteName(column.name))) ==
                   std::string::npos;
    });
}

void remakeIndex(Database& database, const TableSchema& table, const IndexInfo& index) {
    asOneStep(database, [&] {
        database.run(fillTemplate(
            kEmbeddedDialect.dropIndex, {{"index", kEmbeddedDialect.quoteName(index.storeName)}}
        ));
        database.run(indexStatement(table, index, kEmbeddedDialect));
    });
}

}  // namespace

std::vector<std::string> tableNames(const Database& database) {
    std::vector<std::string> names;
    Query query(
        database,
        "SELECT name FROM sqlite_master WHERE type='table' AND substr(name,1,7)<>'sqlite_' "
        "ORDER BY rowid"
    );
    while (query.step()) {
        names.push_back(query.text(0));
    }
    return names;
}

CatalogSchema::CatalogSchema(const Database& database)
    : database_(database),
      version_(database, "PRAGMA schema_version") {}

void CatalogSchema::refresh() {
    const std::int64_t version = version_.step() ? version_.number(0) : -1;
    version_.reset();
    if (version != seenVersion_) {
        tables_.clear();
        seenVersion_ = version;
    }
}

const TableSchema* CatalogSchema::table(std::string_view name) const {
    const auto known = tables_.find(name);
    if (known != tables_.end()) {
        return known->second.get();
    }
    std::unique_ptr<TableSchema> read;
    for (const auto& present : tableNames(database_)) {
        if (sameSqlName(present, name)) {
            read = std::make_unique<TableSchema>();
            read->name = present;
            readColumns(database_, *read);
            readIndexes(database_, *read);
        }
    }
    return tables_.emplace(std::string(name), std::move(read)).first->second.get();
}

void prepareIndexes(Database& database, CatalogSchema& schema) {
    schema.refresh();
    for (const auto& name : tableNames(database)) {
        const TableSchema table = *schema.table(name);
        for (const auto& index : table.indexes) {
            if (sortsByBytes(database, table, index)) {
                ignoringErrors([&] { remakeIndex(database, table, index); });
            }
        }
    }
    schema.refresh();
    for (const auto& helper : helperIndexes()) {
        ignoringErrors([&] { prepareHelper(database, schema, helper); });
    }
    schema.refresh();
}

void prepareNewTable(Database& database, CatalogSchema& schema, std::string_view table) {
    schema.refresh();
    for (const auto& helper : helperIndexes()) {
        if (!helper.inScript && sameSqlName(helper.table, table)) {
            ignoringErrors([&] { prepareHelper(database, schema, helper); });
        }
    }
}

}  // namespace platform
