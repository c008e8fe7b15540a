#include "core/brv_main.h"
#include "platform/qt/busy_bar.h"
#include "screen.h"

#include <map>

#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using testing_support::Operator;

/// The whole program.
class Desktop : public testing_support::OnScreen {
protected:
    Desktop() : OnScreen(40, 2) {
        core::resetLink();
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
            auto* window = formWindow("frmSetup");
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
        const auto isFrozen = [] { return formWindow("frmSetup")->isFrozen(); };
        person.then(isFrozen).then([isFrozen] { return !isFrozen(); });
    }

    std::size_t sales() { return transactions().size(); }

    Operator person;
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
        records = formWindow("frmSetup")->busyBar()->records();
        GetParam().deed();
    });
    if (!GetParam().ends) {
        person.then([] { return !formWindow("frmSetup")->isFrozen(); });
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
    holdBack("<SalesReceiptAdd>");
    PaintCounter counter;
    std::string status;
    QPoint moved;
    bool wasOn = true;
    person.press("chkExport(3)").press("Cmdexport").then([&] { return isWaiting(); });
    // When the window is moved, painted, clicked and typed at, and stopped
    person.act([&] {
        Operator::window("frmSetup")->move(30, 40);
        Operator::find("LblStatus")->installEventFilter(&counter);
        Operator::find("LblStatus")->update();
        QTest::mouseClick(Operator::find("chkExport(4)"), Qt::LeftButton);
        QTest::mouseClick(Operator::find("CmdViewLog"), Qt::LeftButton);
        QTest::mouseClick(Operator::find("cmdAcceptCancel(1)"), Qt::LeftButton);
        QTest::keyClicks(Operator::find("txtToDate"), "7");
        wasOn = dynamic_cast<QAbstractButton*>(Operator::find("chkExport(4)"))->isChecked();
        EXPECT_FALSE(ui::formText("frmSetup", "txtToDate").ends_with("7"));
    });
    person.then([&] { return counter.painted > 0; }).press("cmdStop").act([&] {
        moved = Operator::window("frmSetup")->pos();
        answer();
    });
    person.then([] { return Operator::find("Cmdexport")->isEnabled(); });
    person.act([&] { status = shownStatus(); }).press("cmdAcceptCancel(1)");
    runOnScreen();
    // Then only Stop has been taken
    EXPECT_EQ(moved, QPoint(30, 40));
    EXPECT_EQ(status, "Exporting Sales Cancelled");
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_FALSE(wasOn);
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
