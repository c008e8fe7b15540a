#include "operator.h"
#include "platform/qt/qt_desktop.h"
#include "security/memory_search.h"

#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

/// What is typed into a password field stays in it.
namespace {

using testing_support::Backwards;
using testing_support::inMemory;
using testing_support::Operator;

constexpr ui::Control kControls[] = {
    {ui::Kind::passwordBox, "secret", ui::kNoIndex, "Secret"},
    {ui::Kind::button, "try", ui::kNoIndex, "Try"},
    {ui::Kind::button, "leave", ui::kNoIndex, "Leave"},
};
constexpr ui::Key kKeys[] = {{"Enter", "try"}, {"Esc", "leave"}};

// Backwards, as the search wants it: of code page 1252, and as the toolkit has it.
constexpr Backwards kTyped = "29dertsur-retcarahcneetxi-elpmis-sdrow-ynam-fo-txet-gnol-a";
constexpr char kWide[] = "\0002\0009\0d\0e\0r\0t\0s\0u\0r\0-\0r\0e\0t\0c\0a\0r\0a\0h\0c";
constexpr Backwards kTypedWide(kWide, sizeof kWide - 1);

std::set<Backwards> found() {
    return inMemory({kTyped.substr(0, 9), kTypedWide.substr(0, 18)});
}

/// A window that forgets what was typed when it was tried.
class SecretForm : public ui::Form {
public:
    SecretForm() : Form("SecretForm", "Secret", kControls) { control("secret").text.reserve(64); }
    [[nodiscard]] std::span<const ui::Key> keys() const override { return kKeys; }
    std::size_t tried = 0;
    std::set<Backwards> foundWhenTried;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override {
        if (name == "try" && signal == ui::Signal::click) {
            tried = text("secret").size();
            setText("secret", "");
            foundWhenTried = found();
        } else if (name == "leave" && signal == ui::Signal::click) {
            ui::replaceText(control("secret").text, "");
            close();
        }
        return true;
    }
};

void typeBackwards(Operator& person) {
    person.act([] {
        QWidget* field = Operator::find("secret");
        field->setFocus();
        for (auto letter = kTyped.rbegin(); letter != kTyped.rend(); ++letter) {
            QTest::keyClick(field, *letter);
        }
    });
}

TEST(PasswordField, leavesNoCopyOfWhatWasTyped) {
    testing_support::application();
    platform::QtDesktop desktop;
    SecretForm form;
    Operator person;
    std::set<Backwards> typed;
    person.await("SecretForm");
    typeBackwards(person);
    person.act([&] { typed = found(); }).key(Qt::Key_Return);
    person.then([&] { return form.tried > 0; });
    typeBackwards(person);
    person.key(Qt::Key_Escape);
    desktop.showModal(form);
    EXPECT_EQ(typed.size(), 2U);  // the search sees what stands in the window
    EXPECT_EQ(form.tried, kTyped.size());
    EXPECT_EQ(form.foundWhenTried, std::set<Backwards>());
    EXPECT_EQ(found(), std::set<Backwards>());
}

TEST(PasswordField, givesNothingToTheClipboard) {
    testing_support::application();
    platform::QtDesktop desktop;
    SecretForm form;
    Operator person;
    QString copied;
    QString selected;
    QGuiApplication::clipboard()->setText("before");
    person.await("SecretForm");
    typeBackwards(person);
    person.key(Qt::Key_A, Qt::ControlModifier).key(Qt::Key_C, Qt::ControlModifier);
    person.key(Qt::Key_X, Qt::ControlModifier).act([&] {
        copied = QGuiApplication::clipboard()->text();
        selected = QGuiApplication::clipboard()->text(QClipboard::Selection);
    });
    person.key(Qt::Key_Z, Qt::ControlModifier).act([&] {
        EXPECT_TRUE(dynamic_cast<QLineEdit*>(Operator::find("secret"))->text().isEmpty());
    });
    person.key(Qt::Key_Escape);
    desktop.showModal(form);
    EXPECT_EQ(copied, "before");
    EXPECT_TRUE(selected.isEmpty()) << selected.toStdString();
}

}  // namespace
