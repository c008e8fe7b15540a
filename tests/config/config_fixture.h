#pragma once

#include "config/clsDataPath.h"
#include "platform/ports/platform.h"
#include "platform/system/ini_settings_store.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "support/fake_desktop.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

/// Settings and files of this machine below a scratch folder, with an operator who is played.
class ConfigTest : public testing::Test {
protected:
    ConfigTest() {
        platform::Platform adapters;
        adapters.desktop = &desktop;
        adapters.settings = &settings;
        adapters.files = &files;
        adapters.processes = &processes;
        platform::install(adapters);
        config::resetConfig();
    }
    ~ConfigTest() override {
        config::resetConfig();
        platform::install({});
    }
    ConfigTest(const ConfigTest&) = delete;
    ConfigTest& operator=(const ConfigTest&) = delete;
    ConfigTest(ConfigTest&&) = delete;
    ConfigTest& operator=(ConfigTest&&) = delete;

    testing_support::TempFolder folder;
    testing_support::RecordingDesktop desktop;
    platform::IniSettingsStore settings{folder.file("settings.ini")};
    platform::NativeFiles files{folder.file("program")};
    platform::NativeProcesses processes;
};
