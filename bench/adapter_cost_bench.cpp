#include "driver_time.h"
#include "sales_store.h"
#include "support/answer_cutter.h"

#include <chrono>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>

namespace {

constexpr std::int32_t kSales = 2000;

double share(std::chrono::nanoseconds part, std::chrono::nanoseconds whole) {
    return static_cast<double>(part.count()) / static_cast<double>(whole.count());
}

/// What one sale of the walk costs under an adapter: statements, and the share of the time that is
/// not the driver's, or the library's (the adapter's and the engine's own work), and not even the
/// adapter's (the engine's).
void salesWalkCost(benchmark::State& state, const testing_support::StoreAdapter& adapter) {
    using Clock = std::chrono::steady_clock;
    bench::SalesStore store(adapter, kSales);
    store.forgetTime();
    std::chrono::nanoseconds all{};
    const std::chrono::nanoseconds driverStart = bench::driverTime();
    std::int64_t sales = 0;
    for ([[maybe_unused]] auto walk : state) {
        const Clock::time_point start = Clock::now();
        sales += bench::SalesStore::walk();
        all += Clock::now() - start;
    }
    const std::chrono::nanoseconds driver = bench::driverTime() - driverStart;
    state.counters["statements/record"] =
        static_cast<double>(store.watch.statements.size()) / static_cast<double>(sales);
    state.counters["outside driver %"] = 100 * share(all - driver, all);
    state.counters["outside adapter %"] = 100 * share(all - store.adapterTime(), all);
    state.counters["us/record"] = 1e-3 * share(all, std::chrono::nanoseconds(sales));
    state.SetItemsProcessed(sales);
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
            ->Iterations(3);
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
