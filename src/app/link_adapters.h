#pragma once

#include "config/clsDataPath.h"
#include "core/brv_main.h"
#include "db/connection.h"
#include "platform/odbc/odbc_connection.h"
#include "platform/odbc/odbc_management.h"
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
#include "util/conversions.h"

#include <iostream>
#include <memory>
#include <string>
#include <utility>

namespace app {

/// Status of a program that was called in a wrong way.
inline constexpr int kWrongCall = 64;
/// Status of a program whose platform failed before it could start.
inline constexpr int kPlatformFailed = 3;

/// The setting "Server" that chooses the embedded store; any other value names a database server.
inline constexpr char kEmbeddedServer[] = "embedded";

/// A setting of the store's connection.
inline std::string connectionSetting(const std::string& key) {
    return util::trim(
        platform::settings().get(db::kSettingsApplication, db::kSettingsSection, key, "")
    );
}

/// Makes the data port that the settings choose: the embedded store's, made with the data folder,
/// or the server's.
template <class Port, class Embedded, class Server>
std::unique_ptr<Port> makeForServer() {
    if (util::sameName(connectionSetting("Server"), kEmbeddedServer)) {
        return std::make_unique<Embedded>([] { return gDataPath.DataPath; });
    }
    return std::make_unique<Server>([] {
        return platform::OdbcOptions{connectionSetting("Driver"), connectionSetting("Port")};
    });
}

/// The adapters of this machine, with the operator at `Desktop`, installed for as long as the
/// object lives.
template <class Desktop>
class LinkAdapters {
public:
    /// @param arguments  what the desktop is made of.
    template <class... Arguments>
    explicit LinkAdapters(Arguments&&... arguments)
        : desktop_(std::forward<Arguments>(arguments)...) {
        platform::Platform adapters;
        adapters.makeConnection = makeForServer<
            platform::DataConnection,
            platform::SqliteConnection,
            platform::OdbcConnection>;
        adapters.makeManagement = makeForServer<
            platform::ManagementSession,
            platform::SqliteManagement,
            platform::OdbcManagement>;
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

/// Tells on the error output that the settings name no store, which ends the program silently.
inline void tellMissingStore() {
    platform::ignoringErrors([] {
        if (connectionSetting("Server").empty()) {
            std::cerr << "There is no store: the settings " << platform::IniSettingsStore().file()
                      << " name no Server.\n";
        }
    });
}

/// Runs the program on the installed adapters. @return status of the process.
inline int runLink() {
    int status = 0;
    try {
        gpMain_start();
    } catch (const platform::ProgramEnd& end) {
        status = end.status;
    }
    core::resetLink();
    tellMissingStore();
    return status;
}

}  // namespace app
