#pragma once

#include <chrono>

namespace bench {

/// Time spent in the calls of the driver manager, and so of all behind it (driver, wire and
/// server), since the start. The linker puts a clock around each of them in this program; what the
/// clocks themselves take does not count.
std::chrono::nanoseconds driverTime();
/// Time that the clocks took.
std::chrono::nanoseconds clockTime();

}  // namespace bench
