#include "platform/console/console_desktop.h"
#include "util/conversions.h"

#include <algorithm>
#include <iterator>

/// The actions of the console operator.
namespace platform {

namespace {

bool isTyped(ui::Kind kind) {
    return kind == ui::Kind::textBox || kind == ui::Kind::passwordBox ||
           kind == ui::Kind::datePicker;
}

bool isKeyName(const std::string& key) {
    static constexpr const char* kKeys[] = {
        "F1",
        "F2",
        "F3",
        "F4",
        "F5",
        "F6",
        "F7",
        "F8",
        "F9",
        "F10",
        "F11",
        "F12",
        "Esc",
        "Enter",
    };
    const bool isLetter = key.size() == 1 && util::upper(key) >= "A" && util::upper(key) <= "Z";
    return isLetter || std::any_of(std::begin(kKeys), std::end(kKeys), [&](const char* known) {
               return util::sameName(known, key);
           });
}

/// The action without the text that is typed: that may be a password.
ConsoleAction withoutText(const ConsoleAction& action) {
    ConsoleAction result = action;
    result.line = action.verb + " " + action.rest.substr(0, action.rest.find(' '));
    return result;
}

[[noreturn]] void refuseScript(const std::string& reason, const ConsoleAction& action) {
    throw ConsoleScriptError{reason + ": " + action.line};
}

}  // namespace

struct ConsoleDesktop::ActionRow {
    const char* verb;
    Play play;
};

const ConsoleDesktop::ActionRow* ConsoleDesktop::findRow(const std::string& verb) {
    static constexpr ActionRow kRows[] = {
        {"check", &ConsoleDesktop::playCheck},
        {"uncheck", &ConsoleDesktop::playUncheck},
        {"set", &ConsoleDesktop::playSet},
        {"leave", &ConsoleDesktop::playLeave},
        {"select", &ConsoleDesktop::playSelect},
        {"click", &ConsoleDesktop::playClick},
        {"cell", &ConsoleDesktop::playCell},
        {"menu", &ConsoleDesktop::playMenu},
        {"key", &ConsoleDesktop::playKey},
        {"answer", &ConsoleDesktop::playAnswer},
        {"file", &ConsoleDesktop::playFile},
        {"stop", &ConsoleDesktop::playStop},
        {"show", &ConsoleDesktop::playShow},
        {"close", &ConsoleDesktop::playClose},
    };
    const auto* const row = std::find_if(std::begin(kRows), std::end(kRows), [&](const auto& one) {
        return verb == one.verb;
    });
    return row == std::end(kRows) ? nullptr : row;
}

void ConsoleDesktop::play(const ConsoleAction& action) {
    const ActionRow* row = findRow(action.verb);
    if (row == nullptr) {
        refuseScript("no action", action);
    }
    lastBox_.clear();
    ++depth_;
    try {
        (this->*row->play)(action);
    } catch (...) {
        --depth_;
        throw;
    }
    --depth_;
}

ui::ControlState& ConsoleDesktop::find(const ConsoleAction& action, const ConsoleTarget& target) {
    ui::ControlState* state = form_->findControl(target.name, target.index);
    if (state == nullptr) {
        refuseScript("no control of " + form_->name(), action);
    }
    return *state;
}

/// False, with a line, for a control that an operator could not reach.
bool ConsoleDesktop::accepts(const ConsoleAction& action, const ui::ControlState& state) {
    if (!form_->isShown(state)) {
        printer_.refused(action.line, "hidden");
        return false;
    }
    if (!state.enabled) {
        printer_.refused(action.line, "disabled");
        return false;
    }
    return true;
}

void ConsoleDesktop::raiseClick(const ui::ControlState& state) {
    form_->setFocus(state.name);
    form_->raise(state.name, ui::Signal::click, state.index);
}

/// A click that may start work: the one that `stop after` is armed for.
void ConsoleDesktop::pressButton(const ui::ControlState& state) {
    if (stop_) {
        stop_->running = true;
    }
    raiseClick(state);
    stop_.reset();
}

/// Sets a box as the mouse does: the other option buttons of its array go off.
void ConsoleDesktop::toggle(ui::ControlState& state, bool on) {
    if (state.kind == ui::Kind::optionButton) {
        for (ui::ControlState& other : form_->controls()) {
            if (other.kind == state.kind && util::sameName(other.name, state.name)) {
                form_->setOn(other.name, false, other.index);
            }
        }
    }
    form_->setOn(state.name, on, state.index);
    raiseClick(state);
}

void ConsoleDesktop::setChecked(const ConsoleAction& action, bool on) {
    ui::ControlState& state = find(action, consoleTarget(action));
    const bool isOption = state.kind == ui::Kind::optionButton;
    if (!isOption && state.kind != ui::Kind::checkBox) {
        printer_.refused(action.line, "no check box");
    } else if (isOption && !on) {
        printer_.refused(action.line, "an option button goes off with another");
    } else if (accepts(action, state) && (state.value != 0) != on) {
        toggle(state, on);
    }
}

void ConsoleDesktop::playCheck(const ConsoleAction& action) {
    setChecked(action, true);
}

void ConsoleDesktop::playUncheck(const ConsoleAction& action) {
    setChecked(action, false);
}

void ConsoleDesktop::playSet(const ConsoleAction& action) {
    const ConsoleTarget target = consoleTarget(action);
    const ui::ControlState& state = find(action, target);
    const ConsoleAction shown = withoutText(action);
    if (!isTyped(state.kind)) {
        printer_.refused(shown.line, "no field");
    } else if (accepts(shown, state)) {
        if (state.locked) {
            printer_.refused(shown.line, "locked");
            return;
        }
        form_->setFocus(state.name);
        form_->setText(state.name, target.text, state.index);
        form_->raise(state.name, ui::Signal::change, state.index);
    }
}

void ConsoleDesktop::playLeave(const ConsoleAction& action) {
    const ui::ControlState& state = find(action, consoleTarget(action));
    if (accepts(action, state)) {
        form_->setFocus("");
        form_->raise(state.name, ui::Signal::leave, state.index);
    }
}

void ConsoleDesktop::playSelect(const ConsoleAction& action) {
    const ConsoleTarget target = consoleTarget(action);
    const ui::ControlState& state = find(action, target);
    if (state.kind != ui::Kind::dropDown) {
        printer_.refused(action.line, "no list");
    } else if (accepts(action, state)) {
        const auto& items = state.items;
        if (std::find(items.begin(), items.end(), target.text) == items.end()) {
            printer_.refused(action.line, "the list has no such entry");
            return;
        }
        form_->setText(state.name, target.text, state.index);
        form_->raise(state.name, ui::Signal::select, state.index);
    }
}

void ConsoleDesktop::clickControl(const ConsoleAction& action, ui::ControlState& state) {
    if (!accepts(action, state)) {
        return;
    }
    if (state.kind == ui::Kind::checkBox) {
        toggle(state, state.value == 0);
    } else if (state.kind == ui::Kind::optionButton) {
        toggle(state, true);
    } else {
        pressButton(state);
    }
}

void ConsoleDesktop::playClick(const ConsoleAction& action) {
    clickControl(action, find(action, consoleTarget(action)));
}

void ConsoleDesktop::playMenu(const ConsoleAction& action) {
    ui::ControlState& state = find(action, consoleTarget(action));
    if (state.kind != ui::Kind::menuItem) {
        printer_.refused(action.line, "no menu entry");
        return;
    }
    clickControl(action, state);
}

void ConsoleDesktop::playCell(const ConsoleAction& action) {
    const ConsoleTarget target = consoleTarget(action);
    const ui::ControlState& state = find(action, target);
    const std::size_t blank = target.text.find(' ');
    if (blank == std::string::npos) {
        refuseScript("row and column are missing", action);
    }
    const int row = consoleNumber(action, target.text.substr(0, blank));
    const int column = consoleNumber(action, target.text.substr(blank + 1));
    if (!accepts(action, state)) {
        return;
    }
    const auto rowAt = static_cast<std::size_t>(row);
    if (rowAt >= state.rows.size() ||
        static_cast<std::size_t>(column) >= state.rows[rowAt].size()) {
        printer_.refused(action.line, "no such cell");
        return;
    }
    form_->setFocus(state.name);
    form_->raise(state.name, ui::Signal::click, state.index, row, column);
}

/// The first control of the key that can be clicked is; a key may have several.
void ConsoleDesktop::playKey(const ConsoleAction& action) {
    if (!isKeyName(action.rest)) {
        refuseScript("no key", action);
    }
    for (const ui::Key& key : form_->keys()) {
        ui::ControlState& state = form_->control(key.control, key.index);
        if (util::sameName(key.key, action.rest) && state.enabled && form_->isShown(state)) {
            pressButton(state);
            return;
        }
    }
    printer_.refused(action.line, "no control that is enabled and visible");
}

void ConsoleDesktop::playAnswer(const ConsoleAction& action) {
    for (const BoxAnswer answer :
         {BoxAnswer::ok, BoxAnswer::cancel, BoxAnswer::yes, BoxAnswer::no}) {
        if (action.rest == answerWord(answer)) {
            answers_.push_back(answer);
            return;
        }
    }
    refuseScript("no answer", action);
}

void ConsoleDesktop::playFile(const ConsoleAction& action) {
    if (util::trim(action.rest).empty()) {
        refuseScript("no file is named", action);
    }
    files_.push_back(action.rest);
}

void ConsoleDesktop::playStop(const ConsoleAction& action) {
    constexpr std::string_view kAfter = "after ";
    if (!action.rest.starts_with(kAfter)) {
        refuseScript("no action", action);
    }
    stop_ = Stop{consoleNumber(action, action.rest.substr(kAfter.size())), false};
}

void ConsoleDesktop::playShow(const ConsoleAction& action) {
    if (!action.rest.empty()) {
        printer_.control(*form_, find(action, consoleTarget(action)));
        return;
    }
    printer_.window(*form_);
    for (const ui::ControlState& state : form_->controls()) {
        printer_.control(*form_, state);
    }
}

void ConsoleDesktop::playClose(const ConsoleAction& /*action*/) {
    form_->close();
}

}  // namespace platform
