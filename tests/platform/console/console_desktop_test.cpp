#include "platform/console/console_desktop.h"

#include <functional>
#include <sstream>

#include <gtest/gtest.h>

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

constexpr ui::Control kControls[] = {
    {ui::Kind::menuItem, "mnuExit", ui::kNoIndex, "Exit"},
    {ui::Kind::textBox, "txtPath", ui::kNoIndex, "Path"},
    {ui::Kind::textBox, "txtMark", ui::kNoIndex, "Mark", ui::kLocked},
    {ui::Kind::passwordBox, "txtSecret", ui::kNoIndex, "Secret", ui::kDisabled},
    {ui::Kind::checkBox, "chkExport", 0, "Names"},
    {ui::Kind::checkBox, "chkExport", 3, "Sales"},
    {ui::Kind::optionButton, "Option1", 0, "Details", ui::kChecked},
    {ui::Kind::optionButton, "Option1", 1, "Summary"},
    {ui::Kind::frame, "Page", ui::kNoIndex, "Page", ui::kHidden},
    {ui::Kind::button, "cmdHidden", ui::kNoIndex, "Hidden", ui::kPlain, "Page"},
    {ui::Kind::button, "cmdRun", ui::kNoIndex, "Run"},
    {ui::Kind::button, "cmdAsk", ui::kNoIndex, "Ask"},
    {ui::Kind::button, "cmdStop", ui::kNoIndex, "Stop"},
    {ui::Kind::button, "cmdExit", ui::kNoIndex, "Exit"},
    {ui::Kind::dropDown, "cboAcct", ui::kNoIndex, ""},
    {ui::Kind::grid, "fgrdList", ui::kNoIndex, ""},
    {ui::Kind::label, "LblStatus", ui::kNoIndex, "Status"},
};

constexpr ui::Key kKeys[] = {
    {"F8", "cmdHidden"},
    {"F8", "cmdRun"},
    {"F9", "cmdHidden"},
    {"E", "mnuExit"},
    {"Esc", "cmdExit"}};

/// A window that tells in its label what it was asked.
class ScriptedForm : public ui::Form {
public:
    explicit ScriptedForm(platform::ConsoleDesktop& desktop)
        : Form("frmSmall", "A | B", kControls),
          desktop_(&desktop) {
        control("cboAcct").items = {"Cash Drawer", "Caf\xE9 \\ Bar"};
        control("fgrdList").rows = {{"NUV Acct", "QuickBook Acct"}, {"CASH  ", "Cash|Drawer"}};
    }
    [[nodiscard]] std::span<const ui::Key> keys() const override { return kKeys; }
    int steps = 5;  ///< status texts of one run
    std::function<void()> onAsk;
    std::function<void()> onActivate;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override {
        using ui::Signal;
        if (signal == Signal::activate && onActivate) {
            onActivate();
        }
        if (signal == Signal::load || signal == Signal::activate) {
            return false;
        }
        if (name == "cmdRun") {
            run();
        } else if (name == "cmdStop") {
            stopped_ = true;
            desktop_->pendingEvents();
        } else if (name == "cmdAsk") {
            onAsk();
        } else if (name == "cmdExit") {
            setText("LblStatus", "leaving");
            close();
        } else {
            setText("LblStatus", describe(name, signal));
        }
        return true;
    }

private:
    std::string describe(std::string_view name, ui::Signal signal) {
        static constexpr const char* kSignals[] = {
            "load", "activate", "unload", "click", "enter", "leave", "change", "select"};
        std::string text(name);
        text += " ";
        text += kSignals[static_cast<std::size_t>(signal)];
        if (raisedColumn() != 0 || raisedRow() != 0) {
            text += " " + std::to_string(raisedRow()) + "," + std::to_string(raisedColumn());
        }
        if (raisedIndex() != ui::kNoIndex) {
            text += " " + std::to_string(raisedIndex());
        }
        return text;
    }
    void run() {
        stopped_ = false;
        for (int step = 1; step <= steps && !stopped_; ++step) {
            setText("LblStatus", "step " + std::to_string(step));
            desktop_->pendingEvents();
        }
        setText("LblStatus", stopped_ ? "stopped" : "done");
    }

    platform::ConsoleDesktop* desktop_;
    bool stopped_ = false;
};

