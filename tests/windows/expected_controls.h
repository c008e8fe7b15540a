#pragma once

#include "support/expected_file.h"
#include "ui/form.h"

#include <sstream>
#include <string>

namespace testing_support {

inline std::string describeControl(ui::Form& form, const ui::ControlState& state) {
    std::ostringstream text;
    text << state.name;
    if (state.index != ui::kNoIndex) {
        text << '(' << state.index << ')';
    }
    text << " kind=" << static_cast<int>(state.kind) << " \"" << state.caption << '"';
    text << (state.parent.empty() ? "" : " in " + state.parent);
    text << (form.isShown(state) ? "" : " hidden") << (state.enabled ? "" : " disabled");
    text << (state.locked ? " locked" : "") << (state.value != 0 ? " on" : "") << '\n';
    return text.str();
}

/// Compares the controls of a new window with `windows/<name>.txt`; each key must name one of them.
inline void expectControls(ui::Form& window) {
    std::string text = "\"" + window.title() + "\"\n";
    for (const ui::ControlState& state : window.controls()) {
        text += describeControl(window, state);
    }
    for (const ui::Key& key : window.keys()) {
        EXPECT_NE(window.findControl(key.control, key.index), nullptr) << key.key;
        text += std::string(key.key) + " clicks " + key.control;
        text += key.index == ui::kNoIndex ? "\n" : "(" + std::to_string(key.index) + ")\n";
    }
    expectFile("windows/" + window.name() + ".txt", text);
}

}  // namespace testing_support
