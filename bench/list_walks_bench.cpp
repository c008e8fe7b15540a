#include "core/brvDBSM_Interface.h"
#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_POHeader.h"
#include "db/nuvDBSM_POHistory.h"
#include "db/nuvDBSM_Vendors.h"
#include "export/list_exports.h"
#include "export/purchase_orders_export.h"
#include "platform/ports/platform.h"
#include "platform/qbxml/session_manager.h"
#include "platform/standin/standin_channel.h"
#include "support/link_fixture.h"
#include "support/watched_store.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

namespace {

constexpr std::int32_t kRecords = 50000;
/// Records at each end of a table that are sent and measured.
constexpr std::int32_t kMeasured = 2000;
constexpr std::int32_t kReceiptsPerOrder = 5;

std::string numbered(char letter, std::int32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%c%06d", letter, number);
    return text.data();
}

void insert(std::int16_t table) {
    if (gfiDB_Operation(table, db::opInsert, 0) == kNo) {
        throw std::runtime_error("a row of table " + std::to_string(table) + " was refused");
    }
}

void insertName(std::int32_t number) {
    gNames = db::NamesRecord();
    gNames.NameID = number;
    gNames.ARCode = numbered('N', number);
    gNames.BUSINESS = "Customer";
    gNames.BALANCE = gNames.BalanceFwd = util::Money::fromWhole(5);
    insert(db::tableNames);
}

void insertItem(std::int32_t number) {
    gInventory = db::InventoryRecord();
    gInventory.RecordNum = number;
    gInventory.SL = numbered('I', number) + "A";
    gInventory.ItemID = gInventory.SL.str();
    gInventory.Description = "Item";
    gInventory.VendorCode = "V000001";
    gInventory.Price = util::Money::fromWhole(20);
    gInventory.Cost = gInventory.AvgCost = util::Money::fromWhole(8);
    gInventory.QtyOnHand = 3;
    gInventory.TaxCode = "A";
    insert(db::tableInventory);
}

void insertVendor(std::int32_t number) {
    gVendors = db::VendorsRecord();
    gVendors.VendorID = number;
    gVendors.VENDCODE = numbered('V', number);
    gVendors.BUSINESS = "Vendor";
    insert(db::tableVendors);
}

void insertReceipt(std::int32_t number) {
    const std::string order = numbered('P', (number - 1) / kReceiptsPerOrder);
    gPOHistory = db::POHistoryRecord();
    gPOHistory.UniqueID = number;
    gPOHistory.DateReceived = "20150110";
    gPOHistory.PONumber = order;
    gPOHistory.InvUID = number;
    gPOHistory.UnitQty = 2;
    gPOHistory.UnitCost = util::Money::fromWhole(8);
    gPOHistory.VendorCode = "V000001";
    gPOHistory.Status = "R";
    insert(db::tablePOHistory);
    if (number % kReceiptsPerOrder == 0) {
        gPOHeader = db::POHeaderRecord();
        gPOHeader.PO = order;
        gPOHeader.VendorPONum = order;
        gPOHeader.ORDERDATE = "20150105";
        insert(db::tablePOHeader);
    }
}

struct List {
    const char* name;
    const char* table;
    void (*insert)(std::int32_t number);
    std::int32_t (*current)();  ///< number of the record in the buffer
    void (*walk)();
};

constexpr List kLists[] = {
    {"names", "Names", insertName, [] { return gNames.NameID; }, gpNames_export},
    {"items", "Inventory", insertItem, [] { return gInventory.RecordNum; }, gpInventory_export},
    {"vendors",
     "Vendor",
     insertVendor,
     [] { return gVendors.VendorID; },
     [] { gpVendors_export("frmSetup"); }},
    {"receipts",
     "POHistory",
     insertReceipt,
     [] { return gPOHistory.UniqueID; },
     gpPurchaseOrders_export},
};

/// A channel that can be away: every exchange fails at once then.
class AwayChannel : public platform::QBChannel {
public:
    AwayChannel(std::unique_ptr<platform::QBChannel> inner, const bool& away)
        : inner_(std::move(inner)),
          away_(away) {}

    void open(const std::string& appId, const std::string& appName) override {
        inner_->open(appId, appName);
    }
    void begin(const std::string& file, int mode) override { inner_->begin(file, mode); }
    void end() override { inner_->end(); }
    void close() override { inner_->close(); }
    [[nodiscard]] std::vector<std::string> versions() override { return inner_->versions(); }
    std::string exchange(const std::string& document) override {
        if (away_) {
            throw platform::PlatformError(-1, "away");
        }
        return inner_->exchange(document);
    }

private:
    std::unique_ptr<platform::QBChannel> inner_;
    const bool& away_;
};

/// An operator who answers every box and calls `onYield` at each yield.
class BenchDesktop : public testing_support::RecordingDesktop {
public:
    std::function<void()> onEachYield;

