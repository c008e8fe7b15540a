#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/store_fixture.h"

#include <fstream>

#include <sql.h>
#include <sqlext.h>

namespace {

/// The driver manager's own trace of what it is told, into a file, while the object lives.
class DriverTrace {
public:
    explicit DriverTrace(std::string file) : file_(std::move(file)) {
        SQLSetConnectAttr(nullptr, SQL_ATTR_TRACEFILE, file_.data(), SQL_NTS);
        turn(SQL_OPT_TRACE_ON);
    }
    ~DriverTrace() { turn(SQL_OPT_TRACE_OFF); }
    DriverTrace(const DriverTrace&) = delete;
    DriverTrace& operator=(const DriverTrace&) = delete;
    DriverTrace(DriverTrace&&) = delete;
    DriverTrace& operator=(DriverTrace&&) = delete;

    /// The values that an attribute of connections was set to, in order.
    [[nodiscard]] std::vector<long> valuesOf(const std::string& attribute) const {
        std::ifstream trace(file_);
        std::vector<long> values;
        bool isNamed = false;
        for (std::string line; std::getline(trace, line);) {
            const std::size_t value = line.find("Value = ");
            if (isNamed && value != std::string::npos) {
                values.push_back(std::stol(line.substr(value + 8), nullptr, 0));
            }
            isNamed = line.find("Attribute = " + attribute) != std::string::npos;
        }
        return values;
    }

private:
    static void turn(std::uintptr_t state) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface takes numbers so
        SQLSetConnectAttr(nullptr, SQL_ATTR_TRACE, reinterpret_cast<SQLPOINTER>(state), 0);
    }

    std::string file_;
};

using TimeLimits = StoreTest;

INSTANTIATE_TEST_SUITE_P(
    Store, TimeLimits, ::testing::ValuesIn(testing_support::serverStores()), adapterName
);

TEST_P(TimeLimits, ofTheConnectionsReachTheDriver) {
    openStore();
    db::connection().close();
    const DriverTrace trace(folder.str() + "/odbc.log");
    const std::string attribute = "SQL_ATTR_LOGIN_TIMEOUT";
    EXPECT_NE(gfbDB_OpenTable(db::tableCommon), kNo);
    EXPECT_EQ(trace.valuesOf(attribute), std::vector<long>{25});
    EXPECT_NE(gfbDB_ConnectServer(), kNo);
    EXPECT_NE(gfbDB_TableExists(DBTableDescriptors[db::tableCommon]), kNo);
    EXPECT_EQ(trace.valuesOf(attribute).back(), 120);
}

}  // namespace
