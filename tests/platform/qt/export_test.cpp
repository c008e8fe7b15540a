#include "core/brv_main.h"
#include "operator.h"
#include "platform/ports/platform.h"
#include "platform/qt/busy_bar.h"
#include "platform/qt/qt_desktop.h"
#include "support/link_fixture.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
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

TEST_F(Desktop, answersABoxThatComesAgainForTheRestOfTheRun) {
    // Given a company file that lacks what the sales name, so that each sale raises boxes
    int withChoice = 0;
    QString list;
    person.onBox = [&](QMessageBox& box) {
        if (box.checkBox() != nullptr) {
            ++withChoice;
            box.checkBox()->setChecked(true);
        }
        return false;
    };
    // When the second one is answered for the rest of the run
    person.press("chkExport(3)").press("Cmdexport");
    person.then([&] {
        auto* dialog = Operator::window("answeredMessages");
        if (dialog == nullptr) {
            return false;
        }
        list = dialog->findChild<QPlainTextEdit*>()->toPlainText();
        dialog->close();
        return true;
    });
    const int boxesOfTheStart = person.boxes;
    person.press("cmdAcceptCancel(1)");
    runOnScreen();
    // Then no third one comes, and the list has the others
    EXPECT_EQ(withChoice, 1);
    EXPECT_EQ(person.boxes - boxesOfTheStart, 2);
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
