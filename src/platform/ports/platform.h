#pragma once

#include "platform/ports/data.h"
#include "platform/ports/desktop.h"
#include "platform/ports/management.h"
#include "platform/ports/quickbooks_session.h"
#include "platform/ports/system.h"

#include <functional>
#include <memory>

namespace platform {

/// The adapters that a program runs on. All are owned by the program's `main` and outlive the run.
struct Platform {
    std::function<std::unique_ptr<DataConnection>()> makeConnection;
    std::function<std::unique_ptr<ManagementSession>()> makeManagement;
    /// @throws PlatformError kNoObjectLibrary when the session library is missing.
    std::function<std::unique_ptr<IQBSessionManager>()> makeSessionManager;
    DesktopPort* desktop = nullptr;
    SettingsStore* settings = nullptr;
    FilePort* files = nullptr;
    ProcessPort* processes = nullptr;
    ClockPort* clock = nullptr;
};

/// Names the adapters for everything that follows in this process.
void install(Platform platform);

/// The installed adapters; using one that was never installed is an error of the program.
Platform& current();
DesktopPort& desktop();
SettingsStore& settings();
FilePort& files();
ProcessPort& processes();
ClockPort& systemClock();

}  // namespace platform
