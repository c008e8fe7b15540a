#include "operator.h"
#include "platform/qt/qt_desktop.h"
#include "util/text_codec.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

/// Texts and lists that are longer than a window, and characters that mean something to the
/// toolkit.
namespace {

using testing_support::Operator;
using ui::Kind;

constexpr int kRows = 5000;
constexpr std::size_t kLong = 10000;

/// "Café & Söhne <b>" in code page 1252, as an account may be called.
constexpr char kName[] = "Caf\xe9 & S\xf6hne <b>";

constexpr ui::Control kControls[] = {
    {Kind::frame, "frame", ui::kNoIndex, kName},
    {Kind::textBox, "field", ui::kNoIndex, kName, ui::kPlain, "frame"},
    {Kind::checkBox, "box", ui::kNoIndex, kName, ui::kPlain, "frame"},
    {Kind::grid, "grid", ui::kNoIndex, ""},
    {Kind::dropDown, "list", ui::kNoIndex, "", ui::kHidden},
    {Kind::label, "LblStatus", ui::kNoIndex, kName},
    {Kind::button, "go", ui::kNoIndex, kName},
    {Kind::button, "leave", ui::kNoIndex, "Leave"},
    {Kind::menuItem, "menu", ui::kNoIndex, "File"},
    {Kind::menuItem, "entry", ui::kNoIndex, kName, ui::kPlain, "menu"},
};
constexpr ui::Key kKeys[] = {{"Esc", "leave"}};

/// As the windows with a mapping: a click on a cell lays the list over it, a pick goes into it.
class ExtremeForm : public ui::Form {
public:
    ExtremeForm() : Form("ExtremeForm", kName, kControls) {
        control("grid").rows = {{"Name", "Account"}};
        for (int row = 1; row <= kRows; ++row) {
            control("grid").rows.push_back({"Tender " + std::to_string(row), ""});
            control("list").items.push_back("Account " + std::to_string(row));
        }
        control("list").items.emplace_back(kName);
    }
    [[nodiscard]] std::span<const ui::Key> keys() const override { return kKeys; }
    int clicks = 0;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override {
        if (name == "grid" && signal == ui::Signal::click && raisedRow() > 0) {
            row_ = raisedRow();
            setText("list", control("grid").rows.at(static_cast<std::size_t>(row_)).at(1));
            setVisible("list", true);
        } else if (name == "list" && control("list").visible) {
            setCell("grid", row_, 1, text("list"));
            setVisible("list", false);
        } else if (name == "leave") {
            close();
        } else if (name == "go" && signal == ui::Signal::click) {
            ++clicks;
        }
        return true;
    }

private:
    int row_ = 0;
};

void show(ui::Form& form, const std::function<void(Operator&)>& deed) {
    testing_support::application();
    platform::QtDesktop desktop;
    Operator person;
    person.await(form.name());
    deed(person);
    person.key(Qt::Key_Escape);
    desktop.showModal(form);
    EXPECT_TRUE(person.isDone());
}

QTableWidget* grid() {
    return dynamic_cast<QTableWidget*>(Operator::find("grid"));
}

TEST(Extremes, theLastOfThousandsOfRowsIsMappedByTheKeyboard) {
    ExtremeForm form;
    show(form, [](Operator& person) {
        person.act([] {
            grid()->setFocus();
            grid()->setCurrentCell(0, 1);
        });
        person.key(Qt::Key_End, Qt::ControlModifier).key(Qt::Key_Return);
        person.then([] { return QApplication::activePopupWidget() != nullptr; });
        person.act([] {
            const QWidget* list = Operator::find("list");
            const QRect place(list->mapTo(list->window(), QPoint()), list->size());
            EXPECT_TRUE(list->window()->rect().contains(place));
            EXPECT_EQ(grid()->currentRow(), kRows - 1);
        });
        person.type("Caf").key(Qt::Key_Return);
        person.then([] { return Operator::find("list") == nullptr; });
    });
    EXPECT_EQ(form.control("grid").rows.at(kRows).at(1), kName);
}

TEST(Extremes, charactersThatTheToolkitReadsAreShownAsTheyStand) {
    ExtremeForm form;
    const QString name = QString::fromStdString(util::toUtf8(kName));
    show(form, [&](Operator& person) {
        person.act([&] {
            form.setCell("grid", 1, 1, kName);
            form.setText("field", kName);
            QWidget* window = Operator::window("ExtremeForm");
            EXPECT_EQ(window->windowTitle(), name);
            EXPECT_EQ(grid()->item(0, 1)->text(), name);
            EXPECT_EQ(window->findChild<QLineEdit*>("field")->text(), name);
            // Where the toolkit marks letters, "&&" stands for the character.
            EXPECT_TRUE(window->findChild<QGroupBox*>("frame")->title().contains("&&"));
            for (const char* button : {"go", "box"}) {
                EXPECT_TRUE(window->findChild<QAbstractButton*>(button)->text().contains("&& "));
            }
            const auto* status = window->findChild<QLabel*>("LblStatus");
            EXPECT_EQ(status->text(), name);
            for (const QLabel* label : window->findChildren<QLabel*>()) {
                EXPECT_TRUE(label->textFormat() == Qt::PlainText || label->text().isEmpty())
                    << label->text().toStdString();
                EXPECT_TRUE(label->buddy() == nullptr || label->text().contains("&& "));
            }
        });
        person.key(Qt::Key_C, Qt::AltModifier).then([&] { return form.clicks == 1; });
    });
}

/// A text of words, and one without a place to break it.
const std::string kLongTexts[] = {std::string(kLong, 'W'), [] {
                                      std::string text;
                                      while (text.size() < kLong) {
                                          text += "many words & more ";
                                      }
                                      return text;
                                  }()};

TEST(Extremes, longTextsStayInsideTheWindow) {
    for (const std::string& text : kLongTexts) {
        ExtremeForm form;
        show(form, [&](Operator& person) {
            person.act([&] {
                const QSize before = Operator::window("ExtremeForm")->size();
                form.setText("field", text);
                form.setText("LblStatus", text);
                form.setCell("grid", 1, 1, text);
                form.control("list").items.front() = text;
                form.notify(form.control("list"));
                QApplication::processEvents();
                EXPECT_EQ(Operator::window("ExtremeForm")->size(), before);
                EXPECT_TRUE(Operator::window("ExtremeForm")
                                ->rect()
                                .contains(Operator::find("go")->geometry()));
            });
        });
        EXPECT_EQ(form.text("field"), text);
    }
}

TEST(Extremes, aLongMessageFitsOnTheScreen) {
    for (const std::string& text : kLongTexts) {
        testing_support::application();
        platform::QtDesktop desktop;
        Operator person;
        QRect place;
        QString said;
        person.onBox = [&](QMessageBox& box) {
            place = box.geometry();
            said = box.detailedText();
            return false;
        };
        const auto answer = desktop.messageBox(
            text, kName, platform::BoxButtons::okCancel, platform::BoxIcon::information
        );
        EXPECT_EQ(answer, platform::BoxAnswer::ok);
        EXPECT_EQ(said.toStdString(), text);  // in the box's own list
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        EXPECT_LE(place.width(), screen.width()) << place.x();
        EXPECT_LE(place.height(), screen.height());
    }
}

}  // namespace
