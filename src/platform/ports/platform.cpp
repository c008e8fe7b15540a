#include "platform/ports/platform.h"

#include "util/conversions.h"

#include <stdexcept>

namespace platform {

namespace {

Platform& slot() {
    static Platform platform;
    return platform;
}

template <class Port>
Port& need(Port* port) {
    if (port == nullptr) {
        throw std::logic_error("a platform adapter was used before it was installed");
    }
    return *port;
}

}  // namespace

void install(Platform platform) {
    slot() = std::move(platform);
}

Platform& current() {
    return slot();
}

DesktopPort& desktop() {
    return need(slot().desktop);
}

SettingsStore& settings() {
    return need(slot().settings);
}

FilePort& files() {
    return need(slot().files);
}

ProcessPort& processes() {
    return need(slot().processes);
}

ClockPort& systemClock() {
    return need(slot().clock);
}

int fieldOrdinal(const RowSet& rows, std::string_view name) {
    for (int ordinal = 0; ordinal < rows.fieldCount(); ++ordinal) {
        if (util::sameName(rows.fieldName(ordinal), name)) {
            return ordinal;
        }
    }
    throw PlatformError(
        kNoSuchFieldError,
        "Item cannot be found in the collection corresponding to the requested name or ordinal."
    );
}

}  // namespace platform
