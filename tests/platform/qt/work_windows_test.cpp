#include "config/clsDataPath.h"
#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/summary_setup.h"
#include "qb/smQB_Utilities.h"
#include "screen.h"
#include "windows/FrmQuickSetUP.h"
#include "windows/FrmSummaryExport.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSM_DATAPATH2.h"

#include <fstream>

#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

/// Hasty operators: two presses in one event, windows closed while they work, dialogs given up.
namespace {

using testing_support::OnScreen;
using testing_support::Operator;

/// How often each control was clicked, as the form heard it.
std::map<std::string, int> heard;

int clicksOn(const std::string& control) {
    return heard[control.substr(0, control.find('('))];
}

template <class Base>
class Counting : public Base {
public:
    using Base::Base;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override {
        heard[std::string(name)] += signal == ui::Signal::click ? 1 : 0;
        return Base::dispatch(name, signal);
    }
};

class WorkWindows : public OnScreen {
protected:
    WorkWindows() : OnScreen(12, 2) {
        gsQBFilePath = companyFile();
        gsFromDate = "1/5/2015";
        std::ofstream(folder() + "/QBLINK.LOG") << "a line\r\n";
        heard.clear();
    }

    /// Shows a window while somebody acts in it. @return true when the program ended in it.
    bool show(ui::Form& form) {
        bool ended = false;
        try {
            platform::desktop().showModal(form);
        } catch (const platform::ProgramEnd&) {
            ended = true;
        }
        EXPECT_TRUE(person.isDone());
        return ended;
    }
    /// Waits until nothing runs in the window any more.
    void awaitRest(const std::string& window) {
        person.then([window] {
            auto* shown = formWindow(window);
            return shown != nullptr && QApplication::activeModalWidget() == shown &&
                   !shown->isFrozen();
        });
        person.act([] {}).act([] {});
    }

    Operator person;
};

void pressTwice(Operator& person, const std::string& control) {
    person.then([control] {
        QWidget* widget = Operator::find(control);
        if (widget == nullptr || !widget->isEnabled()) {
            return false;
        }
        const QPoint place(9, widget->height() / 2);
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, place);
        return true;
    });
}

struct TwoPresses {
    const char* what;
    const char* before;  ///< pressed first, once
    const char* control;
};

constexpr TwoPresses kSetupPresses[] = {
    {"sales", "chkExport(3)", "Cmdexport"},
    {"nothing to export", "", "Cmdexport"},
    {"the posting items", "", "CmdInitialized"},
    {"the log", "", "CmdViewLog"},
    {"the end of the log", "", "cmdDeleteLog"},
    {"help", "", "cmdHelp"},
    {"saving", "", "cmdAcceptCancel(0)"},
};

TEST_F(WorkWindows, twoPressesInOneEventStartOneRunInTheMainWindow) {
    for (const TwoPresses& row : kSetupPresses) {
        SCOPED_TRACE(row.what);
        heard.clear();
        Counting<frmSetup> window;
        person.await("frmSetup");
        if (*row.before != '\0') {
            person.press(row.before);
        }
        pressTwice(person, row.control);
        awaitRest("frmSetup");
        person.act([] { Operator::window("frmSetup")->close(); });
        show(window);
        EXPECT_EQ(clicksOn(row.control), 1);
    }
}

constexpr TwoPresses kQuickPresses[] = {
    {"vendors", "", "MyButton1"},
    {"the log", "", "CmdViewLog"},
};

TEST_F(WorkWindows, twoPressesInOneEventStartOneRunInTheQuickSetup) {
    for (const TwoPresses& row : kQuickPresses) {
        SCOPED_TRACE(row.what);
        heard.clear();
        Counting<FrmQuickSetUP> window;
        pressTwice(person.await("FrmQuickSetUP"), row.control);
        awaitRest("FrmQuickSetUP");
        pressTwice(person, "cmdAccept");
        EXPECT_FALSE(show(window));
        EXPECT_EQ(clicksOn(row.control), 1);
        EXPECT_EQ(heard["cmdAccept"], 1);
    }
}

