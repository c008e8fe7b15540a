#include "core/brv_main.h"
#include "operator.h"
#include "platform/ports/platform.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/text_viewer.h"
#include "platform/system/file_names.h"
#include "support/link_fixture.h"

#include <fstream>

#include <QAbstractButton>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace {

using platform::TextViewer;
using testing_support::LinkFixture;
using testing_support::Operator;

constexpr int kLineLength = 64;
constexpr int kLines = 100 * 1024 * 1024 / kLineLength;

/// The line of that number: as long as every other one.
std::string lineText(int number) {
    std::string text = "20150105 10:00 line " + std::to_string(number);
    text.resize(kLineLength - 2, '.');
    return text;
}

void writeLog(const std::string& file) {
    std::ofstream out(file, std::ios::binary);
    for (int line = 0; line < kLines; ++line) {
        out << lineText(line) << "\r\n";
    }
}

TextViewer* viewer() {
    return dynamic_cast<TextViewer*>(Operator::window("textViewer"));
}

QStringList shownLines() {
    return viewer()->findChild<QPlainTextEdit*>()->toPlainText().split('\n', Qt::SkipEmptyParts);
}

void press(const QString& caption) {
    for (QPushButton* button : viewer()->findChildren<QPushButton*>()) {
        if (button->text() == caption) {
            button->click();
        }
    }
}

class LargeLog : public LinkFixture {};

TEST_F(LargeLog, isShownPageByPageBesideAWindowThatGoesOn) {
    // Given a log of 100 MB and a system without a viewer
    testing_support::application();
    platform::QtHost host;
    host.openUrl = [](const QUrl&) { return false; };
    host.nativeName = [](const std::string& name) { return platform::nativeName(name); };
    platform::QtDesktop screen(host);
    makeStore(0, 1);
    writeLog(folder() + "/QBLINK.LOG");
    core::resetLink();
    platform::current().desktop = &screen;
    // When the operator looks at it
    Operator person;
    QStringList newest;
    QStringList earlier;
    QStringList again;
    qint64 read = 0;
    bool isOn = false;
    person.await("frmSetup").press("CmdViewLog").await("textViewer").act([&] {
        newest = shownLines();
        press("&Earlier");
        earlier = shownLines();
        press("&Later");
        again = shownLines();
        read = viewer()->bytesRead();
    });
    person.press("chkExport(3)").act([&] {
        isOn = dynamic_cast<QAbstractButton*>(Operator::find("chkExport(3)"))->isChecked();
    });
    person.press("cmdAcceptCancel(1)");
    EXPECT_THROW(gpMain_start(), platform::ProgramEnd);
    // Then the newest lines come first, no line is lost between two pages, only pages are read, and
    // the main window takes what the operator does
    ASSERT_FALSE(newest.isEmpty() || earlier.isEmpty());
    EXPECT_EQ(newest.last().toStdString(), lineText(kLines - 1));
    EXPECT_EQ(earlier.last().toStdString(), lineText(kLines - static_cast<int>(newest.size()) - 1));
    EXPECT_EQ(again, newest);
    EXPECT_LE(read, 3 * TextViewer::kPageBytes);
    EXPECT_TRUE(isOn);
    EXPECT_EQ(viewer(), nullptr);
}

}  // namespace
