#include "sales_store.h"

#include <benchmark/benchmark.h>

namespace {

/// One step of the walk that the sales export makes.
void salesWalkStep(benchmark::State& state) {
    bench::SalesStore store(
        testing_support::embeddedStore().front(), static_cast<std::int32_t>(state.range(0))
    );
    std::int64_t steps = 0;
    bool found = false;
    for ([[maybe_unused]] auto step : state) {
        if (store.watch.statements.size() > 10000) {
            store.watch.statements.clear();
        }
        found = found ? bench::SalesStore::next() : bench::SalesStore::first();
        ++steps;
    }
    state.SetItemsProcessed(steps);
}

/// The whole walk from the first sale to the end.
void salesWalk(benchmark::State& state) {
    bench::SalesStore store(
        testing_support::embeddedStore().front(), static_cast<std::int32_t>(state.range(0))
    );
    std::int64_t sales = 0;
    std::size_t statements = 0;
    for ([[maybe_unused]] auto walk : state) {
        store.watch.statements.clear();
        sales = bench::SalesStore::walk();
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