TEST_F(WorkWindows, aBrowserComesUpOnceForTwoPresses) {
    Counting<frmSetup> window;
    pressTwice(person.await("frmSetup"), "cmdFind");
    person.await("frmSMFILE_PATH").key(Qt::Key_Escape);
    awaitRest("frmSetup");
    person.act([] { Operator::window("frmSetup")->close(); });
    show(window);
    EXPECT_EQ(heard["cmdFind"], 1);
    EXPECT_EQ(window.text("TxtPath"), companyFile());
    EXPECT_EQ(gsQBFilePath, companyFile());
}

// ---- closed while they work ----

struct WayOut {
    const char* what;
    void (*deed)(const char* window);
};
const WayOut kWaysOut[] = {
    {"the close box", [](const char* window) { Operator::window(window)->close(); }},
    {"Esc", [](const char* window) { QTest::keyClick(Operator::window(window), Qt::Key_Escape); }},
};

TEST_F(WorkWindows, theQuickSetupIsLeftWhenItsVendorsAreDone) {
    for (const WayOut& way : kWaysOut) {
        SCOPED_TRACE(way.what);
        holdBack("<VendorQueryRq");
        FrmQuickSetUP window;
        bool stood = false;
        person.await("FrmQuickSetUP").press("MyButton1").then([this] { return isWaiting(); });
        person.act([&way] { way.deed("FrmQuickSetUP"); });
        person.act([&] {
            stood = Operator::window("FrmQuickSetUP") != nullptr && isWaiting();
            answer();
        });
        EXPECT_TRUE(show(window));
        EXPECT_TRUE(stood);
        EXPECT_EQ(gbQBReady, kNo);
        platform::current().makeSessionManager = nullptr;
    }
}

TEST_F(WorkWindows, thePostingWindowIsLeftWhenTheDayIsPosted) {
    std::filesystem::create_directory(folder() + "/export");
    for (const WayOut& way : kWaysOut) {
        SCOPED_TRACE(way.what);
        holdBack("AddRq");
        std::ofstream(folder() + "/export/Summary20150105.txt")
            << "0100|Sales A|10.00\n0012|Cash|10.00\n";
        gsSummaryFile = folder() + "\\export\\Summary20150105.txt ";
        gsToDate = "1/5/2015";
        FrmSummaryExport window;
        bool stood = false;
        person.await("FrmSummaryExport").then([this] { return isWaiting(); });
        person.act([&way] { way.deed("FrmSummaryExport"); });
        person.act([&] {
            stood = Operator::window("FrmSummaryExport") != nullptr && isWaiting();
            answer();
        });
        EXPECT_FALSE(show(window));
        EXPECT_TRUE(stood);
        EndSessionCloseConnection();
    }
}

/// The field of the path opens another company file when it is left.
TEST_F(WorkWindows, theMainWindowTakesNothingWhileAFieldOpensTheFile) {
    const std::string other = folder() + "/other.qbw";
    std::filesystem::copy_file(companyFile(), other);
    holdBack("<AccountQueryRq");
    answer();
    Counting<frmSetup> window;
    bool isUsable = true;
    person.then([] {
        const QWidget* shown = Operator::window("frmSetup");
        return shown != nullptr && shown->isActiveWindow();
    });
    person.act([&] {
        letWait();
        auto* path = dynamic_cast<QLineEdit*>(Operator::find("TxtPath"));
        path->setFocus();
        path->selectAll();
        QTest::keyClicks(path, QString::fromStdString(other));
        QTest::mouseClick(Operator::find("CmdViewLog"), Qt::LeftButton);
    });
    person.then([this] { return isWaiting(); }).act([&] {
        isUsable = Operator::find("Cmdexport")->isEnabled();
        QTest::mouseClick(Operator::find("cmdHelp"), Qt::LeftButton);
        QTest::keyClick(Operator::find("TxtPath"), Qt::Key_F1);
        QTest::keyClicks(Operator::find("txtNet"), "7");
        answer();
    });
    awaitRest("frmSetup");
    person.act([] { Operator::window("frmSetup")->close(); });
    show(window);
    EXPECT_FALSE(isUsable);
    EXPECT_EQ(heard["cmdHelp"], 0);
    EXPECT_EQ(window.text("txtNet"), "30");
    EXPECT_EQ(heard["CmdViewLog"], 1);  // pressed to leave the field
    EXPECT_EQ(gsQBFilePath, other);
}

