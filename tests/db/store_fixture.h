#pragma once

#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "support/fake_desktop.h"
#include "support/store_adapters.h"
#include "support/temp_folder.h"
#include "support/watched_store.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using testing_support::adapterName;
using testing_support::embeddedStore;
using testing_support::StoreAdapter;
using testing_support::storeAdapters;

/// The record engine on a real store in a folder of its own. What passes the data ports is watched.
class StoreTest : public ::testing::TestWithParam<StoreAdapter> {
protected:
    StoreTest();
    ~StoreTest() override;

    /// Makes the catalog and connects to it; no table is there yet.
    void connect();
    /// Makes all tables, with a row of Common, as the first start of a store does.
    void openStore();
    /// Forgets the engine's state, as the end of the program does.
    void endProgram();
    /// Does `work`; true when that ended the program.
    static bool endsProgram(const std::function<void()>& work);
    /// Runs a statement past the engine.
    static void execute(const std::string& statement);
    /// First column of the first row of a statement, as text.
    static std::string query(const std::string& statement);
    [[nodiscard]] std::string fileText(const std::string& name) const;
    void setSetting(const std::string& key, const std::string& value);
    [[nodiscard]] const std::string& catalogName() const { return catalogName_; }

    testing_support::TempFolder folder;
    testing_support::RecordingDesktop desktop;
    testing_support::StoreWatch watch;

private:
    std::string catalogName_;
    platform::IniSettingsStore settings_;
    platform::NativeFiles files_;
    platform::NativeProcesses processes_;
    platform::NativeClock clock_;
};

/// Puts a customer with these keys into the table.
void addName(std::int32_t number, const std::string& code, const std::string& lastName);
