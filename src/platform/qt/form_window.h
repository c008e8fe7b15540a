#pragma once

#include "platform/qt/layout_builder.h"
#include "ui/form.h"

#include <functional>
#include <string>
#include <vector>

#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace platform {

class BusyBar;
class MnemonicPool;

/// Something that the operator did in a window; played when no event of the toolkit is under way.
struct Act {
    enum class What : unsigned char { signal, close };
    What what = What::signal;
    std::size_t slot = 0;  ///< control, beside the form's controls
    ui::Signal signal = ui::Signal::click;
    int row = 0;
    int column = 0;
    bool byPress = false;  ///< `enter` that a press of the mouse brought
};

/// The window of one form: a widget for each control, placed by the form's layout. Reports what the
/// operator does, and shows the form's state.
class FormWindow : public QWidget {
public:
    using Post = std::function<void(const Act& act)>;
    FormWindow(ui::Form& form, Post post, const DayFirst& dayFirst);
    ~FormWindow() override;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;
    FormWindow(FormWindow&&) = delete;
    FormWindow& operator=(FormWindow&&) = delete;

    [[nodiscard]] ui::Form& form() const { return *form_; }
    /// True as long as the form exists.
    [[nodiscard]] bool isFormThere() const;
    /// Shows the window where its style wants it; the focus goes to the first control.
    void present();
    /// Shows one control as the form has it now.
    void refresh(const ui::ControlState& state);
    /// While work runs only Stop can be used; the focus comes back afterwards.
    void setFrozen(bool frozen);
    [[nodiscard]] bool isFrozen() const { return frozen_; }
    /// Puts the focus where the form's code wants it: when it differs from `before`, to that
    /// control. @return true when the focus was moved to a control that is no list.
    bool followFocus(const ui::Focus& before);
    /// Remembers the place that a list which comes up is laid over.
    void setAnchor(const Act& act);
    /// Opens the list that came up while a handler ran.
    void openPendingList();
    [[nodiscard]] BusyBar* busyBar() const { return busyBar_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeControls(const DayFirst& dayFirst);
    void makeMenus();
    void makeBusyBar(LayoutBuilder& builder);
    void markPages();
    void nameControls();
    void giveLetters();
    void giveLettersOn(std::size_t page, int first, int end, MnemonicPool& pool);
    void giveLetter(std::size_t slot, MnemonicPool& pool);
    void giveKeys();
    void pressByKey(std::size_t slot);
    void refreshCaption(std::size_t slot);
    [[nodiscard]] int letterRound(const ui::ControlState& state) const;
    [[nodiscard]] bool hasFormKey(const ui::ControlState& state) const;
    [[nodiscard]] std::size_t pageOf(std::size_t slot) const;
    void orderTabs();
    bool takeKey(const QWidget& focus, const QKeyEvent& event);
    void watchFocus(std::size_t slot, const QEvent& event);
    void showList(std::size_t slot);
    void hideList(std::size_t slot);
    void setShown(std::size_t slot, bool shown);
    void setUsable(std::size_t slot);
    [[nodiscard]] bool isShutOut(const QWidget& widget, const QEvent& event) const;
    void focusFirst();
    void refreshPages();
    [[nodiscard]] bool floats(std::size_t slot) const;
    [[nodiscard]] std::size_t slotOfWidget(const QObject* widget) const;
    [[nodiscard]] std::size_t slotOfState(const ui::ControlState& state) const;

    ui::Form* form_;
    std::string name_;
    Post post_;
    const layout::Window* layout_;
    QWidget* content_;
    BusyBar* busyBar_ = nullptr;
    std::vector<Slot> slots_;
    Act anchor_;
    bool hasAnchor_ = false;
    bool listPending_ = false;
    std::size_t listSlot_ = 0;
    bool frozen_ = false;
    bool quiet_ = false;         ///< the focus moves without the operator
    std::vector<char> letters_;  ///< by slot; 0: it has none
    std::size_t enteredByMouse_;
    QPointer<QWidget> focusBeforeFreeze_;
};

}  // namespace platform
