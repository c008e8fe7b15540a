#pragma once

#include <chrono>

namespace bench {

/// The calls that a walk makes on the SQLite library, to be made again without the walk: what the
/// library takes by itself. (A clock around each call would take longer than most of them.)
class SqliteReplay {
public:
    /// Records the calls that `walk` makes. Their statements must stay as they are until the last
    /// run().
    template <class Walk>
    explicit SqliteReplay(const Walk& walk) {
        record(true);
        walk();
        record(false);
    }

    /// Makes the calls again. @return the time that they took. @throws std::runtime_error when they
    /// do not give as many rows as before.
    [[nodiscard]] static std::chrono::nanoseconds run();

private:
    static void record(bool isOn);
};

}  // namespace bench