struct Session {
    std::istringstream in;
    std::ostringstream out;
    platform::ConsoleDesktop desktop;
    ScriptedForm form;
    explicit Session(const std::string& script) : in(script), desktop(in, out), form(desktop) {}
    /// What was printed between the window's own line and its end.
    std::string play() {
        desktop.showModal(form);
        const std::string first = "[window] frmSmall \"A \\| B\"\n";
        const std::string last = "[status] leaving\n[status] frmSmall unload\n";
        std::string text = out.str();
        EXPECT_TRUE(text.starts_with(first));
        EXPECT_TRUE(text.ends_with(last)) << text;
        return text.substr(first.size(), text.size() - first.size() - last.size());
    }
};

struct ScriptCase {
    const char* what;
    const char* script;
    const char* printed;
};

constexpr ScriptCase kScripts[] = {
    {"comments and blank lines are passed over", "# check chkExport(0)\n\n   \n", ""},
    {"a box is clicked when it changes",
     "check chkExport(3)\r\ncheck chkExport(3)\nuncheck chkExport(3)\nshow chkExport(3)",
     "[status] chkExport click 3\n[status] chkExport click 3\n"
     "[control] chkExport(3) checkBox 0 enabled visible\n"},
    {"an option button puts its neighbour off, and goes off only so",
     "check Option1(1)\nuncheck Option1(1)\nshow Option1(0)\nshow Option1(1)",
     "[status] Option1 click 1\n"
     "[refused] uncheck Option1(1): an option button goes off with another\n"
     "[control] Option1(0) optionButton 0 enabled visible\n"
     "[control] Option1(1) optionButton 1 enabled visible\n"},
    {"a text is taken as it stands, a comment sign and blanks with it",
     "set txtPath  C:\\data #1 \nshow txtPath\nleave txtPath",
     "[status] txtPath change\n"
     "[control] txtPath textBox \" C:\\\\data #1 \" enabled visible\n"
     "[status] txtPath leave\n"},
    {"an empty text empties a field",
     "set txtPath abc\nset txtPath\nshow txtPath",
     "[status] txtPath change\n[status] txtPath change\n"
     "[control] txtPath textBox \"\" enabled visible\n"},
    {"locked, disabled and hidden controls refuse, and typed text is not repeated",
     "set txtMark 1\nset txtSecret hush\nclick cmdHidden\nset cmdRun x\nmenu cmdRun",
     "[refused] set txtMark: locked\n[refused] set txtSecret: disabled\n"
     "[refused] click cmdHidden: hidden\n[refused] set cmdRun: no field\n"
     "[refused] menu cmdRun: no menu entry\n"},
    {"an entry is picked by its text, in UTF-8",
     "select cboAcct Caf\xC3\xA9 \\ Bar\nshow cboAcct\nselect cboAcct Elsewhere\nselect txtPath x",
     "[status] cboAcct select\n"
     "[control] cboAcct dropDown \"Caf\xC3\xA9 \\\\ Bar\" enabled visible\n"
     "[refused] select cboAcct Elsewhere: the list has no such entry\n"
     "[refused] select txtPath x: no list\n"},
    {"a cell is clicked by row and column, and a grid shows its rows",
     "cell fgrdList 1 1\ncell fgrdList 2 0\nshow fgrdList",
     "[status] fgrdList click 1,1\n[refused] cell fgrdList 2 0: no such cell\n"
     "[control] fgrdList grid 2 enabled visible\n"
     "[row] NUV Acct | QuickBook Acct\n[row] CASH   | Cash\\|Drawer\n"},
    {"a key acts on the first of its controls that can be reached, in any letter case",
     "key f8\nkey F9\nkey F3\nkey e\nkey q",
     "[status] step 1\n[status] step 2\n[status] step 3\n[status] step 4\n[status] step 5\n"
     "[status] done\n"
     "[refused] key F9: no control that is enabled and visible\n"
     "[refused] key F3: no control that is enabled and visible\n"
     "[status] mnuExit click\n"
     "[refused] key q: no control that is enabled and visible\n"},
    {"a menu entry is clicked", "menu mnuExit", "[status] mnuExit click\n"},
    {"Stop is pressed at the first yield after the texts, in the next run only",
     "stop after 2\ncheck chkExport(0)\nclick cmdRun\nclick cmdRun",
     "[status] chkExport click 0\n[status] step 1\n[status] step 2\n[status] stopped\n"
     "[status] step 1\n[status] step 2\n[status] step 3\n[status] step 4\n[status] step 5\n"
     "[status] done\n"},
    {"a Stop that is never due is forgotten",
     "stop after 9\nclick cmdRun\nstop after 1\nclick cmdRun",
     "[status] step 1\n[status] step 2\n[status] step 3\n[status] step 4\n[status] step 5\n"
     "[status] done\n[status] step 1\n[status] stopped\n"},
};

}  // namespace

