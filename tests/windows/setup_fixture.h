#pragma once

#include "support/link_fixture.h"

#include <string>
#include <vector>

namespace testing_support {

/// The main window on a store without sales, with an operator's hands.
class SetupTest : public LinkFixture {
protected:
    /// Opens the window on a new store; what was said while it opened is forgotten.
    void open() {
        makeStore(0, 1);
        openSetup();
        desktop.boxes.clear();
    }
    /// Clicks a box or option button until it stands as told.
    void check(const std::string& name, bool on = true, int index = ui::kNoIndex) {
        setup->setOn(name, on, index);
        setup->raise(name, ui::Signal::click, index);
    }
    void press(const std::string& name, int index = ui::kNoIndex) {
        setup->raise(name, ui::Signal::click, index);
    }
    /// Types into a field and leaves it.
    void type(const std::string& name, const std::string& text, int index = ui::kNoIndex) {
        setup->setText(name, text, index);
        setup->raise(name, ui::Signal::leave, index);
    }
    [[nodiscard]] bool visible(const std::string& name, int index = ui::kNoIndex) {
        return setup->isShown(setup->control(name, index));
    }
    [[nodiscard]] bool enabled(const std::string& name, int index = ui::kNoIndex) {
        return setup->control(name, index).enabled;
    }
    /// Numbers of the boxes `chkExport` that are on, as "03".
    [[nodiscard]] std::string checkedExports() {
        std::string numbers;
        for (int index = 0; index < 7; ++index) {
            numbers += setup->isOn("chkExport", index) ? std::to_string(index) : "";
        }
        return numbers;
    }
    /// Texts of the boxes since the last call, joined by " / ".
    std::string boxes() {
        std::string joined;
        for (const std::string& text : desktop.boxTexts()) {
            joined += (joined.empty() ? "" : " / ") + text;
        }
        desktop.boxes.clear();
        return joined;
    }
};

}  // namespace testing_support
