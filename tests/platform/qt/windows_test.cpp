#include "all_windows.h"
#include "operator.h"
#include "platform/qt/qt_desktop.h"

#include <algorithm>
#include <functional>
#include <map>

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using testing_support::AllWindows;
using testing_support::nameOf;
using testing_support::Still;
using testing_support::takesFocus;
using testing_support::widgetOf;

/// Texts and controls are large enough for what they show, and none lies over another.
void checkNothingIsCut(const QWidget& window) {
    QList<QWidget*> shown;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool shrinks = widget->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
        const bool isText = dynamic_cast<QLabel*>(widget) != nullptr ||
                            dynamic_cast<QAbstractButton*>(widget) != nullptr;
        if (!widget->isVisible() || !isText || shrinks || widget->objectName().startsWith("qt_")) {
            continue;
        }
        SCOPED_TRACE(widget->objectName().toStdString() + widget->accessibleName().toStdString());
        EXPECT_GE(widget->width(), widget->sizeHint().width());
        EXPECT_GE(widget->height(), widget->sizeHint().height());
        for (const QWidget* other : shown) {
            EXPECT_FALSE(
                other->parent() == widget->parent() &&
                other->geometry().intersects(widget->geometry())
            ) << other->objectName().toStdString();
        }
        shown += widget;
    }
}

/// Every control has its place inside the window.
void checkPlaces(ui::Form& form, QWidget& window) {
    for (const ui::ControlState& state : form.controls()) {
        const QWidget* widget = widgetOf(window, state);
        if (state.kind == ui::Kind::menuItem || !form.isShown(state) || widget->isHidden()) {
            continue;
        }
        SCOPED_TRACE(nameOf(state));
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        EXPECT_TRUE(window.rect().contains(place));
        EXPECT_GE(widget->width(), widget->minimumSizeHint().width());
        EXPECT_GE(widget->height(), widget->minimumSizeHint().height());
    }
    checkNothingIsCut(window);
}

/// Calls `look` with the window of a form, and again for each frame that starts hidden, in the
/// place of those beside it.
void lookAt(ui::Form& form, const std::function<void(ui::Form&, QWidget&)>& look) {
    SCOPED_TRACE(form.name());
    platform::QtDesktop desktop;
    desktop.showModeless(form);
    std::vector<std::string> frames = {""};
    for (const ui::ControlState& state : form.controls()) {
        if (state.kind == ui::Kind::frame && !state.visible) {
            frames.push_back(state.name);
        }
    }
    QWidget* window = testing_support::Operator::window(form.name());
    ASSERT_NE(window, nullptr);
    EXPECT_LE(window->minimumSizeHint().width(), 1280);
    EXPECT_LE(window->minimumSizeHint().height(), 720);
    for (const std::string& frame : frames) {
        SCOPED_TRACE(frame);
        if (!frame.empty()) {
            const QWidget* place = window->findChild<QWidget*>(QString::fromStdString(frame));
            for (const ui::ControlState& other : form.controls()) {
                const QWidget* beside = widgetOf(*window, other);
                if (other.kind == ui::Kind::frame && other.visible &&
                    beside->parent() == place->parent() && beside->x() == place->x() &&
                    beside->y() == place->y()) {
                    form.setVisible(other.name, false);
                }
            }
            form.setVisible(frame, true);
        }
        desktop.pendingEvents();
        desktop.pendingEvents();  // a box within a box settles one turn later
        look(form, *window);
    }
    form.close();
}

std::string spoken(QWidget& widget, QAccessible::Text what) {
    return QAccessible::queryAccessibleInterface(&widget)->text(what).toStdString();
}

/// The letter of its caption or of the label before it; else the key that it describes itself with.
std::string keyOf(QWidget& widget) {
    std::string key = spoken(widget, QAccessible::Accelerator);
    if (dynamic_cast<QComboBox*>(&widget) != nullptr) {  // it says the key that opens its list
        key.clear();
        for (const QLabel* label : widget.window()->findChildren<QLabel*>()) {
            if (label->buddy() == &widget) {
                key = QKeySequence::mnemonic(label->text()).toString().toStdString();
            }
        }
    }
    return key.empty() ? spoken(widget, QAccessible::Description) : key;
}

/// Every control that is seen says a name of its own, and a key that reaches it: the letter of its
/// caption, or the key in its description, or a key of the window.
void checkReach(ui::Form& form, QWidget& window) {
    std::map<std::string, std::string> keys;
    for (const ui::ControlState& state : form.controls()) {
        QWidget* widget = widgetOf(window, state);
        if (!takesFocus(state.kind) || !form.isShown(state) || !widget->isVisible()) {
            continue;
        }
        SCOPED_TRACE(nameOf(state));
        const std::string name = spoken(*widget, QAccessible::Name);
        EXPECT_FALSE(name.empty());
        EXPECT_NE(name, state.name);
        const std::string key = keyOf(*widget);
        const bool hasFormKey =
            std::any_of(form.keys().begin(), form.keys().end(), [&](const ui::Key& row) {
                return row.index == state.index && state.name == row.control;
            });
        EXPECT_TRUE(hasFormKey || !key.empty());
        const auto [known, isNew] = keys.emplace(key, nameOf(state));
        const bool isColumn = state.index > 0 && known->second == state.name + "(0)";
        EXPECT_TRUE(isNew || isColumn || key.empty()) << key << " is the key of " << known->second;
    }
}

