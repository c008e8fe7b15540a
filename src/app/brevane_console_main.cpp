#include "config/clsDataPath.h"
#include "core/brv_main.h"
#include "platform/console/console_desktop.h"
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

#include <exception>
#include <iostream>
#include <memory>

namespace {

constexpr int kScriptBroken = 2;
constexpr int kPlatformFailed = 3;
constexpr int kWrongCall = 64;

constexpr char kUsage[] =
    "usage: brevane-console < SCRIPT\n"
    "Posts a store's records into its company file. Reads the operator's actions, one a line,\n"
    "from the standard input and prints what the windows show. No arguments.\n"
    "BREVANE_PROGRAM_FOLDER  folder of the program's own files\n"
    "BREVANE_QBXML_LOG       file to which every document sent and received is appended\n"
    "Status: 0 the program ended by itself, 2 the script cannot be understood, 3 the platform\n"
    "failed before the program could start.\n";

/// The adapters of this machine, with the operator at the standard input, for as long as it lives.
class ConsoleAdapters {
public:
    ConsoleAdapters() : desktop_(std::cin, std::cout) {
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
    platform::ConsoleDesktop desktop_;
};

/// Runs the program on the installed adapters. @return status of the process.
int runLink() {
    int status = 0;
    try {
        gpMain_start();
    } catch (const platform::ProgramEnd& end) {
        status = end.status;
    } catch (const platform::ConsoleScriptError& error) {
        std::cerr << "brevane-console: " << error.message << "\n";
        status = kScriptBroken;
    }
    core::resetLink();
    return status;
}

}  // namespace

int main(int argc, char** /*argv*/) {
    if (argc > 1) {
        std::cerr << kUsage;
        return kWrongCall;
    }
    try {
        const ConsoleAdapters adapters;
        return runLink();
    } catch (const std::exception& error) {
        std::cerr << "brevane-console: " << error.what() << "\n";
        return kPlatformFailed;
    }
}
