#include "driver_time.h"
#include "sales_store.h"
#include "sqlite_replay.h"
#include "support/answer_cutter.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

/// Few sales for many walks, of which the middle one counts: a machine has quick and slow times.
constexpr std::int32_t kSales = 500;
constexpr int kWalks = 41;

using Clock = std::chrono::steady_clock;

/// Times of one walk: the whole, the part behind the data port, and the part of that in the driver.
struct WalkTimes {
    std::chrono::nanoseconds all{};
    std::chrono::nanoseconds port{};
    std::chrono::nanoseconds driver{};

    /// Share of the time that was not spent in the driver.
    [[nodiscard]] double outside() const {
        return static_cast<double>((all - driver).count()) / static_cast<double>(all.count());
    }
};

WalkTimes timedWalk(bench::SalesStore& store) {
    store.forgetTime();
    const std::chrono::nanoseconds driver = bench::driverTime();
    const std::chrono::nanoseconds clocks = bench::clockTime();
    const Clock::time_point start = Clock::now();
    bench::SalesStore::walk();
    const std::chrono::nanoseconds all = Clock::now() - start;
    const std::chrono::nanoseconds spent = bench::clockTime() - clocks;
    return {all - spent, store.adapterTime() - spent, bench::driverTime() - driver};
}

/// What one sale of the walk costs under an adapter: statements, and the time in the driver, in the
/// adapter around it (translation, rows) and in the engine above (keys, statements, records). The
/// driver of the embedded store is the SQLite library, whose calls are made again by themselves;
/// that of a server is the driver manager and all behind it, whose few calls have a clock around
/// them. "outside driver %" is the share of adapter and engine.
void salesWalkCost(benchmark::State& state, const testing_support::StoreAdapter& kind) {
    bench::SalesStore store(kind, kSales);
    std::optional<bench::SqliteReplay> library;
    if (kind.isEmbedded()) {
        library.emplace([] { bench::SalesStore::walk(); });
    }
    std::vector<WalkTimes> walks;
    store.statements = 0;
    for ([[maybe_unused]] auto walk : state) {
        WalkTimes times = timedWalk(store);
        if (library) {
            times.driver = library->run();
        }
        walks.push_back(times);
    }
    std::ranges::sort(walks, {}, &WalkTimes::outside);
    const WalkTimes middle = walks.at(walks.size() / 2);
    const auto perSale = [](std::chrono::nanoseconds time) {
        return 1e-3 * static_cast<double>(time.count()) / kSales;
    };
    state.counters["statements/record"] =
        static_cast<double>(store.statements) / static_cast<double>(kSales * walks.size());
    state.counters["driver us"] = perSale(middle.driver);
    state.counters["adapter us"] = perSale(middle.port - middle.driver);
    state.counters["engine us"] = perSale(middle.all - middle.port);
    state.counters["outside driver %"] = 100 * middle.outside();
    state.SetLabel(
        kind.isEmbedded() ? "driver: SQLite library"
                          : "driver: driver manager, driver, wire and server"
    );
}

/// The same walk over a wire on which the requests are counted.
void salesWalkRoundTrips(benchmark::State& state, testing_support::StoreAdapter adapter) {
    testing_support::AnswerCutter wire(std::stoi(adapter.at->options().port));
    adapter.at->port = wire.port();
    bench::SalesStore store(adapter, kSales);
    const long before = wire.requests();
    std::int64_t sales = 0;
    for ([[maybe_unused]] auto walk : state) {
        sales += bench::SalesStore::walk();
    }
    state.counters["round trips/record"] =
        static_cast<double>(wire.requests() - before) / static_cast<double>(sales);
}

void addBenchmarks() {
    for (const auto& adapter : testing_support::storeAdapters()) {
        benchmark::RegisterBenchmark(
            ("salesWalkCost/" + adapter.name).c_str(), salesWalkCost, adapter
        )
            ->Unit(benchmark::kMillisecond)
            ->Iterations(kWalks);
        if (adapter.at && !adapter.at->isSqlServer()) {
            benchmark::RegisterBenchmark(
                ("salesWalkRoundTrips/" + adapter.name).c_str(), salesWalkRoundTrips, adapter
            )
                ->Unit(benchmark::kMillisecond)
                ->Iterations(1);
        }
    }
}

[[maybe_unused]] const bool kAdded = [] {
    addBenchmarks();
    return true;
}();

}  // namespace
