#include "time_shares.h"

#include <numeric>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::microseconds kBetweenLooks(40);

Clock::time_point changed;
std::array<std::int64_t, kPlaces> nanosecondsIn;

std::size_t slot(Place of) {
    return static_cast<std::size_t>(of);
}

}  // namespace

void clockInto(Place next) {
    const Clock::time_point now = Clock::now();
    nanosecondsIn.at(slot(place)) += std::chrono::nanoseconds(now - changed).count();
    changed = now;
    place = next;
}

TimeShares::TimeShares(Method method) {
    place = Place::engine;
    hasClock = method == Method::clock;
    if (hasClock) {
        nanosecondsIn = {};
        changed = Clock::now();
        return;
    }
    watcher_ = std::jthread([this](const std::stop_token& end) {
        while (!end.stop_requested()) {
            std::this_thread::sleep_for(kBetweenLooks);
            ++seen_.at(slot(place.load(std::memory_order_relaxed)));
        }
    });
}

void TimeShares::finish() {
    all_ = Clock::now() - start_;
    if (hasClock) {
        clockInto(place);
        seen_ = nanosecondsIn;
        hasClock = false;
    } else {
        watcher_.request_stop();
        watcher_.join();
    }
}

std::chrono::nanoseconds TimeShares::of(Place in) const {
    const std::int64_t sum = std::accumulate(seen_.begin(), seen_.end(), std::int64_t{0});
    const double share = static_cast<double>(seen_.at(slot(in))) / static_cast<double>(sum);
    return std::chrono::nanoseconds(
        static_cast<std::int64_t>(share * static_cast<double>(all_.count()))
    );
}

}  // namespace bench
