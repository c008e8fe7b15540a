#pragma once

#include "platform/qt/qt_desktop.h"
#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"

namespace app {

/// The adapters of this machine, with the operator at the screen, for as long as it lives. A
/// QApplication must exist.
class DesktopAdapters {
public:
    DesktopAdapters();

private:
    platform::IniSettingsStore settings_;
    platform::NativeFiles files_;
    platform::NativeProcesses processes_;
    platform::NativeClock clock_;
    platform::QtDesktop desktop_;
};

/// Runs the program on the installed adapters. @return status of the process.
int runLink();

}  // namespace app
