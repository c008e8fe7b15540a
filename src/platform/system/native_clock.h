#pragma once

#include "platform/ports/system.h"

namespace platform {

/// The clock of this computer in its local time zone.
class NativeClock : public ClockPort {
public:
    [[nodiscard]] util::DateTime now() const override;
    void sleep(int milliseconds) override;
};

}  // namespace platform
