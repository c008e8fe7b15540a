#include "platform/system/native_clock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace platform {

util::DateTime NativeClock::now() const {
    const std::time_t moment = std::time(nullptr);
    std::tm local{};
    localtime_r(&moment, &local);
    constexpr int kFirstYear = 1900;
    constexpr int kLastSecond = 59;  // a leap second is counted with the one in front of it
    const int second = local.tm_sec > kLastSecond ? kLastSecond : local.tm_sec;
    return {
        util::dayNumber({local.tm_year + kFirstYear, local.tm_mon + 1, local.tm_mday}),
        (local.tm_hour * 60 + local.tm_min) * 60 + second,
    };
}

void NativeClock::sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace platform
