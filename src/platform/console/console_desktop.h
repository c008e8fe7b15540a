#pragma once

#include "platform/console/console_printer.h"
#include "platform/console/console_script.h"
#include "platform/ports/desktop.h"

#include <deque>
#include <optional>
#include <string>

namespace platform {

/// The operator at a stream: reads one action a line and says what the program shows, for servers,
/// tests and demonstrations. Actions are read only while a window waits for its operator; boxes
/// and choices of a file take the answers that were queued before, else their default button or
/// none.
class ConsoleDesktop : public DesktopPort, private ui::FormObserver {
public:
    ConsoleDesktop(std::istream& in, std::ostream& out);

    /// Plays actions until the form is closed. At the end of the input the form is closed as by its
    /// key "Esc". @throws ConsoleScriptError for an action that cannot be understood.
    void showModal(ui::Form& form) override;
    void showModeless(ui::Form& form) override;
    BoxAnswer messageBox(
        const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon
    ) override;
    /// Presses `cmdStop` when `stop after` is due.
    void pendingEvents() override;
    void setBusyCursor(bool busy) override;
    void openDocument(const std::string& name) override;
    /// The file that was queued; without one the choice is cancelled.
    std::string chooseFile(
        const std::string& title, const std::string& startPath, const std::string& filter
    ) override;
    /// While an action runs nobody reads the script, so only a queued answer counts then.
    [[nodiscard]] bool hasOperator() const override;

private:
    using Play = void (ConsoleDesktop::*)(const ConsoleAction& action);
    struct ActionRow;
    /// The armed Stop: pressed at the first yield after `after` status texts of one click.
    struct Stop {
        int after = 0;
        bool running = false;  ///< the click that it was armed for is under way
    };

    void controlChanged(ui::Form& form, const ui::ControlState& control) override;
    void formClosed(ui::Form& form) override;

    static const ActionRow* findRow(const std::string& verb);
    void open(ui::Form& form);
    void play(const ConsoleAction& action);
    void closeAsByExit();

    void playCheck(const ConsoleAction& action);
    void playUncheck(const ConsoleAction& action);
    void playSet(const ConsoleAction& action);
    void playLeave(const ConsoleAction& action);
    void playSelect(const ConsoleAction& action);
    void playClick(const ConsoleAction& action);
    void playMenu(const ConsoleAction& action);
    void playCell(const ConsoleAction& action);
    void playKey(const ConsoleAction& action);
    void playAnswer(const ConsoleAction& action);
    void playFile(const ConsoleAction& action);
    void playStop(const ConsoleAction& action);
    void playShow(const ConsoleAction& action);
    void playClose(const ConsoleAction& action);

    ui::ControlState& find(const ConsoleAction& action, const ConsoleTarget& target);
    bool accepts(const ConsoleAction& action, const ui::ControlState& state);
    void setChecked(const ConsoleAction& action, bool on);
    void clickControl(const ConsoleAction& action, ui::ControlState& state);
    void toggle(ui::ControlState& state, bool on);
    void raiseClick(const ui::ControlState& state);
    void pressButton(const ui::ControlState& state);
    BoxAnswer nextAnswer(const std::string& box, BoxButtons buttons);

    ConsoleScript script_;
    ConsolePrinter printer_;
    ui::Form* form_ = nullptr;  ///< the window that waits for the operator
    std::deque<BoxAnswer> answers_;
    std::deque<std::string> files_;  ///< for the coming choices of a file
    std::optional<Stop> stop_;
    int depth_ = 0;  ///< actions under way
    bool ended_ = false;
    std::string lastBox_;
    int sameBoxes_ = 0;
};

}  // namespace platform