    platform::BoxAnswer messageBox(
        const std::string&, const std::string&, platform::BoxButtons, platform::BoxIcon
    ) override {
        return platform::BoxAnswer::ok;
    }
    void pendingEvents() override { onEachYield(); }
};

/// What one stretch of a walk cost.
struct Cost {
    double seconds = 0;
    double cpuSeconds = 0;
    double statements = 0;
    double requests = 0;
    double records = 0;
};

/// A link whose store has one long list. The walk meets every record; the company file is there for
/// the first and the last of them, and away in between.
class ListWalk : public testing_support::LinkFixture {
public:
    explicit ListWalk(const List& list) : list_(list) {
        watchAdapters();
        makeStore(0, 1);
        openSetup();
        click("CmdInitialized");
        fill();
    }
    void TestBody() override {}

    std::array<Cost, 2> run() {
        desktop_.onEachYield = [this] { lookAt(list_.current()); };
        list_.walk();
        measure(kRecords + 1);
        if (costs_[1].records == 0) {
            throw std::runtime_error(std::string(list_.name) + ": the walk did not reach the end");
        }
        return costs_;
    }

private:
    using Clock = std::chrono::steady_clock;

    void watchAdapters() {
        platform::Platform& adapters = platform::current();
        adapters.desktop = &desktop_;
        desktop_.onEachYield = [] {};
        adapters.makeConnection = [this, make = adapters.makeConnection] {
            return std::make_unique<testing_support::WatchedConnection>(make(), store_);
        };
        adapters.makeSessionManager = [this] {
            return std::make_unique<platform::QbxmlSessionManager>(std::make_unique<AwayChannel>(
                std::make_unique<testing_support::FaultChannel>(
                    std::make_unique<platform::StandinChannel>(), faults
                ),
                away_
            ));
        };
    }

    void fill() {
        for (const List& list : kLists) {
            execute(std::string("DELETE FROM ") + list.table);
        }
        execute("BEGIN TRANSACTION");
        if (list_.insert != insertVendor) {
            insertVendor(1);
        }
        for (std::int32_t number = 1; number <= kRecords; ++number) {
            list_.insert(number);
            if (list_.insert == insertReceipt) {
                insertItem(number);
            }
        }
        execute("COMMIT TRANSACTION");
        store_.statements.clear();
    }

    /// Serves a yield at which the record `number` is in the buffer.
    void lookAt(std::int32_t number) {
        const bool measured = number <= kMeasured || number > kRecords - kMeasured;
        if (measured == isMeasuring_) {
            return;
        }
        if (measured) {
            begin(number);
        } else {
            measure(number);
        }
    }

    void begin(std::int32_t number) {
        away_ = false;
        isMeasuring_ = true;
        firstNumber_ = number;
        statements_ = store_.statements.size();
        exchanges_ = faults->exchanges;
        cpuStart_ = std::clock();
        start_ = Clock::now();
    }

    void measure(std::int32_t number) {
        Cost& cost = costs_[costs_[0].records == 0 ? 0 : 1];
        cost.records = number - firstNumber_;
        cost.seconds = std::chrono::duration<double>(Clock::now() - start_).count() / cost.records;
        cost.cpuSeconds =
            static_cast<double>(std::clock() - cpuStart_) / CLOCKS_PER_SEC / cost.records;
        cost.statements =
            static_cast<double>(store_.statements.size() - statements_) / cost.records;
        cost.requests = static_cast<double>(faults->exchanges - exchanges_) / cost.records;
        isMeasuring_ = false;
        away_ = true;
        faults->documents.clear();
        store_.statements.clear();
    }

    const List& list_;
    BenchDesktop desktop_;
    testing_support::StoreWatch store_;
    bool away_ = false;
    bool isMeasuring_ = false;
    std::int32_t firstNumber_ = 0;
    std::size_t statements_ = 0;
    int exchanges_ = 0;
    std::clock_t cpuStart_ = 0;
    Clock::time_point start_;
    std::array<Cost, 2> costs_;
};

/// Cost of one record near an end of the list; both ends come from one walk.
void listWalk(benchmark::State& state) {
    static std::map<std::int64_t, std::array<Cost, 2>> walked;
    const std::int64_t index = state.range(0);
    const List& list = kLists[index];
    if (walked.find(index) == walked.end()) {
        walked[index] = ListWalk(list).run();
    }
    const bool atEnd = state.range(1) != 0;
    const Cost& cost = walked[index][atEnd ? 1 : 0];
    for ([[maybe_unused]] auto once : state) {
        state.SetIterationTime(cost.seconds);
    }
    state.SetLabel(
        std::string(list.name) + (atEnd ? ", the last " : ", the first ") +
        std::to_string(kMeasured) + " of " + std::to_string(kRecords)
    );
    constexpr double kMicro = 1e6;
    state.counters["cpu_us"] = cost.cpuSeconds * kMicro;
    state.counters["statements"] = cost.statements;
    state.counters["requests"] = cost.requests;
}

}  // namespace

BENCHMARK(listWalk)
    ->Args({0, 0})
    ->Args({0, 1})
    ->Args({1, 0})
    ->Args({1, 1})
    ->Args({2, 0})
    ->Args({2, 1})
    ->Args({3, 0})
    ->Args({3, 1})
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
