#include "ui/form.h"

#include "util/conversions.h"
#include "util/overwrite.h"

#include <algorithm>
#include <stdexcept>

namespace ui {

namespace {

std::vector<Form*>& loadedForms() {
    static std::vector<Form*> forms;
    return forms;
}

/// Overwrites a text from a place on, its spare room included.
void overwriteFrom(std::size_t from, std::string& text) {
    const std::size_t size = text.size();
    text.resize(text.capacity());
    util::overwrite(text.data() + from, text.size() - from);
    text.resize(size);
}

ControlState startState(const Control& control) {
    ControlState state;
    state.kind = control.kind;
    state.name = control.name;
    state.index = control.index;
    state.caption = control.caption;
    state.parent = control.parent;
    state.enabled = (control.start & kDisabled) == 0;
    state.visible = (control.start & kHidden) == 0;
    state.locked = (control.start & kLocked) != 0;
    state.value = (control.start & kChecked) != 0 ? 1 : 0;
    return state;
}

}  // namespace

Form::Form(std::string name, std::string title, std::span<const Control> controls)
    : name_(std::move(name)),
      title_(std::move(title)) {
    states_.reserve(controls.size());
    for (const Control& control : controls) {
        states_.push_back(startState(control));
    }
    loadedForms().push_back(this);
}

Form::~Form() {
    std::erase(loadedForms(), this);
}

ControlState* Form::findControl(std::string_view name, int index) {
    const auto found = std::find_if(states_.begin(), states_.end(), [&](const ControlState& state) {
        return state.index == index && util::sameName(state.name, name);
    });
    return found == states_.end() ? nullptr : &*found;
}

ControlState& Form::control(std::string_view name, int index) {
    ControlState* found = findControl(name, index);
    if (found == nullptr) {
        throw std::logic_error(name_ + " has no control " + std::string(name));
    }
    return *found;
}

const std::string& Form::text(std::string_view name, int index) {
    return control(name, index).text;
}

bool Form::isOn(std::string_view name, int index) {
    return control(name, index).value != 0;
}

void Form::setText(std::string_view name, std::string_view text, int index) {
    ControlState& state = control(name, index);
    replaceText(state.text, text);
    if (state.kind == Kind::label || state.kind == Kind::button) {
        state.caption = state.text;
    }
    notify(state);
}

void Form::setCaption(std::string_view name, std::string_view caption, int index) {
    ControlState& state = control(name, index);
    state.caption = std::string(caption);
    notify(state);
}

void Form::setOn(std::string_view name, bool on, int index) {
    ControlState& state = control(name, index);
    state.value = on ? 1 : 0;
    notify(state);
}

void Form::setEnabled(std::string_view name, bool enabled, int index) {
    ControlState& state = control(name, index);
    state.enabled = enabled;
    notify(state);
}

void Form::setVisible(std::string_view name, bool visible, int index) {
    ControlState& state = control(name, index);
    state.visible = visible;
    notify(state);
}

void Form::setLocked(std::string_view name, bool locked, int index) {
    ControlState& state = control(name, index);
    state.locked = locked;
    notify(state);
}

void Form::setCell(std::string_view name, int row, int column, std::string_view text) {
    ControlState& state = control(name);
    state.rows.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column)) =
        std::string(text);
    notify(state);
}

void Form::notify(const ControlState& control) {
    if (observer_ != nullptr) {
        observer_->controlChanged(*this, control);
    }
}

bool Form::isShown(const ControlState& control) {
    if (!control.visible) {
        return false;
    }
    ControlState* parent = control.parent.empty() ? nullptr : findControl(control.parent);
    return parent == nullptr || isShown(*parent);
}

bool Form::raise(std::string_view name, Signal signal, int index, int row, int column) {
    const int keptIndex = raisedIndex_;
    const int keptRow = raisedRow_;
    const int keptColumn = raisedColumn_;
    raisedIndex_ = index;
    raisedRow_ = row;
    raisedColumn_ = column;
    const bool handled = dispatch(name, signal);
    raisedIndex_ = keptIndex;
    raisedRow_ = keptRow;
    raisedColumn_ = keptColumn;
    return handled;
}

void Form::close() {
    closed_ = true;
    if (observer_ != nullptr) {
        observer_->formClosed(*this);
    }
}

void replaceText(std::string& held, std::string_view text) {
    if (text.size() > held.capacity()) {
        std::string grown(text);  // beside the old one, of which `text` may be a part
        overwriteFrom(0, held);
        held.swap(grown);
        return;
    }
    held.assign(text);
    overwriteFrom(held.size(), held);
}

Form* findForm(std::string_view name) {
    const auto& forms = loadedForms();
    const auto found = std::find_if(forms.rbegin(), forms.rend(), [&](const Form* form) {
        return util::sameName(form->name(), name);
    });
    return found == forms.rend() ? nullptr : *found;
}

std::string formText(std::string_view form, std::string_view control, int index) {
    Form* found = findForm(form);
    return found == nullptr ? std::string() : found->text(control, index);
}

void setFormText(
    std::string_view form, std::string_view control, std::string_view text, int index
) {
    if (Form* found = findForm(form)) {
        found->setText(control, text, index);
    }
}

}  // namespace ui
