#pragma once

#include "support/link_fixture.h"

#include <algorithm>
#include <string>
#include <vector>

/// The store's lists on real parts: a store without sales, the setup window open on it, and a
/// company file that holds the posting items.
class ListFixture : public testing_support::LinkFixture {
protected:
    enum Export : int { kInventory, kNames, kVendors, kSales, kPurchases, kSalesCodes, kTenders };

    void SetUp() override {
        makeStore(0, 3);
        openSetup();
        click("CmdInitialized");
    }
    /// Exports one list and leaves its box off.
    void exportOnly(Export list) {
        exportChecked(list);
        setup->setOn("chkExport", false, list);
    }
    void typeManual(const std::string& box, const std::string& field, const std::string& text) {
        setup->setOn(box, true);
        setup->raise(box, ui::Signal::click);
        setup->setText(field, text);
    }
    [[nodiscard]] std::string mark(const char* key) { return setupValue("IMPORT HIST", key); }
    [[nodiscard]] std::string books() const {
        return companyfile::CompanyFile::open(companyFile()).dump();
    }
    [[nodiscard]] bool booksName(const std::string& name) const {
        return books().find("\"Name\": \"" + name + "\"") != std::string::npos;
    }
    /// How many documents that hold all of `parts` the company file carried out.
    [[nodiscard]] std::ptrdiff_t sent(const std::vector<std::string>& parts) const {
        return std::count_if(
            faults->documents.begin(),
            faults->documents.end(),
            [&](const std::string& document) {
                return std::all_of(parts.begin(), parts.end(), [&](const std::string& part) {
                    return document.find(part) != std::string::npos;
                });
            }
        );
    }
    /// Presses Stop as soon as the label shows a text that holds `part`.
    void stopAfter(const std::string& part) {
        const auto press = [this, part] {
            if (status().find(part) != std::string::npos) {
                click("cmdStop");
            }
        };
        for (int yield = 1; yield < 2000; ++yield) {
            desktop.onYield[desktop.yields + yield] = press;
        }
    }
};
