#include "operator.h"
#include "platform/qt/layout.h"
#include "platform/qt/mnemonics.h"
#include "platform/qt/qt_desktop.h"
#include "support/link_fixture.h"

#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using testing_support::Operator;
using ui::Kind;
using ui::Signal;

constexpr ui::Control kControls[] = {
    {Kind::textBox, "first", ui::kNoIndex, "First"},
    {Kind::textBox, "second", ui::kNoIndex, "Second"},
    {Kind::textBox, "pressed", ui::kNoIndex, "Pressed"},
    {Kind::textBox, "locked", ui::kNoIndex, "Locked", ui::kLocked},
    {Kind::checkBox, "box", ui::kNoIndex, "Box"},
    {Kind::optionButton, "way", 0, "One", ui::kChecked},
    {Kind::optionButton, "way", 1, "Other"},
    {Kind::grid, "grid", ui::kNoIndex, ""},
    {Kind::dropDown, "list", ui::kNoIndex, "", ui::kHidden},
    {Kind::button, "go", ui::kNoIndex, "Go"},
    {Kind::button, "off", ui::kNoIndex, "Off", ui::kDisabled},
    {Kind::button, "leave", ui::kNoIndex, "Leave"},
};
constexpr ui::Key kKeys[] = {{"F8", "off"}, {"F8", "go"}, {"Esc", "leave"}};

const char* signalWord(Signal signal) {
    static constexpr const char* kWords[] = {
        "load", "activate", "unload", "click", "enter", "leave", "change", "select"};
    return kWords[static_cast<std::size_t>(signal)];
}

/// A window that writes down what reaches it. A click on the grid opens the list over the cell.
class TrialForm : public ui::Form {
public:
    TrialForm() : Form("TrialForm", "Trial", kControls) {
        control("grid").rows = {{"Name", "Account"}, {"Cash", "Drawer"}, {"Check", "Bank"}};
        control("list").items = {"Bank", "Clearing", "Drawer"};
    }
    [[nodiscard]] std::span<const ui::Key> keys() const override { return kKeys; }

    std::string log;

protected:
    bool dispatch(std::string_view name, Signal signal) override {
        if (name == "pressed" && signal != Signal::click) {
            return false;
        }
        log += std::string(signalWord(signal)) + " " + std::string(name);
        log += raisedIndex() == ui::kNoIndex ? "" : "(" + std::to_string(raisedIndex()) + ")";
        if (name == "grid") {
            log += " " + std::to_string(raisedRow()) + " " + std::to_string(raisedColumn());
        }
        log += "; ";
        if (name == "grid" && signal == Signal::click && raisedRow() > 0) {
            row_ = raisedRow();
            setVisible("list", true);
        } else if (name == "list") {
            setCell("grid", row_, 1, text("list"));
            setVisible("list", false);
        } else if (name == "leave") {
            close();
        }
        return true;
    }

private:
    int row_ = 0;
};

/// Opens the window, lets `deed` happen in it, closes it. @return what reached the form between
/// start and end.
std::string logOf(TrialForm& form, const std::function<void(Operator&)>& deed) {
    testing_support::application();
    platform::QtDesktop desktop;
    Operator person;
    person.await("TrialForm");
    person.act([&form] { form.log.clear(); });
    deed(person);
    std::string log;
    person.act([&] { log = form.log; });
    person.key(Qt::Key_Escape);
    desktop.showModal(form);
    return log;
}

struct Deed {
    const char* what;
    void (*deed)(Operator&);
    const char* log;
};

void pressCell(Operator& person, int row, int column) {
    person.act([row, column] {
        auto* grid = dynamic_cast<QTableWidget*>(Operator::find("grid"));
        const QPoint place = grid->visualRect(grid->model()->index(row, column)).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    });
}

void pressHeader(Operator& person) {
    person.act([] {
        auto* grid = dynamic_cast<QTableWidget*>(Operator::find("grid"));
        QTest::mouseClick(
            grid->horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 5)
        );
    });
}

