#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <thread>

/// Which part of a walk its time goes into. The walk says where it is, and its time is either taken
/// at each change of place, or estimated by another thread that looks where the walk is some ten
/// thousand times a second: most calls on an embedded store are shorter than a look at the clock,
/// and a thread that waits for a server is looked at while it waits more often than it should be.
namespace bench {

enum class Place : std::uint8_t { engine, adapter, driver };
inline constexpr std::size_t kPlaces = 3;

enum class Method : bool { looks, clock };

/// Where the walk is now.
inline std::atomic<Place> place = Place::engine;
/// Takes the time that was spent in the place so far, and changes it.
void clockInto(Place next);
inline bool hasClock = false;

/// The walk is in `Here` while this lives.
template <Place Here>
class Inside {
public:
    Inside() { enter(Here); }
    ~Inside() { enter(before_); }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
    Inside(Inside&&) = delete;
    Inside& operator=(Inside&&) = delete;

private:
    static void enter(Place next) {
        if (hasClock) {
            clockInto(next);
        } else {
            place.store(next, std::memory_order_relaxed);
        }
    }

    Place before_ = place.load(std::memory_order_relaxed);
};

/// Observes the walk from the start of its life to finish(). One lives at a time.
class TimeShares {
public:
    explicit TimeShares(Method method);
    void finish();
    [[nodiscard]] std::chrono::nanoseconds all() const { return all_; }
    /// Time that the walk was in `in`.
    [[nodiscard]] std::chrono::nanoseconds of(Place in) const;

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point start_ = Clock::now();
    std::chrono::nanoseconds all_{};
    std::array<std::int64_t, kPlaces> seen_{};  ///< looks, or nanoseconds
    std::jthread watcher_;                      // the last member: it writes the others
};

}  // namespace bench
