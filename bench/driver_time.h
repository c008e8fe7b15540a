#pragma once

#include <chrono>

namespace bench {

/// Time spent in the calls of the stores' libraries and drivers since the start. The linker puts
/// a clock around each of them in this program; what the clocks themselves take does not count.
/// For the embedded store that is the SQLite library, for a server the driver manager and all
/// behind it: driver, wire and server.
std::chrono::nanoseconds driverTime();
/// Time that the clocks took.
std::chrono::nanoseconds clockTime();

}  // namespace bench
