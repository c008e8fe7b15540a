#pragma once

#include <chrono>

namespace bench {

/// Time spent in the calls of the stores' libraries and drivers since the start. The linker puts
/// a clock around each of them in this program.
std::chrono::nanoseconds driverTime();

}  // namespace bench
