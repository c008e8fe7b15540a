#include "driver_time.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <sql.h>
#include <sqlext.h>

namespace {

using Clock = std::chrono::steady_clock;

struct Sum {
    std::chrono::nanoseconds time{};
    std::int64_t calls = 0;
};
Sum total;

/// Runs a call with the clock around it.
template <class Call>
auto timed(const Call& call) {
    const Clock::time_point start = Clock::now();
    const auto result = call();
    total.time += Clock::now() - start;
    ++total.calls;
    return result;
}

/// What the clock around one call takes: the part that it sees itself, and all of it.
struct ClockCost {
    double seen;
    double all;
};

ClockCost measureClock() {
    constexpr int kTries = 1000;
    const Sum before = std::exchange(total, Sum());
    const Clock::time_point start = Clock::now();
    for (int call = 0; call < kTries; ++call) {
        static_cast<void>(timed([] { return 0; }));
    }
    const std::chrono::nanoseconds all = Clock::now() - start;
    const std::chrono::nanoseconds seen = std::exchange(total, before).time;
    return {static_cast<double>(seen.count()) / kTries, static_cast<double>(all.count()) / kTries};
}

/// The least of many measurements: whatever comes between makes one longer.
const ClockCost& clockCost() {
    static const ClockCost kCost = [] {
        constexpr int kMeasurements = 200;
        ClockCost least = measureClock();
        for (int count = 1; count < kMeasurements; ++count) {
            const ClockCost cost = measureClock();
            least = {std::min(least.seen, cost.seen), std::min(least.all, cost.all)};
        }
        return least;
    }();
    return kCost;
}

std::chrono::nanoseconds ofAllCalls(double costOfOne) {
    return std::chrono::nanoseconds(
        static_cast<std::int64_t>(costOfOne * static_cast<double>(total.calls))
    );
}

}  // namespace

namespace bench {

std::chrono::nanoseconds driverTime() {
    return total.time - ofAllCalls(clockCost().seen);
}

std::chrono::nanoseconds clockTime() {
    return ofAllCalls(clockCost().all);
}

}  // namespace bench

// The linker's names: __wrap_X is called in the place of X, which is __real_X. Listed in
// CMakeLists.txt.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
#define BENCH_TIMED(result, name, parameters, arguments)                                           \
    extern "C" result __real_##name parameters;                                                    \
    extern "C" result __wrap_##name parameters {                                                   \
        return timed([&] { return __real_##name arguments; });                                     \
    }

BENCH_TIMED(
    SQLRETURN,
    SQLExecDirectW,
    (SQLHSTMT statement, SQLWCHAR* text, SQLINTEGER size),
    (statement, text, size)
)
BENCH_TIMED(SQLRETURN, SQLFetch, (SQLHSTMT statement), (statement))
BENCH_TIMED(SQLRETURN, SQLMoreResults, (SQLHSTMT statement), (statement))
BENCH_TIMED(
    SQLRETURN,
    SQLGetData,
    (SQLHSTMT statement,
     SQLUSMALLINT column,
     SQLSMALLINT type,
     SQLPOINTER value,
     SQLLEN size,
     SQLLEN* indicator),
    (statement, column, type, value, size, indicator)
)
BENCH_TIMED(
    SQLRETURN, SQLNumResultCols, (SQLHSTMT statement, SQLSMALLINT* count), (statement, count)
)
BENCH_TIMED(
    SQLRETURN,
    SQLDescribeColW,
    (SQLHSTMT statement,
     SQLUSMALLINT column,
     SQLWCHAR* name,
     SQLSMALLINT size,
     SQLSMALLINT* length,
     SQLSMALLINT* type,
     SQLULEN* width,
     SQLSMALLINT* digits,
     SQLSMALLINT* nullable),
    (statement, column, name, size, length, type, width, digits, nullable)
)
BENCH_TIMED(
    SQLRETURN,
    SQLAllocHandle,
    (SQLSMALLINT type, SQLHANDLE input, SQLHANDLE* output),
    (type, input, output)
)
BENCH_TIMED(SQLRETURN, SQLFreeHandle, (SQLSMALLINT type, SQLHANDLE handle), (type, handle))
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
