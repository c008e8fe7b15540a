#include "config/clsDataPath.h"
#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SalesHead.h"
#include "platform/ports/platform.h"
#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_management.h"
#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "support/fake_desktop.h"
#include "support/temp_folder.h"
#include "support/watched_store.h"

#include <memory>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

namespace {

constexpr char kCatalog[] = "NUVDATA1";

/// A store in a folder of its own with `sales` sales, numbered in a scattered order.
class SalesStore {
public:
    explicit SalesStore(std::int32_t sales) : settings_(folder_.str() + "/settings.ini") {
        install();
        makeCatalog();
        db::bindCommon();
        gCommon.StoreNumber = 1;
        gfiDB_Operation(db::tableCommon, db::opInsert, 0);
        db_fbInterface_open();
        if (db_fbAllTables_open() == kNo) {
            throw std::runtime_error("the store does not open");
        }
        fill(sales);
        watch.statements.clear();
    }
    ~SalesStore() { db::resetEngine(); }
    SalesStore(const SalesStore&) = delete;
    SalesStore& operator=(const SalesStore&) = delete;
    SalesStore(SalesStore&&) = delete;
    SalesStore& operator=(SalesStore&&) = delete;

    testing_support::StoreWatch watch;

private:
    void install() {
        const std::string folder = folder_.str();
        const auto name = [folder] { return folder; };
        platform::Platform adapters;
        adapters.settings = &settings_;
        adapters.files = &files_;
        adapters.processes = &processes_;
        adapters.clock = &clock_;
        adapters.desktop = &desktop_;
        adapters.makeConnection = [this, name] {
            return std::make_unique<testing_support::WatchedConnection>(
                std::make_unique<platform::SqliteConnection>(name), watch
            );
        };
        adapters.makeManagement = [name] {
            return std::make_unique<platform::SqliteManagement>(name);
        };
        platform::install(std::move(adapters));
        gDataPath.DataPath = folder;
    }

    void makeCatalog() {
        settings_.save(db::kSettingsApplication, db::kSettingsSection, "Server", "embedded");
        settings_.save(db::kSettingsApplication, db::kSettingsSection, "DBName", kCatalog);
        platform::CatalogFiles files;
        files.name = kCatalog;
        files.dataFile = folder_.file(std::string(kCatalog) + ".mdf");
        platform::current().makeManagement()->addCatalog(files);
        std::string message;
        gfbDB_Connect(message);
    }

    static void fill(std::int32_t sales) {
        constexpr std::int32_t kStride = 7919;  // a prime that no count of sales holds
        db::connection().execute("BEGIN TRANSACTION");
        for (std::int32_t number = 0; number < sales; ++number) {
            const std::int32_t sale =
                static_cast<std::int32_t>(std::int64_t{number} * kStride % sales) + 1;
            std::string invoice = std::to_string(sale);
            invoice.insert(0, 7 - invoice.size(), '0');
            gSalesHead = db::SalesHeadRecord();
            gSalesHead.SALEID = sale;
            gSalesHead.HubUID = sale;
            gSalesHead.Store = 1;
            gSalesHead.Invoice = invoice;
            gSalesHead.SaleDate = "20150110";
            if (gfiDB_Operation(db::tableSalesHead, db::opInsert, 0) == kNo) {
                throw std::runtime_error("sale " + invoice + " was refused");
            }
        }
        db::connection().execute("COMMIT TRANSACTION");
    }

    testing_support::TempFolder folder_;
    platform::IniSettingsStore settings_;
    platform::NativeFiles files_;
    platform::NativeProcesses processes_;
    platform::NativeClock clock_;
    testing_support::RecordingDesktop desktop_;
};

/// One step of the walk that the sales export makes.
void salesWalkStep(benchmark::State& state) {
    SalesStore store(static_cast<std::int32_t>(state.range(0)));
    std::int64_t steps = 0;
    bool found = false;
    for ([[maybe_unused]] auto step : state) {
        if (store.watch.statements.size() > 10000) {
            store.watch.statements.clear();
        }
        found =
            gfiDB_Operation(
                db::tableSalesHead, found ? db::opGetNext : db::opGetFirst, db::keySalesHeadInvoice
            ) != kNo;
        ++steps;
    }
    state.SetItemsProcessed(steps);
}

/// The whole walk from the first sale to the end.
void salesWalk(benchmark::State& state) {
    SalesStore store(static_cast<std::int32_t>(state.range(0)));
    std::int64_t sales = 0;
    std::size_t statements = 0;
    for ([[maybe_unused]] auto walk : state) {
        store.watch.statements.clear();
        LegacyBool found =
            gfiDB_Operation(db::tableSalesHead, db::opGetFirst, db::keySalesHeadInvoice);
        for (sales = 0; found != kNo; ++sales) {
            found = gfiDB_Operation(db::tableSalesHead, db::opGetNext, db::keySalesHeadInvoice);
        }
        statements = store.watch.statements.size();
    }
    state.counters["sales"] = static_cast<double>(sales);
    state.counters["statements"] = static_cast<double>(statements);
    state.counters["seconds/step"] = benchmark::Counter(
        static_cast<double>(sales),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert
    );
}

}  // namespace

BENCHMARK(salesWalkStep)
    ->Arg(1000)
    ->Arg(100000)
    ->Iterations(4000)  // a fixed count: every further try would fill a store anew
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(salesWalk)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);