TEST(ConsoleDesktop, playsActionsAndSaysWhatTheWindowShows) {
    for (const ScriptCase& row : kScripts) {
        SCOPED_TRACE(row.what);
        Session session(row.script);
        EXPECT_EQ(session.play(), row.printed);
    }
}

TEST(ConsoleDesktop, endsOnWhatIsNoScript) {
    constexpr const char* kBroken[] = {
        "dance",
        "click",
        "click cmdNothing",
        "click chkExport",
        "check chkExport(7)",
        "check chkExport(x)",
        "cell fgrdList 1",
        "cell fgrdList one 1",
        "answer perhaps",
        "stop",
        "stop after soon",
        "stop after -1",
        "key F88",
        "key ?",
        "file ",
        "show cmdNothing",
    };
    for (const char* script : kBroken) {
        SCOPED_TRACE(script);
        Session session(script);
        EXPECT_THROW(session.desktop.showModal(session.form), platform::ConsoleScriptError);
    }
}

TEST(ConsoleDesktop, answersBoxesFromTheQueueAndElseByTheDefaultButton) {
    Session session("answer no\nanswer yes\nclick cmdAsk\nclose");
    std::vector<BoxAnswer> answers;
    const auto ask = [&](const char* text, BoxButtons buttons) {
        answers.push_back(session.desktop.messageBox(text, "T|", buttons, BoxIcon::none));
    };
    bool operatorBefore = false;
    bool operatorAfter = true;
    session.form.onAsk = [&] {
        operatorBefore = session.desktop.hasOperator();
        ask("one\r\ntwo", BoxButtons::yesNo);
        ask("three\\", BoxButtons::ok);
        ask("four", BoxButtons::okCancel);
        operatorAfter = session.desktop.hasOperator();
    };
    session.desktop.showModal(session.form);
    EXPECT_EQ(answers, (std::vector{BoxAnswer::no, BoxAnswer::ok, BoxAnswer::ok}));
    EXPECT_TRUE(operatorBefore);
    EXPECT_FALSE(operatorAfter);
    EXPECT_EQ(
        session.out.str(),
        "[window] frmSmall \"A \\| B\"\n"
        "[box] T\\| | one\\ntwo | yes/no -> no\n"
        "[refused] answer yes: the box has no such button\n"
        "[box] T\\| | three\\\\ | ok -> ok\n"
        "[box] T\\| | four | ok/cancel -> ok\n"
        "[status] frmSmall unload\n"
    );
}

TEST(ConsoleDesktop, nobodyCanAnswerWhileAWindowWorksOnItsOwn) {
    Session session("answer ok\nclose");
    session.form.onActivate = [&] { EXPECT_FALSE(session.desktop.hasOperator()); };
    EXPECT_TRUE(session.desktop.hasOperator());
    session.desktop.showModal(session.form);
}

TEST(ConsoleDesktop, choosesTheFilesThatWereQueued) {
    Session session("file /books/a b.qbw\nclick cmdAsk\nclose");
    std::string chosen;
    session.form.onAsk = [&] {
        for (int count = 0; count < 2; ++count) {
            chosen += session.desktop.chooseFile("Open", "C:\\KV", "*.qbw") + ";";
        }
    };
    session.desktop.showModal(session.form);
    EXPECT_EQ(chosen, "/books/a b.qbw;;");
    EXPECT_EQ(
        session.out.str(),
        "[window] frmSmall \"A \\| B\"\n"
        "[file] Open | C:\\\\KV -> /books/a b.qbw\n"
        "[file] Open | C:\\\\KV -> cancel\n"
        "[status] frmSmall unload\n"
    );
}

// A question that waits for an answer nobody is there to give must not hold the program for ever.
TEST(ConsoleDesktop, refusesAQuestionThatComesBackWithoutEnd) {
    Session session("click cmdAsk");
    int asked = 0;
    session.form.onAsk = [&] {
        do {
            ++asked;
        } while (session.desktop.messageBox("Retry?", "", BoxButtons::yesNo, BoxIcon::question) ==
                 BoxAnswer::yes);
    };
    session.play();
    EXPECT_EQ(asked, 4);
}
