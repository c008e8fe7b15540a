#include "db/connection.h"
#include "db/nuvDBSM_SalesHead.h"
#include "sales_store.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

/// A place in the walk of one of two stores that are open at the same time: the engine stands on
/// one of them.
class Walker {
public:
    explicit Walker(std::int32_t sales)
        : store_(testing_support::embeddedStore().front(), sales),
          connection_(std::move(DBConnection)) {}

    /// Goes some steps on, and again from the first sale at the end. @return microseconds a step.
    double steps(int count) {
        std::swap(DBConnection, connection_);
        gSalesHead = sale_;
        const auto start = std::chrono::steady_clock::now();
        for (int step = 0; step < count; ++step) {
            isOnSale_ = isOnSale_ ? bench::SalesStore::next() : bench::SalesStore::first();
        }
        const std::chrono::duration<double, std::micro> time =
            std::chrono::steady_clock::now() - start;
        sale_ = gSalesHead;
        std::swap(DBConnection, connection_);
        return time.count() / count;
    }
    [[nodiscard]] std::int64_t statements() const { return store_.statements; }

private:
    bench::SalesStore store_;
    std::unique_ptr<platform::DataConnection> connection_;
    db::SalesHeadRecord sale_;
    bool isOnSale_ = false;
};

double middleOf(std::vector<double> values) {
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

/// One step of the walk that the sales export makes, in a small and in a large store. A machine has
/// quick and slow times: the stores take turns, and the middle one of the ratios counts.
void salesWalkStep(benchmark::State& state) {
    constexpr int kSteps = 250;
    Walker small(1000);
    Walker large(100000);
    std::vector<double> inSmall;
    std::vector<double> inLarge;
    std::vector<double> ratios;
    for ([[maybe_unused]] auto turn : state) {
        inSmall.push_back(small.steps(kSteps));
        inLarge.push_back(large.steps(kSteps));
        ratios.push_back(inLarge.back() / inSmall.back());
    }
    const auto turns = static_cast<double>(ratios.size());
    state.counters["us/step of 1000"] = middleOf(inSmall);
    state.counters["us/step of 100000"] = middleOf(inLarge);
    state.counters["ratio"] = middleOf(ratios);
    state.counters["statements/step of 1000"] =
        static_cast<double>(small.statements()) / (kSteps * turns);
    state.counters["statements/step of 100000"] =
        static_cast<double>(large.statements()) / (kSteps * turns);
}

/// The whole walk from the first sale to the end.
void salesWalk(benchmark::State& state) {
    bench::SalesStore store(
        testing_support::embeddedStore().front(), static_cast<std::int32_t>(state.range(0))
    );
    std::int64_t sales = 0;
    for ([[maybe_unused]] auto walk : state) {
        sales = bench::SalesStore::walk();
    }
    state.counters["sales"] = static_cast<double>(sales);
    state.counters["statements"] = static_cast<double>(store.statements);
    state.counters["seconds/step"] = benchmark::Counter(
        static_cast<double>(sales),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert
    );
}

}  // namespace

BENCHMARK(salesWalkStep)->Iterations(41)->Unit(benchmark::kMillisecond);
BENCHMARK(salesWalk)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);
