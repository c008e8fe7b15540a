#include "core/brv_main.h"
#include "operator.h"
#include "platform/ports/platform.h"
#include "platform/qbxml/session_manager.h"
#include "platform/qt/busy_bar.h"
#include "platform/qt/qt_desktop.h"
#include "platform/standin/standin_channel.h"
#include "platform/system/file_names.h"
#include "support/link_fixture.h"

#include <fstream>
#include <map>

#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

using testing_support::LinkFixture;
using testing_support::Operator;

/// The whole program with its windows, on a small store.
class Desktop : public LinkFixture {
protected:
    Desktop() {
        testing_support::application();
        platform::QtHost host;
        host.nativeName = [](const std::string& name) { return platform::nativeName(name); };
        host.openUrl = [this](const QUrl& url) {
            opened = url;
            return true;
        };
        screen = std::make_unique<platform::QtDesktop>(host);
        makeStore(40, 2);
        core::resetLink();
        platform::current().desktop = screen.get();
        person.await("frmSetup");
    }

    /// Starts the program; returns when it has ended by itself.
    void runOnScreen() {
        bool ended = false;
        try {
            gpMain_start();
        } catch (const platform::ProgramEnd&) {
            ended = true;
        }
        EXPECT_TRUE(ended);
        EXPECT_TRUE(person.isDone());
    }

    /// Does something once the run has gone through some records.
    void whenRecordsAreDone(int records, std::function<void()> deed) {
        person.then([records, deed = std::move(deed)] {
            auto* window = dynamic_cast<platform::FormWindow*>(Operator::window("frmSetup"));
            if (window == nullptr || !window->isFrozen() ||
                window->busyBar()->records() < records) {
                return false;
            }
            deed();
            return true;
        });
    }

    /// Waits for the end of the run that was started.
    void awaitEnd() {
        const auto isFrozen = [] {
            auto* window = dynamic_cast<platform::FormWindow*>(Operator::window("frmSetup"));
            return window->isFrozen();
        };
        person.then(isFrozen).then([isFrozen] { return !isFrozen(); });
    }

    std::size_t sales() { return transactions().size(); }

    std::unique_ptr<platform::QtDesktop> screen;
    Operator person;
    QUrl opened;
};

std::string shownStatus() {
    return dynamic_cast<QLabel*>(Operator::find("LblStatus"))->text().toStdString();
}

TEST_F(Desktop, exportsByMouse) {
    std::string status;
    person.press("chkExport(3)").press("Cmdexport");
    awaitEnd();
    person.act([&] { status = shownStatus(); });
    person.press("CmdViewLog").press("cmdAcceptCancel(1)");
    runOnScreen();
    EXPECT_GE(sales(), 5U);
    EXPECT_EQ(status, "Sales Files Importing Complete...");
    EXPECT_TRUE(opened.toLocalFile().endsWith("QBLINK.LOG")) << opened.toString().toStdString();
}

TEST_F(Desktop, exportsByKeyboard) {
    person.act([] { Operator::find("chkExport(3)")->setFocus(); });
    person.key(Qt::Key_Space).key(Qt::Key_F8);
    awaitEnd();
    person.key(Qt::Key_Escape);
    runOnScreen();
    EXPECT_GE(sales(), 5U);
}

/// Where the focus may be when a key of the window is pressed.
const char* const kFocusPlaces[] = {
    "fgrdList", "txtNet", "chkExport(3)", "cmdRun(0)", "CmdInitialized", "txtToDate"};

TEST_F(Desktop, keysOfTheWindowActWhereverTheFocusIs) {
    std::vector<std::string> log;
    std::vector<std::string> expected;
    int boxesBefore = 0;
    const auto read = [&] {
        log.push_back(opened.isLocalFile() ? opened.fileName().toStdString() : "guides");
        opened.clear();
    };
    std::ofstream(folder() + "/QBLINK.LOG") << "a line\r\n";
    for (const char* place : kFocusPlaces) {
        person.act([place] { Operator::find(place)->setFocus(); });
        person.key(Qt::Key_F1).then([&] { return !opened.isEmpty(); }).act(read);
        person.key(Qt::Key_F2).then([&] { return !opened.isEmpty(); }).act(read);
        person.act([&] { boxesBefore = person.boxes; }).key(Qt::Key_F8);
        person.then([&] { return person.boxes > boxesBefore; });  // there is nothing to export
        expected.insert(expected.end(), {"guides", "QBLINK.LOG"});
    }
    person.key(Qt::Key_F10).then([] { return !Operator::find("cmdAcceptCancel(0)")->isEnabled(); });
    person.key(Qt::Key_Escape);
    runOnScreen();
    EXPECT_EQ(log, expected);
}

struct Interruption {
    const char* what;
    void (*deed)();
    bool ends;  ///< the program, too
};