const Deed kDeeds[] = {
    {"a press that brings the focus is an enter",
     [](Operator& person) { person.press("second"); },
     "leave first; enter second; "},
    {"a press on the field that has the focus is a click",
     [](Operator& person) { person.press("first"); },
     "click first; "},
    {"a field that hears presses only takes the first one",
     [](Operator& person) { person.press("pressed"); },
     "leave first; click pressed; "},
    {"the keyboard goes from field to field",
     [](Operator& person) { person.key(Qt::Key_Tab); },
     "leave first; enter second; "},
    {"each letter is a change",
     [](Operator& person) { person.type("ab"); },
     "change first; change first; "},
    {"a locked field takes no letters",
     [](Operator& person) { person.press("locked").type("a"); },
     "leave first; enter locked; "},
    {"a key of the window goes to the control that can be pressed, whatever has the focus",
     [](Operator& person) { person.key(Qt::Key_F8); },
     "click go; "},
    {"Alt and the marked letter press a button",
     [](Operator& person) {
         person.key(Qt::Key_G, Qt::AltModifier).then([] {
             return !dynamic_cast<QPushButton*>(Operator::find("go"))->isDown();
         });
     },
     "click go; "},
    {"a header is row 0", pressHeader, "leave first; enter grid 0 0; click grid 0 0; "},
};

TEST(FormWindow, raisesWhatTheOperatorDoes) {
    for (const Deed& row : kDeeds) {
        SCOPED_TRACE(row.what);
        TrialForm form;
        EXPECT_EQ(logOf(form, row.deed), row.log);
    }
}

TEST(FormWindow, keepsTheFormsStateInStep) {
    TrialForm form;
    logOf(form, [](Operator& person) {
        person.type("12").press("box").press("way(1)").key(Qt::Key_Tab);
    });
    EXPECT_EQ(form.text("first"), "12");
    EXPECT_TRUE(form.isOn("box"));
    EXPECT_TRUE(form.isOn("way", 1));
    EXPECT_FALSE(form.isOn("way", 0));
}

TEST(FormWindow, laysTheListOverTheCellAndTakesThePick) {
    TrialForm form;
    QRect cell;
    QRect list;
    logOf(form, [&](Operator& person) {
        pressCell(person, 1, 1);
        person.then([] { return QApplication::activePopupWidget() != nullptr; });
        person.act([&] {
            auto* grid = dynamic_cast<QTableWidget*>(Operator::find("grid"));
            const QRect part = grid->visualRect(grid->model()->index(1, 1));
            cell = QRect(grid->viewport()->mapToGlobal(part.topLeft()), part.size());
            const QWidget* over = Operator::find("list");
            list = QRect(over->mapToGlobal(QPoint()), over->size());
            EXPECT_EQ(dynamic_cast<const QComboBox*>(over)->currentText(), "Bank");
        });
        person.key(Qt::Key_Down).key(Qt::Key_Return);
        person.then([] { return Operator::find("list") == nullptr; });
    });
    EXPECT_EQ(form.control("grid").rows[2][1], "Clearing") << form.log;
    EXPECT_EQ(list.left(), cell.left());
    EXPECT_EQ(list.width(), cell.width());
    EXPECT_TRUE(list.intersects(cell));
}

TEST(FormWindow, leavesTheCellAsItWasWhenThePickIsCancelled) {
    TrialForm form;
    const std::string log = logOf(form, [](Operator& person) {
        pressCell(person, 0, 1);
        person.then([] { return QApplication::activePopupWidget() != nullptr; });
        person.key(Qt::Key_Escape);
        person.then([] { return Operator::find("list") == nullptr; });
    });
    EXPECT_EQ(form.control("grid").rows[1][1], "Drawer");
    EXPECT_TRUE(log.ends_with("leave list; ")) << log;
}

TEST(FormWindow, copiesCellsToTheClipboard) {
    TrialForm form;
    logOf(form, [](Operator& person) {
        person.act([] {
            auto* grid = dynamic_cast<QTableWidget*>(Operator::find("grid"));
            grid->setFocus();
            grid->selectAll();
        });
        person.key(Qt::Key_C, Qt::ControlModifier);
    });
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Cash\tDrawer\nCheck\tBank\n");
}

TEST(Mnemonics, differAndLeaveOtherMarksAlone) {
    platform::MnemonicPool pool;
    EXPECT_EQ(pool.take("Save Setting"), 's');
    EXPECT_EQ(pool.take("Stop"), 't');
    EXPECT_EQ(pool.take("Stop"), 'o');
    EXPECT_EQ(platform::withMnemonic("R & D", 'd'), "R && &D");
}

}  // namespace