/// Is `later` read after `earlier`, both being parts of one box?
bool followsOnTheScreen(const QWidget& earlier, const QWidget& later) {
    const QRect first = earlier.geometry();
    const QRect second = later.geometry();
    const bool isBelow = second.top() >= first.bottom();
    const bool isAbove = second.bottom() <= first.top();
    return isBelow || (!isAbove && second.left() >= first.right());
}

/// The controls through which Tab goes until it is back at one of them. A date has three parts.
std::vector<QWidget*> tabWalk(QWidget& window) {
    std::vector<QWidget*> walk;
    for (QWidget* at = window.focusWidget();
         std::count(walk.begin(), walk.end(), at) == 0 || at == walk.back();
         at = window.focusWidget()) {
        if (walk.empty() || at != walk.back()) {
            walk.push_back(at);
        }
        QTest::keyClick(at, Qt::Key_Tab);
    }
    return walk;
}

/// Tab reaches every control that is seen, once, as they stand on the screen. Of option buttons it
/// reaches the one that is on.
void checkTabs(ui::Form& form, QWidget& window) {
    const std::vector<QWidget*> walk = tabWalk(window);
    for (const ui::ControlState& state : form.controls()) {
        QWidget* widget = widgetOf(window, state);
        if (!takesFocus(state.kind) || !widget->isVisible() || !widget->isEnabled()) {
            continue;
        }
        const bool isPassedOver = state.kind == ui::Kind::optionButton && state.value == 0;
        EXPECT_TRUE(isPassedOver || std::count(walk.begin(), walk.end(), widget) == 1)
            << nameOf(state);
    }
    for (std::size_t at = 1; at < walk.size(); ++at) {
        if (walk[at]->parent() == walk[at - 1]->parent()) {
            EXPECT_TRUE(followsOnTheScreen(*walk[at - 1], *walk[at]) || walk[at] == walk.front())
                << walk[at - 1]->objectName().toStdString() << " then "
                << walk[at]->objectName().toStdString();
        }
    }
}

TEST(Windows, givePlaceNameKeyAndTurnToEveryControl) {
    testing_support::application();
    for (const auto& look : {checkPlaces, checkReach, checkTabs}) {
        const AllWindows<Still> windows;
        for (ui::Form* form : windows.work) {
            lookAt(*form, look);
        }
    }
    const AllWindows<Still> windows;
    for (ui::Form* form : windows.start) {
        lookAt(*form, checkPlaces);
    }
}

/// The palette of the system may change while a window is open.
TEST(Windows, showFieldsThatCanBeReadInEveryPalette) {
    testing_support::application();
    const QPalette before = QApplication::palette();
    const AllWindows<Still> windows;
    for (ui::Form* form : windows.work) {
        lookAt(*form, [](ui::Form& /*form*/, QWidget& window) {
            for (const QColor& ground : {QColor(0x2b, 0x2d, 0x30), QColor(0xf0, 0xf0, 0xf0)}) {
                QApplication::setPalette(QPalette(ground));
                for (const QLineEdit* field : window.findChildren<QLineEdit*>()) {
                    const double text = field->palette().color(QPalette::Text).lightnessF();
                    const double base = field->palette().color(QPalette::Base).lightnessF();
                    EXPECT_TRUE(std::abs(text - base) > 0.5 || !field->isEnabled())
                        << field->objectName().toStdString();
                }
            }
        });
        QApplication::setPalette(before);
    }
}

/// What a field says of its key is so; a column's key goes from field to field.
TEST(Windows, goWhereTheirKeysSay) {
    testing_support::application();
    Still<frmSetup> setup;
    lookAt(setup, [](ui::Form& form, QWidget& window) {
        window.activateWindow();
        for (const ui::ControlState& state : form.controls()) {
            QWidget* widget = widgetOf(window, state);
            auto* edit = dynamic_cast<QLineEdit*>(widget);
            if (edit == nullptr || !edit->isVisible()) {
                continue;
            }
            SCOPED_TRACE(nameOf(state));
            const std::string key = keyOf(*widget);
            ASSERT_FALSE(key.empty());
            const QKeyCombination pressed = QKeySequence(QString::fromStdString(key))[0];
            for (int press = 0; press < 8 && !(press > 0 && edit->hasFocus()); ++press) {
                QTest::keyClick(window.focusWidget(), pressed.key(), pressed.keyboardModifiers());
            }
            EXPECT_TRUE(edit->hasFocus()) << key;
        }
    });
}

/// A window without a description of its own.
constexpr ui::Control kPlainControls[] = {
    {ui::Kind::frame, "frame", ui::kNoIndex, "Frame"},
    {ui::Kind::textBox, "inner", ui::kNoIndex, "Inner", ui::kPlain, "frame"},
    {ui::Kind::passwordBox, "secret", ui::kNoIndex, "Secret"},
    {ui::Kind::datePicker, "day", ui::kNoIndex, "Day"},
    {ui::Kind::label, "LblStatus", ui::kNoIndex, "Status"},
    {ui::Kind::button, "go", ui::kNoIndex, "Go"},
};
class PlainForm : public ui::Form {
public:
    PlainForm() : Form("PlainForm", "Plain", kPlainControls) {}

protected:
    bool dispatch(std::string_view /*name*/, ui::Signal /*signal*/) override { return false; }
};

TEST(Windows, withoutALayoutGetOne) {
    testing_support::application();
    PlainForm form;
    lookAt(form, checkPlaces);
    lookAt(form, checkReach);
}

}  // namespace
