#pragma once

#include "companyfile/company_file.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "support/fake_desktop.h"
#include "support/fault_channel.h"
#include "support/store_adapters.h"
#include "support/temp_folder.h"
#include "support/watched_store.h"
#include "windows/frmSetup.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace testing_support {

/// The whole link on real parts, in a folder of its own: store, settings, stand-in company
/// file. The operator is a RecordingDesktop; faults of the company file are planned in `faults`.
class LinkFixture : public ::testing::Test {
protected:
    /// @param adapter  where the store's tables are: in the folder, unless another one is given.
    explicit LinkFixture(StoreAdapter adapter = embeddedStore().front());
    ~LinkFixture() override;

    /// Makes a sample store of `sales` sales on `days` days (0: lists without sales) and its
    /// company file, and opens the tables as the program's start does.
    void makeStore(int sales, int days);
    /// Opens the main window on the store: mapping read, session opened.
    void openSetup();
    /// Closes the window, forgets the state of the link, and opens both anew, as the next start of
    /// the program does.
    void restart();
    /// Forgets the link's state, then starts the program as `main` does; `script` plays the
    /// operator at the main window. @return true when it ended by itself, false when the start gave
    /// up.
    bool runProgram(const std::function<void(frmSetup&)>& script = {});
    /// Turns the check box `chkExport(index)` on and presses `Cmdexport`.
    void exportChecked(int index);
    void click(std::string_view control);
    /// Writes a sale into the tables; numbers and dates are completed from the head's invoice.
    void addSale(const db::SalesHeadRecord& head, std::vector<db::SalesItemRecord> items);
    void execute(const std::string& statement);

    [[nodiscard]] std::string status();
    /// Value of a key of `QBLINK.NUV`; empty when it is not there.
    [[nodiscard]] std::string setupValue(const std::string& section, const std::string& key);
    void
    setSetupValue(const std::string& section, const std::string& key, const std::string& value);
    /// Text of a file in the data folder; empty when it is not there.
    [[nodiscard]] std::string fileText(const std::string& name) const;
    /// How often the run log holds `part`.
    [[nodiscard]] std::size_t logged(std::string_view part) const;
    /// Transactions of the company file, of one type when it is given.
    [[nodiscard]] std::vector<companyfile::TransactionSummary>
    transactions(std::string_view type = {}) const;
    [[nodiscard]] std::string folder() const { return folder_.path().string(); }
    [[nodiscard]] const StoreAdapter& adapter() const { return adapter_; }
    [[nodiscard]] std::string companyFile() const { return folder() + "/company.qbw"; }

    RecordingDesktop desktop;
    std::shared_ptr<FaultPlan> faults = std::make_shared<FaultPlan>();
    /// Statements that reach the store, and the faults put in their way.
    StoreWatch store;
    std::unique_ptr<frmSetup> setup;

private:
    void install();
    void openTables();

    StoreAdapter adapter_;
    TempFolder folder_;
    platform::IniSettingsStore settings_;
    platform::NativeFiles files_;
    platform::NativeProcesses processes_;
    platform::NativeClock clock_;
    std::int32_t lastSaleId_ = 1000000;
};

/// One line that says what a transaction holds: type, total, tax, and each line's item, quantity,
/// amount and tax code; a journal's lines with account and amount, credits negative.
std::string describe(const companyfile::TransactionSummary& transaction);

}  // namespace testing_support
