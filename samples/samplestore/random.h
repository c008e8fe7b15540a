#pragma once

#include "util/money.h"

#include <cstdint>
#include <span>

namespace samplestore {

/// A small generator of pseudo-random numbers; the same seed gives the same store on every machine.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    /// 0 to `limit` - 1; `limit` is 1 or more.
    int below(int limit) { return static_cast<int>(next() % static_cast<std::uint64_t>(limit)); }
    /// `low` to `high`, both included.
    int between(int low, int high) { return low + below(high - low + 1); }
    /// True in `percent` of a hundred cases.
    bool chance(int percent) { return below(100) < percent; }
    /// An amount in whole cents between two amounts in cents.
    util::Money cents(int low, int high) {
        return util::Money::fromRaw(std::int64_t{between(low, high)} * kRawPerCent);
    }
    template <class Entry>
    const Entry& pick(std::span<const Entry> entries) {
        return entries[static_cast<std::size_t>(below(static_cast<int>(entries.size())))];
    }

    static constexpr std::int64_t kRawPerCent = util::Money::kScale / 100;

private:
    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15ULL;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
        return mixed ^ (mixed >> 31U);
    }

    std::uint64_t state_;
};

}  // namespace samplestore
