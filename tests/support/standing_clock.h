#pragma once

#include "platform/ports/system.h"

#include <functional>
#include <vector>

namespace testing_support {

/// A clock that stands at noon of a day; pauses are noted and not made.
class StandingClock : public platform::ClockPort {
public:
    explicit StandingClock(util::CalendarDate today) : now_{util::dayNumber(today), 12 * 3600} {}

    std::vector<int> pauses;
    std::function<void(int)> onPause;

    [[nodiscard]] util::DateTime now() const override { return now_; }
    void sleep(int milliseconds) override {
        pauses.push_back(milliseconds);
        if (onPause) {
            onPause(milliseconds);
        }
    }

private:
    util::DateTime now_;
};

}  // namespace testing_support
