#pragma once

#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "support/fake_desktop.h"
#include "support/temp_folder.h"
#include "support/watched_store.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// A data adapter under which the engine is tested.
struct StoreAdapter {
    const char* name;
    const char* server;  ///< setting "Server"
    std::unique_ptr<platform::DataConnection> (*makeConnection)(const std::string& folder);
    std::unique_ptr<platform::ManagementSession> (*makeManagement)(const std::string& folder);
};

/// The adapters that are there; a further one is a further row.
std::vector<StoreAdapter> storeAdapters();

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
    std::string catalogName_ = "NUVDATA1";
    platform::IniSettingsStore settings_;
    platform::NativeFiles files_;
    platform::NativeProcesses processes_;
    platform::NativeClock clock_;
};

/// Name of the adapter, for the test's name.
std::string adapterName(const ::testing::TestParamInfo<StoreAdapter>& info);

/// Puts a customer with these keys into the table.
void addName(std::int32_t number, const std::string& code, const std::string& lastName);
