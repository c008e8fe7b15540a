#pragma once

#include "config/clsDataPath.h"
#include "core/brv_main.h"
#include "platform/ports/platform.h"
#include "platform/qbxml/logging_channel.h"
#include "platform/qbxml/session_manager.h"
#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_management.h"
#include "platform/standin/standin_channel.h"
#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"

#include <memory>
#include <utility>

namespace app {

/// Status of a program that was called in a wrong way.
inline constexpr int kWrongCall = 64;
/// Status of a program whose platform failed before it could start.
inline constexpr int kPlatformFailed = 3;

/// The adapters of this machine, with the operator at `Desktop`, installed for as long as the
/// object lives.
template <class Desktop>
class LinkAdapters {
public:
    /// @param arguments  what the desktop is made of.
    template <class... Arguments>
    explicit LinkAdapters(Arguments&&... arguments)
        : desktop_(std::forward<Arguments>(arguments)...) {
        const auto dataFolder = [] { return gDataPath.DataPath; };
        platform::Platform adapters;
        adapters.makeConnection = [dataFolder] {
            return std::make_unique<platform::SqliteConnection>(dataFolder);
        };
        adapters.makeManagement = [dataFolder] {
            return std::make_unique<platform::SqliteManagement>(dataFolder);
        };
        adapters.makeSessionManager = [] {
            return std::make_unique<platform::QbxmlSessionManager>(
                platform::withDocumentLog(std::make_unique<platform::StandinChannel>())
            );
        };
        adapters.desktop = &desktop_;
        adapters.settings = &settings_;
        adapters.files = &files_;
        adapters.processes = &processes_;
        adapters.clock = &clock_;
        platform::install(std::move(adapters));
    }

private:
    platform::IniSettingsStore settings_;
    platform::NativeFiles files_;
    platform::NativeProcesses processes_;
    platform::NativeClock clock_;
    Desktop desktop_;
};

/// Runs the program on the installed adapters. @return status of the process.
inline int runLink() {
    int status = 0;
    try {
        gpMain_start();
    } catch (const platform::ProgramEnd& end) {
        status = end.status;
    }
    core::resetLink();
    return status;
}

}  // namespace app
