#include "platform/sql_dialect/server_order.h"
#include "platform/sql_dialect/translator.h"
#include "platform/sqlite/catalog_schema.h"
#include "platform/sqlite/database.h"
#include "store.h"

namespace {

/// Sales and customers, most of them of one customer, and the plans of the statements over them.
class WalkCost : public Store {
protected:
    WalkCost() {
        db.execute("Create Table SalesHead (SALEID INTEGER, Invoice CHAR(7), ARCode CHAR(15), "
                   "Store SMALLINT)");
        db.execute("Create UNIQUE Index idx_2 On SalesHead(ARCODE, STORE, SALEID)");
        db.execute("Create Table Names (NameID INTEGER, ARCode CHAR(15), LASTNAME CHAR(9))");
        db.execute("Create UNIQUE CLUSTERED Index idx_1 On Names(ARCode)");
    }

    void grow(int from, int to) {
        db.execute("BEGIN TRANSACTION");
        for (int n = from; n < to; ++n) {
            const std::string id = std::to_string(1'000'000 + n);
            db.execute("INSERT INTO SalesHead VALUES(" + id + ",'" + id + "','CASH',1)");
            db.execute("INSERT INTO Names VALUES(" + id + ",'C" + id + "','Smith')");
        }
        db.execute("COMMIT TRANSACTION");
    }

    [[nodiscard]] platform::Translation translated(const std::string& statement) const {
        const platform::Database other(file(), "NUVDATA1", 0, platform::Database::Mode::existing);
        const platform::CatalogSchema schema(other);
        return platform::translate(statement, schema, platform::kEmbeddedDialect);
    }

    static int compare(void*, int leftSize, const void* left, int rightSize, const void* right) {
        return platform::compareServerOrder(
            {static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
            {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)}
        );
    }

    /// Work of the store for one statement, in its own instructions.
    [[nodiscard]] int cost(const std::string& statement) const {
        const auto translation = translated(statement);
        sqlite3* other = nullptr;
        sqlite3_open(file().c_str(), &other);
        sqlite3_create_collation(other, "SERVER", SQLITE_UTF8, nullptr, compare);
        sqlite3_stmt* query = nullptr;
        sqlite3_prepare_v2(other, translation.text.c_str(), -1, &query, nullptr);
        for (std::size_t at = 0; at < translation.values.size(); ++at) {
            const int place = static_cast<int>(at) + 1;
            if (const auto* whole = std::get_if<std::int64_t>(&translation.values[at])) {
                sqlite3_bind_int64(query, place, *whole);
            } else {
                const auto& characters = std::get<std::string>(translation.values[at]);
                sqlite3_bind_text(query, place, characters.c_str(), -1, SQLITE_TRANSIENT);
            }
        }
        EXPECT_EQ(sqlite3_step(query), SQLITE_ROW) << statement;
        const int steps = sqlite3_stmt_status(query, SQLITE_STMTSTATUS_VM_STEP, 0);
        EXPECT_EQ(sqlite3_stmt_status(query, SQLITE_STMTSTATUS_FULLSCAN_STEP, 0), 0) << statement;
        sqlite3_finalize(query);
        sqlite3_close(other);
        return steps;
    }
};

constexpr const char* kSteps[] = {
    "SELECT  TOP 1 * FROM SalesHead WHERE Invoice>'1000050' ORDER BY Invoice",
    "SELECT  TOP 1 * FROM SalesHead WHERE Invoice<'1000050' ORDER BY Invoice DESC",
    "SELECT TOP 1 * FROM SalesHead WHERE Invoice>='1000050' ORDER BY Invoice",
    "SELECT  TOP 1 * FROM Names WHERE ARCode>'C1000050' ORDER BY ARCode",
    "SELECT TOP 1 * FROM Names WHERE ARCode='c1000050' ORDER BY ARCode",
    "SELECT  TOP 1 * FROM SalesHead WHERE (SELECT COUNT(*) FROM SalesHead WHERE ARCode='CASH') > 1 "
    "AND ARCode='CASH' AND Store='1' AND SALEID> '1000050' OR ARCode='CASH' AND Store> '1' OR "
    "ARCode>'CASH' ORDER BY ARCode,Store,SALEID",
};

TEST_F(WalkCost, aStepCostsTheSameInATableOfAnySize) {
    grow(0, 100);
    std::vector<int> small;
    for (const auto* statement : kSteps) {
        small.push_back(cost(statement));
    }
    grow(100, 5000);
    for (std::size_t at = 0; at < small.size(); ++at) {
        EXPECT_LE(cost(kSteps[at]), small[at] + 5) << kSteps[at];
    }
}

}  // namespace
