#pragma once

#include "platform/console/console_desktop.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"
#include "windows/setup_fixture.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

/// The buttons and menu entries that cannot be pressed: "name-" is hidden, "name!" disabled.
inline std::string deadButtons(ui::Form& form) {
    std::string text;
    for (const ui::ControlState& state : form.controls()) {
        const bool isButton = state.kind == ui::Kind::button || state.kind == ui::Kind::menuItem;
        const bool isShown = form.isShown(state);
        if (!isButton || (isShown && state.enabled)) {
            continue;
        }
        text += (text.empty() ? "" : " ") + state.name;
        text += state.index == ui::kNoIndex ? "" : "(" + std::to_string(state.index) + ")";
        text += std::string(isShown ? "" : "-") + (state.enabled ? "" : "!");
    }
    return text;
}

/// What an operator at the console saw of a window.
struct Played {
    std::string printed;  ///< all lines but the window's own first one
    std::string dead;     ///< deadButtons() at the end
    std::string working;  ///< deadButtons() while work ran, each state once
    bool ended = false;   ///< the program ended in the window

    /// The texts of the label, in order.
    [[nodiscard]] std::vector<std::string> texts() const {
        constexpr std::string_view kStatus = "[status] ";
        std::vector<std::string> found;
        for (const std::string& line : util::split(printed, '\n')) {
            if (line.starts_with(kStatus)) {
                found.push_back(line.substr(kStatus.size()));
            }
        }
        return found;
    }
};

/// Windows on real parts with their operator at the console.
class WindowOperator : public SetupTest {
protected:
    /// Plays a script; at its end the window is left as by Exit.
    Played play(ui::Form& window, const std::string& script) {
        std::istringstream in(script);
        std::ostringstream out;
        Operator console(in, out, window);
        platform::DesktopPort* const kept = std::exchange(platform::current().desktop, &console);
        Played played;
        try {
            console.showModal(window);
        } catch (const platform::ProgramEnd&) {
            played.ended = true;
        }
        platform::current().desktop = kept;
        played.printed = out.str();
        played.printed.erase(0, played.printed.find("[window] " + window.name()));
        played.printed.erase(0, played.printed.find('\n') + 1);
        played.dead = deadButtons(window);
        played.working = console.working;
        return played;
    }

private:
    /// Looks at the buttons at each yield at which one that was alive is dead.
    class Operator : public platform::ConsoleDesktop {
    public:
        Operator(std::istream& in, std::ostream& out, ui::Form& window)
            : ConsoleDesktop(in, out),
              window_(&window) {}
        std::string working;

        void pendingEvents() override {
            const ui::ControlState* const stop = window_->findControl("cmdStop");
            const ui::ControlState* const start = window_->findControl("Cmdexport");
            const bool works =
                (stop != nullptr && stop->enabled) || (start != nullptr && !start->enabled);
            const std::string dead = deadButtons(*window_);
            if (works && working.find(dead) == std::string::npos) {
                working += (working.empty() ? "" : " / ") + dead;
            }
            ConsoleDesktop::pendingEvents();
        }

    private:
        ui::Form* window_;
    };
};

}  // namespace testing_support
