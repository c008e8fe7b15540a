#include "platform/console/console_desktop.h"

#include "util/conversions.h"

#include <utility>

namespace platform {

namespace {

/// A question that comes back this often without anything between takes the refusing button: nobody
/// is there who could end it otherwise.
constexpr int kPatience = 3;

BoxAnswer defaultAnswer(BoxButtons buttons) {
    return buttons == BoxButtons::yesNo ? BoxAnswer::yes : BoxAnswer::ok;
}

BoxAnswer refusingAnswer(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::yesNo:
        return BoxAnswer::no;
    case BoxButtons::okCancel:
        return BoxAnswer::cancel;
    case BoxButtons::ok:
        break;
    }
    return BoxAnswer::ok;
}

bool hasButton(BoxButtons buttons, BoxAnswer answer) {
    return answer == defaultAnswer(buttons) || answer == refusingAnswer(buttons);
}

/// Puts a value back at the end of a block.
template <class Value>
class Restore {
public:
    Restore(Value& place, Value value) : place_(&place), kept_(place) { place = value; }
    ~Restore() { *place_ = kept_; }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;
    Restore(Restore&&) = delete;
    Restore& operator=(Restore&&) = delete;

private:
    Value* place_;
    Value kept_;
};

}  // namespace

ConsoleDesktop::ConsoleDesktop(std::istream& in, std::ostream& out) : script_(in), printer_(out) {}

void ConsoleDesktop::open(ui::Form& form) {
    form.reopen();
    form.setObserver(this);
    const Restore<int> busy(depth_, depth_ + 1);
    form.raise(form.name(), ui::Signal::load);
    printer_.window(form);
    form.raise(form.name(), ui::Signal::activate);
}

void ConsoleDesktop::showModeless(ui::Form& form) {
    open(form);
}

void ConsoleDesktop::showModal(ui::Form& form) {
    const Restore<ui::Form*> window(form_, &form);
    open(form);
    const Restore<int> idle(depth_, 0);
    while (!form.isClosed()) {
        if (const auto action = ended_ ? std::nullopt : script_.next()) {
            play(*action);
        } else {
            ended_ = true;
            closeAsByExit();
        }
    }
    form.raise(form.name(), ui::Signal::unload);
}

/// The control of the key "Esc" as if it were clicked; without one the close box.
void ConsoleDesktop::closeAsByExit() {
    ui::Form& form = *form_;
    const Restore<int> busy(depth_, depth_ + 1);
    for (const ui::Key& key : form.keys()) {
        if (std::string_view(key.key) == "Esc") {
            form.raise(key.control, ui::Signal::click, key.index);
        }
    }
    if (!form.isClosed()) {
        form.close();
    }
}

BoxAnswer ConsoleDesktop::nextAnswer(const std::string& box, BoxButtons buttons) {
    sameBoxes_ = box == lastBox_ ? sameBoxes_ + 1 : 1;
    lastBox_ = box;
    if (!answers_.empty()) {
        const BoxAnswer answer = answers_.front();
        answers_.pop_front();
        if (hasButton(buttons, answer)) {
            return answer;
        }
        printer_.refused(std::string("answer ") + answerWord(answer), "the box has no such button");
    }
    return sameBoxes_ > kPatience ? refusingAnswer(buttons) : defaultAnswer(buttons);
}

BoxAnswer ConsoleDesktop::messageBox(
    const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon /*icon*/
) {
    const BoxAnswer answer = nextAnswer(title + "\n" + text, buttons);
    printer_.box(title, text, buttons, answer);
    return answer;
}

void ConsoleDesktop::pendingEvents() {
    if (!stop_ || !stop_->running || stop_->after > 0 || form_ == nullptr) {
        return;
    }
    stop_.reset();  // pressing it serves pending events again
    ui::ControlState* button = form_->findControl("cmdStop");
    const ConsoleAction press{"click cmdStop", "click", "cmdStop"};
    if (button == nullptr) {
        printer_.refused(press.line, "the window has no such button");
    } else if (accepts(press, *button)) {
        form_->raise(button->name, ui::Signal::click, button->index);
    }
}

void ConsoleDesktop::setBusyCursor(bool /*busy*/) {}

void ConsoleDesktop::openDocument(const std::string& name) {
    printer_.document(name);
}

std::string ConsoleDesktop::chooseFile(
    const std::string& title, const std::string& startPath, const std::string& /*filter*/
) {
    std::string file;
    if (!files_.empty()) {
        file = std::move(files_.front());
        files_.pop_front();
    }
    printer_.fileChoice(title, startPath, file);
    return file;
}

bool ConsoleDesktop::hasOperator() const {
    return !answers_.empty() || (depth_ == 0 && !ended_);
}

void ConsoleDesktop::controlChanged(ui::Form& /*form*/, const ui::ControlState& control) {
    if (!util::sameName(control.name, "LblStatus")) {
        return;
    }
    lastBox_.clear();
    printer_.status(control.caption);
    if (stop_ && stop_->running && stop_->after > 0) {
        --stop_->after;
    }
}

void ConsoleDesktop::formClosed(ui::Form& /*form*/) {}

}  // namespace platform
