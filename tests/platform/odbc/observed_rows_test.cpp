#include "each_store.h"
#include "support/json.h"

#include <set>
#include <utility>
#include <vector>

using testing_support::Json;

namespace {

std::string literal(const Json& value) {
    if (value.kind() == Json::Kind::number) {
        return value.text();
    }
    std::string text = "'";
    for (const char c : value.bytes()) {
        text += c == '\'' ? "''" : std::string(1, c);
    }
    return text + "'";
}

/// The tables of the vectors with their rows, and the index scripts of the suite's own tables.
class ObservedRows : public EachStore {
protected:
    ObservedRows() {
        execute("BEGIN TRANSACTION");
        for (const auto& [name, table] : vectors["tables"].members()) {
            std::string columns;
            for (std::size_t at = 0; at < table["columns"].items().size(); ++at) {
                columns += (at == 0 ? "" : ",") + table["columns"][at].text() + " " +
                           table["types"][at].text();
            }
            execute("Create Table " + name + " (" + columns + ");");
            for (const auto& row : table["rows"].items()) {
                std::string values;
                for (const auto& value : row.items()) {
                    values += (values.empty() ? "" : ",") + literal(value);
                }
                execute("INSERT INTO " + name + " VALUES(" + values + ")");
            }
        }
        execute("COMMIT TRANSACTION");
    }

    void makeIndexes() {
        for (const auto* statement : {
                 "Create UNIQUE CLUSTERED Index idx_1 On Names(ARCode)",
                 "Create Index idx_2 On Names(LASTNAME,FIRSTNAME,ARCode)",
                 "Create Index idx_5 On Names(Business,ARCODE)",
                 "Create UNIQUE index idx_1 On SalesHead(SaleDATE, STORE, SALEID)",
                 "Create UNIQUE Index idx_2 On SalesHead(ARCODE, STORE, SALEID)",
                 "Create UNIQUE Index idx_3 On SalesHead(STORE, INVOICE)",
             }) {
            execute(statement);
        }
    }

    std::string uidOf(const std::string& table, const std::string& statement) {
        const auto rows = rowsOf(statement);
        if (rows->atEnd()) {
            return "no row";
        }
        const auto& uid = vectors["tables"][table]["uid"][std::size_t{0}];
        return text(rows->value(platform::fieldOrdinal(*rows, uid.text())));
    }

    void compareAll() {
        for (const auto& query : vectors["queries"].items()) {
            std::set<std::string> right;
            for (const auto& tie : query["ties"].items()) {
                right.insert(tie[std::size_t{0}].text());
            }
            const auto& uid = query["uid"];
            right.insert(uid.isNull() ? "no row" : uid[std::size_t{0}].text());
            const std::string found = uidOf(query["table"].text(), query["sql"].bytes());
            EXPECT_TRUE(right.contains(found)) << query["sql"].text() << " gave " << found;
        }
    }

    Json vectors = testing_support::parseJsonFile(std::string(BREVANE_TEST_DATA) + "/rows.json");
};

INSTANTIATE_TEST_SUITE_P(
    Store,
    ObservedRows,
    testing::ValuesIn(testing_support::storeAdapters()),
    testing_support::adapterName
);

TEST_P(ObservedRows, comeBackWithoutIndexes) {
    compareAll();
}

TEST_P(ObservedRows, comeBackByIndexesTheSame) {
    makeIndexes();
    compareAll();
}

}  // namespace
