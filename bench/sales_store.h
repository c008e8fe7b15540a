#pragma once

#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "support/fake_desktop.h"
#include "support/store_adapters.h"
#include "support/temp_folder.h"

#include <cstdint>
#include <string>

namespace bench {

/// A store under an adapter with `sales` sales, numbered in a scattered order. One lives at a time.
class SalesStore {
public:
    SalesStore(testing_support::StoreAdapter adapter, std::int32_t sales);
    ~SalesStore();
    SalesStore(const SalesStore&) = delete;
    SalesStore& operator=(const SalesStore&) = delete;
    SalesStore(SalesStore&&) = delete;
    SalesStore& operator=(SalesStore&&) = delete;

    /// The movements of the sales export: to the first sale behind a mark, here the lowest, and on
    /// to the next one. @return false when there is none.
    static bool first();
    static bool next();
    /// Walks from the first sale to the end. @return sales seen.
    static std::int64_t walk();

    /// Statements that passed the data port; the measurements set it to 0.
    std::int64_t statements = 0;

private:
    void install();
    void open();
    static void fill(std::int32_t sales);

    testing_support::StoreAdapter adapter_;
    std::string catalog_;
    testing_support::TempFolder folder_;
    platform::IniSettingsStore settings_;
    platform::NativeFiles files_;
    platform::NativeProcesses processes_;
    platform::NativeClock clock_;
    testing_support::RecordingDesktop desktop_;
};

}  // namespace bench
