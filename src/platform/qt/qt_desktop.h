#pragma once

#include "platform/ports/desktop.h"
#include "platform/qt/form_window.h"
#include "platform/qt/message_boxes.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QUrl;

namespace platform {

/// What the desktop needs of the program around it.
struct QtHost {
    /// The native name of a file by its name in the suite; without one, names are taken as they
    /// are.
    std::function<std::string(const std::string&)> nativeName;
    /// How the store writes a date; without one, the month comes first.
    DayFirst dayFirst;
    /// Hands a document to the system's viewer; without one, the system's own way. False: nothing
    /// opens it, and a text is shown in a window of the program.
    std::function<bool(const QUrl&)> openUrl;
};

/// The operator at a screen. Draws every form from its controls and its layout.
///
/// No handler runs inside an event of the toolkit: what the operator does is kept and played by
/// showModal() one after the other, so that the link may end the program from anywhere. While a
/// handler runs, pendingEvents() serves painting, moving and Stop. Esc and the close box then press
/// Stop, and close the window when the work has come to its end. A QApplication must exist.
class QtDesktop : public DesktopPort, private ui::FormObserver {
public:
    explicit QtDesktop(QtHost host = {});
    ~QtDesktop() override;
    QtDesktop(const QtDesktop&) = delete;
    QtDesktop& operator=(const QtDesktop&) = delete;
    QtDesktop(QtDesktop&&) = delete;
    QtDesktop& operator=(QtDesktop&&) = delete;

    void showModal(ui::Form& form) override;
    void showModeless(ui::Form& form) override;
    BoxAnswer messageBox(
        const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon
    ) override;
    void pendingEvents() override;
    void setBusyCursor(bool busy) override;
    void openDocument(const std::string& name) override;
    std::string chooseFile(
        const std::string& title, const std::string& startPath, const std::string& filter
    ) override;
    /// False once the operator has asked to close the window of a run.
    [[nodiscard]] bool hasOperator() const override;

private:
    /// A window on the screen, with what waits to be played in it.
    struct Shown {
        std::unique_ptr<FormWindow> window;
        std::deque<Act> acts;
        bool modal = false;
        bool working = false;  ///< a handler of it runs that a click (or its start) began
        bool leaving = false;  ///< close when the work has ended
        Act leave;             ///< how
    };

    void controlChanged(ui::Form& form, const ui::ControlState& control) override;
    void formClosed(ui::Form& form) override;

    Shown& open(ui::Form& form, bool modal);
    void start(Shown& shown);
    void closeWindow(const Shown& shown);
    void dropDeadWindows();
    void wait(Shown& shown);
    void play(Shown& shown, const Act& act);
    void playField(Shown& shown, const Act& act);
    static void playSignal(Shown& shown, const Act& act);
    void runWork(Shown& shown, const std::function<void()>& handler);
    void endWork(Shown& shown);
    static void serveStop(Shown& shown);
    [[nodiscard]] static bool canStop(ui::Form& form);
    static void pressStop(Shown& shown);
    static void toggle(ui::Form& form, std::size_t slot);
    [[nodiscard]] static bool canPlay(ui::Form& form, const Act& act);
    [[nodiscard]] Shown* shownOf(const ui::Form& form);
    [[nodiscard]] Shown* top();
    [[nodiscard]] QWidget* topWidget();

    QtHost host_;
    std::vector<std::unique_ptr<Shown>> shown_;
    MessageBoxes boxes_;
    bool busyCursor_ = false;
};

}  // namespace platform
