#include "desktop_adapters.h"

#include "config/clsDataPath.h"
#include "core/brv_main.h"
#include "db/nuvDBSM_Common.h"
#include "platform/ports/platform.h"
#include "platform/qbxml/logging_channel.h"
#include "platform/qbxml/session_manager.h"
#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_management.h"
#include "platform/standin/standin_channel.h"
#include "platform/system/file_names.h"

#include <memory>

namespace app {

namespace {

platform::QtHost host() {
    platform::QtHost result;
    result.nativeName = [](const std::string& name) { return platform::nativeName(name); };
    result.dayFirst = [] { return gCommon.USEurope.view() == "E"; };
    return result;
}

}  // namespace

DesktopAdapters::DesktopAdapters() : desktop_(host()) {
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

int runLink() {
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