// ---- dialogs given up ----

void giveUpFileChoice(Operator& person) {
    person.then([] {
        auto* dialog = dynamic_cast<QFileDialog*>(Operator::window("chooseFile"));
        if (dialog != nullptr) {
            dialog->reject();
        }
        return dialog != nullptr;
    });
}

TEST_F(WorkWindows, theQuickSetupStaysWithoutAFileWhenTheChoiceIsGivenUp) {
    gsQBFilePath.clear();
    Counting<FrmQuickSetUP> window;
    giveUpFileChoice(person);
    person.await("FrmQuickSetUP").press("TxtPath");
    giveUpFileChoice(person);
    pressTwice(person, "TxtPath");
    giveUpFileChoice(person);
    awaitRest("FrmQuickSetUP");
    person.press("cmdAccept");
    EXPECT_FALSE(show(window));
    EXPECT_EQ(window.text("TxtPath"), "");
    EXPECT_EQ(gsQBFilePath, "");
    EXPECT_EQ(gbQBReady, kNo);
    EXPECT_EQ(heard["TxtPath"], 2);
}

TEST_F(WorkWindows, theDataPathStaysWhenItsBrowserIsGivenUp) {
    gDataPath.DataPath = folder();
    gDataPath.StationPathEnabled = kYes;
    gDataPath.StationPath = "/stations";
    frmSM_DATAPATH2 window;
    person.await("frmSM_DATAPATH2");
    for (const char* button : {"cmdBrowse", "cmdBrowsePath"}) {
        person.press(button).await("frmSMFILE_PATH").key(Qt::Key_Escape);
        person.then([] { return Operator::window("frmSMFILE_PATH") == nullptr; });
    }
    person.key(Qt::Key_Escape);
    show(window);
    EXPECT_EQ(window.text("txtEdit", 0), "/stations");
    EXPECT_EQ(window.text("txtEdit", 1), folder());
    EXPECT_EQ(gDataPath.Cancelled, kYes);
}

/// The box names the data path: the focus goes there, and what is typed corrects it.
TEST_F(WorkWindows, theFocusGoesToTheFieldThatIsWrong) {
    gDataPath.DataPath = "/before";
    gDataPath.StationPathEnabled = kNo;
    gDataPath.StationNumberEnabled = kNo;
    for (const bool byMouse : {true, false}) {
        SCOPED_TRACE(byMouse);
        frmSM_DATAPATH2 window;
        const int boxes = person.boxes;
        person.await("frmSM_DATAPATH2").act([] {
            auto* field = dynamic_cast<QLineEdit*>(Operator::find("txtEdit(1)"));
            EXPECT_EQ(field->window()->focusWidget(), field);  // the first that takes letters
            field->setText("");
            QTest::keyClicks(field, "/nowhere");
            Operator::find("chkNetwork")->setFocus();
        });
        if (byMouse) {
            person.press("cmdOkCancel(0)");
        } else {
            person.key(Qt::Key_F10);
        }
        person.then([this, boxes] { return person.boxes > boxes; });
        person.then([] { return Operator::find("txtEdit(1)") != nullptr; }).act([] {}).act([] {
            const QWidget* field = Operator::find("txtEdit(1)");
            EXPECT_EQ(field->window()->focusWidget(), field);
        });
        person.key(Qt::Key_Escape);
        show(window);
    }
}

}  // namespace
