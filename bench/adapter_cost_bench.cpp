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

/// What one sale of the walk costs under an adapter: statements, and the time in the driver (for
/// the embedded store the SQLite library, for a server the driver manager and all behind it), in
/// the adapter around it (translation, rows) and in the engine above (keys, statements, records).
/// "outside driver %" is the share of adapter and engine.
void salesWalkCost(benchmark::State& state, const testing_support::StoreAdapter& kind) {
    using Clock = std::chrono::steady_clock;
    bench::SalesStore store(kind, kSales);
    store.forgetTime();
    std::chrono::nanoseconds all{};
    const std::chrono::nanoseconds driverStart = bench::driverTime();
    const std::chrono::nanoseconds clockStart = bench::clockTime();
    std::int64_t sales = 0;
    for ([[maybe_unused]] auto walk : state) {
        const Clock::time_point start = Clock::now();
        sales += bench::SalesStore::walk();
        all += Clock::now() - start;
    }
    const std::chrono::nanoseconds clock = bench::clockTime() - clockStart;
    const std::chrono::nanoseconds driver = bench::driverTime() - driverStart;
    const std::chrono::nanoseconds engine = all - store.adapterTime();
    const std::chrono::nanoseconds adapter = store.adapterTime() - driver - clock;
    const auto perSale = [&](std::chrono::nanoseconds time) {
        return 1e-3 * share(time, std::chrono::nanoseconds(sales));
    };
    state.counters["statements/record"] =
        static_cast<double>(store.watch.statements.size()) / static_cast<double>(sales);
    state.counters["driver us"] = perSale(driver);
    state.counters["adapter us"] = perSale(adapter);
    state.counters["engine us"] = perSale(engine);
    state.counters["outside driver %"] = 100 * share(adapter + engine, driver + adapter + engine);
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
