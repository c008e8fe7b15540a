#include "sales_store.h"
#include "support/answer_cutter.h"
#include "time_shares.h"

#include <chrono>
#include <string>

#include <benchmark/benchmark.h>

namespace {

constexpr std::int32_t kSales = 500;
/// Walks on the embedded store, for some ten thousand looks at where the time goes, and on a
/// server, where a step takes fifty times as long.
constexpr int kWalks = 101;
constexpr int kServerWalks = 5;
/// A machine has quick and slow times: the middle of the measurements counts.
constexpr int kMeasurements = 7;

/// What one sale of the walk costs under an adapter: statements, and the time in the driver, in the
/// adapter around it (translation, rows) and in the engine above (keys, statements, records). The
/// driver of the embedded store is the SQLite library; that of a server is the driver manager with
/// all behind it. (The comparison of texts that the library calls is a part of its time.) "outside
/// driver %" is the share of adapter and engine.
void salesWalkCost(benchmark::State& state, const testing_support::StoreAdapter& kind) {
    bench::SalesStore store(kind, kSales);
    bench::SalesStore::walk();  // the first one translates, prepares, and fills caches
    store.statements = 0;
    std::int64_t sales = 0;
    bench::TimeShares time(kind.isEmbedded() ? bench::Method::looks : bench::Method::clock);
    for ([[maybe_unused]] auto walk : state) {
        sales += bench::SalesStore::walk();
    }
    time.finish();
    const auto perSale = [&](std::chrono::nanoseconds part) {
        return 1e-3 * static_cast<double>(part.count()) / static_cast<double>(sales);
    };
    const double driver = perSale(time.of(bench::Place::driver));
    state.counters["statements/record"] =
        static_cast<double>(store.statements) / static_cast<double>(sales);
    state.counters["driver us"] = driver;
    state.counters["adapter us"] = perSale(time.of(bench::Place::adapter));
    state.counters["engine us"] = perSale(time.of(bench::Place::engine));
    state.counters["outside driver %"] = 100 * (1 - driver / perSale(time.all()));
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
            ->Iterations(adapter.isEmbedded() ? kWalks : kServerWalks)
            ->Repetitions(kMeasurements)
            ->ReportAggregatesOnly();
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
