#pragma once

#include "ui/control.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ui {

class Form;

/// Who draws a form: is told of every change.
class FormObserver {
public:
    virtual ~FormObserver() = default;
    /// Something about one control changed.
    virtual void controlChanged(Form& form, const ControlState& control) = 0;
    /// The form closes (or hides): a modal display of it ends.
    virtual void formClosed(Form& form) = 0;
};

/// A control by its name; an empty name stands for none.
struct Focus {
    std::string name;
    int index = kNoIndex;
    [[nodiscard]] bool operator==(const Focus& other) const = default;
};

/// A row of a form's handler table: `member` runs when `signal` reaches the control `name`; the
/// name of the form itself stands for load, activate and unload. Members of a control array share a
/// row.
template <class FormClass>
struct Handler {
    const char* name;
    Signal signal;
    void (FormClass::*member)();
};

/// A window as data: controls with their state, and handlers. Holds rules and no toolkit. A loaded
/// form can be found by its name (findForm). One thread.
class Form {
public:
    Form(std::string name, std::string title, std::span<const Control> controls);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    Form(Form&&) = delete;
    Form& operator=(Form&&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::string& title() const { return title_; }
    void setTitle(std::string title) { title_ = std::move(title); }
    [[nodiscard]] std::vector<ControlState>& controls() { return states_; }
    [[nodiscard]] virtual std::span<const Key> keys() const { return {}; }

    /// The control; asking for one that the form does not have is an error of the program.
    [[nodiscard]] ControlState& control(std::string_view name, int index = kNoIndex);
    /// The control, or nothing. Letter case does not matter.
    [[nodiscard]] ControlState* findControl(std::string_view name, int index = kNoIndex);
    [[nodiscard]] const std::string& text(std::string_view name, int index = kNoIndex);
    [[nodiscard]] bool isOn(std::string_view name, int index = kNoIndex);
    /// Changes that code makes raise no handler; the observer is told. The text that stood there
    /// before is overwritten.
    void setText(std::string_view name, std::string_view text, int index = kNoIndex);
    void setCaption(std::string_view name, std::string_view caption, int index = kNoIndex);
    void setOn(std::string_view name, bool on, int index = kNoIndex);
    void setEnabled(std::string_view name, bool enabled, int index = kNoIndex);
    void setVisible(std::string_view name, bool visible, int index = kNoIndex);
    void setLocked(std::string_view name, bool locked, int index = kNoIndex);
    void setCell(std::string_view name, int row, int column, std::string_view text);
    /// Tells the observer that a control was changed through control().
    void notify(const ControlState& control);
    /// True when the control and every frame around it are visible.
    [[nodiscard]] bool isShown(const ControlState& control);

    /// Runs the handler for a signal that the operator (or the adapter) raises. False: there is
    /// none. The raised index, row and column can be read while it runs.
    bool
    raise(std::string_view name, Signal signal, int index = kNoIndex, int row = 0, int column = 0);
    /// Ends the display of this form; showModal returns.
    void close();
    [[nodiscard]] bool isClosed() const { return closed_; }
    /// Called by the adapter before the form is shown (again).
    void reopen() { closed_ = false; }

    void setObserver(FormObserver* observer) { observer_ = observer; }
    /// The control that has the focus; kept by the adapter, may be set by code.
    [[nodiscard]] const Focus& focus() const { return focus_; }
    void setFocus(std::string_view name, int index = kNoIndex) {
        focus_ = Focus{std::string(name), index};
    }

protected:
    /// Finds the handler in the class's table and runs it.
    virtual bool dispatch(std::string_view name, Signal signal) = 0;

    [[nodiscard]] int raisedIndex() const { return raisedIndex_; }
    [[nodiscard]] int raisedRow() const { return raisedRow_; }
    [[nodiscard]] int raisedColumn() const { return raisedColumn_; }

private:
    std::string name_;
    std::string title_;
    std::vector<ControlState> states_;
    FormObserver* observer_ = nullptr;
    Focus focus_;
    bool closed_ = false;
    int raisedIndex_ = kNoIndex;
    int raisedRow_ = 0;
    int raisedColumn_ = 0;
};

/// Runs the first row of `handlers` that fits; for a form's dispatch().
template <class FormClass, std::size_t Count>
bool runHandler(
    FormClass& form,
    const Handler<FormClass> (&handlers)[Count],  // NOLINT(modernize-avoid-c-arrays)
    std::string_view name,
    Signal signal
) {
    const auto* const handler =
        std::find_if(std::begin(handlers), std::end(handlers), [&](const auto& row) {
            return name == row.name && signal == row.signal;
        });
    if (handler == std::end(handlers)) {
        return false;
    }
    (form.*handler->member)();
    return true;
}

/// Puts `text` into `held`. What `held` was before is overwritten, so that no copy of a typed
/// password stays behind in memory that is given back.
void replaceText(std::string& held, std::string_view text);

/// The form of that name that exists now, or nothing.
Form* findForm(std::string_view name);
/// Text of a control of a form; empty when there is no such form.
std::string formText(std::string_view form, std::string_view control, int index = kNoIndex);
/// Sets the text (a label's caption) of a control of a form; nothing when there is no such form.
void setFormText(
    std::string_view form, std::string_view control, std::string_view text, int index = kNoIndex
);

}  // namespace ui