const Interruption kInterruptions[] = {
    {"Stop by mouse", [] { QTest::mouseClick(Operator::find("cmdStop"), Qt::LeftButton); }, false},
    {"Stop by its key", [] { QTest::keyClick(Operator::find("cmdStop"), Qt::Key_F7); }, false},
    {"the close box", [] { Operator::window("frmSetup")->close(); }, true},
    {"Esc", [] { QTest::keyClick(Operator::window("frmSetup"), Qt::Key_Escape); }, true},
};

class Interrupted : public Desktop, public ::testing::WithParamInterface<Interruption> {};

TEST_P(Interrupted, endsWithTheRecordUnderWay) {
    std::string status;
    int records = 0;
    person.press("chkExport(3)").press("Cmdexport");
    whenRecordsAreDone(5, [&] {
        records =
            dynamic_cast<platform::FormWindow*>(Operator::window("frmSetup"))->busyBar()->records();
        GetParam().deed();
    });
    if (!GetParam().ends) {
        person.then([] {
            auto* window = dynamic_cast<platform::FormWindow*>(Operator::window("frmSetup"));
            return !window->isFrozen();
        });
        person.act([&] { status = shownStatus(); });
        person.press("cmdAcceptCancel(1)");
    }
    runOnScreen();
    EXPECT_EQ(records, 5);
    EXPECT_EQ(status, GetParam().ends ? "" : "Exporting Sales Cancelled");
    EXPECT_FALSE(setupValue("IMPORT HIST", "Last Invoices Posted").empty());
    EXPECT_LT(setupValue("IMPORT HIST", "Last Invoices Posted"), "0001007");
}

INSTANTIATE_TEST_SUITE_P(
    Desktop,
    Interrupted,
    ::testing::ValuesIn(kInterruptions),
    [](const auto& row) { return "way" + std::to_string(row.index); }
);

TEST_F(Desktop, takesNothingButStopWhileItWorks) {
    bool wasOn = true;
    person.press("chkExport(3)").press("Cmdexport");
    whenRecordsAreDone(3, [&] {
        QTest::mouseClick(Operator::find("chkExport(4)"), Qt::LeftButton);
        QTest::mouseClick(Operator::find("cmdAcceptCancel(1)"), Qt::LeftButton);
        QTest::keyClicks(Operator::find("txtToDate"), "7");
        wasOn = dynamic_cast<QAbstractButton*>(Operator::find("chkExport(4)"))->isChecked();
        EXPECT_FALSE(ui::formText("frmSetup", "txtToDate").ends_with("7"));
    });
    person.press("cmdStop").press("cmdAcceptCancel(1)");
    runOnScreen();
    EXPECT_FALSE(wasOn);
}

/// A channel whose answer to a sale waits as long as it is told to.
class SlowChannel : public platform::QBChannel {
public:
    explicit SlowChannel(std::function<bool()> isWaiting) : isWaiting_(std::move(isWaiting)) {}
    void open(const std::string& appId, const std::string& appName) override {
        channel_.open(appId, appName);
    }
    void begin(const std::string& companyFile, int openMode) override {
        channel_.begin(companyFile, openMode);
    }
    void end() override { channel_.end(); }
    void close() override { channel_.close(); }
    [[nodiscard]] std::vector<std::string> versions() override { return channel_.versions(); }
    std::string exchange(const std::string& document) override {
        while (document.find("<SalesReceiptAdd>") != std::string::npos && isWaiting_()) {
            platform::desktop().pendingEvents();
        }
        return channel_.exchange(document);
    }

private:
    platform::StandinChannel channel_;
    std::function<bool()> isWaiting_;
};

/// Counts how often a widget is painted.
class PaintCounter : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        painted += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    int painted = 0;
};

TEST_F(Desktop, paintsMovesAndTakesStopWhileARequestWaits) {
    // Given an answer that waits for the operator
    int waits = 0;
    bool answered = false;
    platform::current().makeSessionManager = [&] {
        return std::make_unique<platform::QbxmlSessionManager>(std::make_unique<SlowChannel>([&] {
            return ++waits > 0 && !answered;
        }));
    };
    PaintCounter counter;
    std::string status;
    QPoint moved;
    person.press("chkExport(3)").press("Cmdexport").then([&] { return waits > 1; });
    // When the window is moved, painted, clicked at, and stopped
    person.act([&] {
        Operator::window("frmSetup")->move(30, 40);
        Operator::find("LblStatus")->installEventFilter(&counter);
        Operator::find("LblStatus")->update();
        QTest::mouseClick(Operator::find("chkExport(4)"), Qt::LeftButton);
        QTest::mouseClick(Operator::find("CmdViewLog"), Qt::LeftButton);
    });
    person.then([&] { return counter.painted > 0; }).press("cmdStop").act([&] {
        moved = Operator::window("frmSetup")->pos();
        answered = true;
    });
    person.then([] { return Operator::find("Cmdexport")->isEnabled(); });
    person.act([&] { status = shownStatus(); }).press("cmdAcceptCancel(1)");
    runOnScreen();
    // Then only Stop has been taken
    EXPECT_EQ(moved, QPoint(30, 40));
    EXPECT_EQ(status, "Exporting Sales Cancelled");
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_GT(waits, 1);
}

