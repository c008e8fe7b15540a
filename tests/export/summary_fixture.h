#pragma once

#include "companyfile/company_file.h"
#include "core/brv_op.h"
#include "export/summary_export.h"
#include "platform/ports/platform.h"
#include "support/link_fixture.h"
#include "support/standing_clock.h"
#include "ui/form.h"
#include "windows/FrmSummaryExport.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

/// Summary mode on real parts: its company file, the window that shows the progress, and the files
/// of the report tools.
class SummaryFixture : public testing_support::LinkFixture {
protected:
    SummaryFixture() {
        companyfile::CompanyFile::create(companyFile(), "retail-summary");
        gsQBFilePath = companyFile();
        gsFromDate = "1/10/2015";
        ownClock_ = std::exchange(platform::current().clock, &clock_);
        window_.setObserver(&progress_);
    }
    ~SummaryFixture() override { platform::current().clock = ownClock_; }

    /// Puts the totals of the day in place and posts them.
    LegacyBool postTotals(const std::string& text) {
        write("Summary20150110.txt", text);
        gsSummaryFile = folder() + "\\export\\Summary20150110.txt ";
        return gfbSummaryFile_post();
    }
    /// Puts the day's orders in place; they are posted behind the totals.
    void setOrders(const std::string& text) {
        write("POSummary20150110.txt", text);
        gsPOSummaryFile = folder() + "\\export\\POSummary20150110.txt ";
    }
    LegacyBool postOrders(const std::string& text) {
        setOrders(text);
        return gfbPOSummaryFile_post();
    }
    /// What the books hold, one line for each transaction.
    [[nodiscard]] std::vector<std::string> books(std::string_view type = {}) const {
        std::vector<std::string> lines;
        for (const auto& transaction : transactions(type)) {
            lines.push_back(testing_support::describe(transaction));
        }
        return lines;
    }
    /// Documents of one request that the company file carried out, one behind the other.
    [[nodiscard]] std::string sent(const std::string& request) const {
        std::string text;
        for (const std::string& document : faults->documents) {
            text += document.find("<" + request) != std::string::npos ? document + "\n" : "";
        }
        return text;
    }
    [[nodiscard]] const std::vector<std::string>& progress() const { return progress_.texts; }
    [[nodiscard]] const std::vector<int>& pauses() const { return clock_.pauses; }
    [[nodiscard]] std::string lastBox() const {
        return desktop.boxes.empty() ? "" : desktop.boxes.back().text;
    }

private:
    class Progress : public ui::FormObserver {
    public:
        void controlChanged(ui::Form&, const ui::ControlState& control) override {
            if (control.name == "LblStatus") {
                texts.push_back(control.caption);
            }
        }
        void formClosed(ui::Form&) override {}
        std::vector<std::string> texts;
    };

    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(folder() + "/export");
        std::ofstream(folder() + "/export/" + name, std::ios::binary) << text;
    }

    platform::ClockPort* ownClock_ = nullptr;
    testing_support::StandingClock clock_{{2015, 1, 12}};
    Progress progress_;
    FrmSummaryExport window_;
};