TEST_F(Desktop, answersABoxThatComesAgainForTheRestOfTheRun) {
    // Given a company file that lacks what the sales name, so that each sale raises boxes
    std::map<QString, int> shown;  // how often a text came, whatever name or number it holds
    bool isRunning = false;
    QGuiApplication::clipboard()->clear();
    QString list;
    person.onBox = [&](QMessageBox& box) {
        static const QRegularExpression names("\"[^\"]*\"|[0-9]");
        shown[box.text().remove(names)] += isRunning ? 1 : 0;
        if (box.checkBox() != nullptr) {
            box.checkBox()->setChecked(true);
        }
        return false;
    };
    // When each one is answered for the rest of the run as soon as it can be
    person.press("chkExport(3)").act([&] { isRunning = true; }).press("Cmdexport");
    person.then([&] {
        auto* dialog = Operator::window("answeredMessages");
        if (dialog == nullptr || !dialog->isActiveWindow()) {
            return false;
        }
        QTest::keyClick(dialog, Qt::Key_A, Qt::AltModifier);
        return true;
    });
    person.then([&] {
        list = QGuiApplication::clipboard()->text();
        return !list.isEmpty() && Operator::window("answeredMessages")->close();
    });
    person.press("cmdAcceptCancel(1)");
    runOnScreen();
    // Then none comes a third time, another one is not taken for it, and the list has the rest
    EXPECT_GE(shown.size(), 2U);
    for (const auto& [text, times] : shown) {
        EXPECT_LE(times, 2) << text.toStdString();
    }
    EXPECT_GE(list.count('\n'), 5);
}

TEST_F(Desktop, stopsFromABoxThatComesAgain) {
    person.onBox = [&](QMessageBox& box) {
        auto* stop = box.findChild<QPushButton*>("stopRun");
        if (stop != nullptr) {
            stop->click();
        }
        return stop != nullptr;
    };
    std::string status;
    person.press("chkExport(3)").press("Cmdexport");
    awaitEnd();
    person.act([&] { status = shownStatus(); });
    person.press("cmdAcceptCancel(1)");
    runOnScreen();
    EXPECT_EQ(status, "Exporting Sales Cancelled");
}

TEST_F(Desktop, browserCancelledChangesNothing) {
    const std::string file = companyFile();
    std::string shown;
    person.press("cmdFind").await("frmSMFILE_PATH").key(Qt::Key_Escape);
    person.then([] { return Operator::window("frmSMFILE_PATH") == nullptr; });
    person.act([&] { shown = ui::formText("frmSetup", "TxtPath"); });
    person.press("cmdAcceptCancel(1)");
    runOnScreen();
    EXPECT_EQ(shown, file);
}

struct Cancelled {
    const char* what;
    platform::BoxButtons buttons;
    platform::BoxAnswer answer;
};
constexpr Cancelled kCancelled[] = {
    {"a text has one answer", platform::BoxButtons::ok, platform::BoxAnswer::ok},
    {"Esc cancels", platform::BoxButtons::okCancel, platform::BoxAnswer::cancel},
    {"Esc says no", platform::BoxButtons::yesNo, platform::BoxAnswer::no},
};

TEST(MessageBox, isRefusedByEsc) {
    testing_support::application();
    platform::QtDesktop desktop;
    Operator person;
    person.onBox = [](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        return true;
    };
    for (const auto& [what, buttons, answer] : kCancelled) {
        SCOPED_TRACE(what);
        EXPECT_EQ(
            desktop.messageBox("text", "title", buttons, platform::BoxIcon::question), answer
        );
    }
}

TEST(FileChoice, cancelledIsEmpty) {
    testing_support::application();
    platform::QtDesktop desktop;
    Operator person;
    person.then([] {
        auto* dialog = dynamic_cast<QFileDialog*>(Operator::window("chooseFile"));
        if (dialog != nullptr) {
            EXPECT_EQ(dialog->nameFilters().front(), "QB Files (*.qbw)");
            dialog->reject();
        }
        return dialog != nullptr;
    });
    EXPECT_EQ(
        desktop.chooseFile("Select", "C:\\", "QB Files (*.qbw)|*.qbw|All Files (*.*)|*.*"), ""
    );
}

}  // namespace
