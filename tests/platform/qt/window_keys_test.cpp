#include "all_windows.h"
#include "operator.h"
#include "platform/ports/platform.h"
#include "platform/qt/qt_desktop.h"
#include "support/link_fixture.h"

#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

/// The keys of every window.
namespace {

using testing_support::AllWindows;
using testing_support::nameOf;
using testing_support::Operator;

/// What was clicked in the window under test.
std::string clicked;

/// Does nothing but write down what is clicked.
template <class Base>
class Deaf : public Base {
public:
    using Base::Base;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override {
        if (signal == ui::Signal::click) {
            clicked += nameOf(std::string(name), this->raisedIndex()) + " ";
        }
        return true;
    }
};

/// A key on the keyboard, and the name of the form's row that it stands for.
struct Stroke {
    const char* key;
    Qt::Key pressed;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
};
constexpr Stroke kStrokes[] = {
    {"F1", Qt::Key_F1},
    {"F2", Qt::Key_F2},
    {"F5", Qt::Key_F5},
    {"F7", Qt::Key_F7},
    {"F8", Qt::Key_F8},
    {"F10", Qt::Key_F10},
    {"Esc", Qt::Key_Escape},
    {"Enter", Qt::Key_Return},
    {"Enter", Qt::Key_Enter, Qt::KeypadModifier},
    {"R", Qt::Key_R},
    {"R", Qt::Key_R, Qt::ShiftModifier},
    {"L", Qt::Key_L, Qt::ShiftModifier},
    {"X", Qt::Key_X},
};

/// The control that a key clicks: of its rows the first that can be pressed; a button that has the
/// focus takes Enter for itself.
std::string targetOf(ui::Form& form, const Stroke& stroke, const ui::ControlState& focus) {
    if (std::string_view(stroke.key) == "Enter" && focus.kind == ui::Kind::button) {
        return nameOf(focus) + " ";
    }
    for (const ui::Key& key : form.keys()) {
        const ui::ControlState& state = form.control(key.control, key.index);
        if (std::string_view(key.key) == stroke.key && state.enabled && form.isShown(state)) {
            return nameOf(state) + " ";
        }
    }
    return "";
}

/// Presses every key of the window with the focus on each of its controls.
void pressAllKeys(ui::Form& form, Operator& person) {
    for (const ui::ControlState& focus : form.controls()) {
        for (const Stroke& stroke : kStrokes) {
            const auto isRow = [&](const ui::Key& key) {
                return std::string_view(key.key) == stroke.key;
            };
            if (std::none_of(form.keys().begin(), form.keys().end(), isRow)) {
                continue;
            }
            person.act([&form, &focus, &stroke] {
                QWidget* widget = Operator::find(nameOf(focus));
                if (!testing_support::takesFocus(focus.kind) || widget == nullptr ||
                    !widget->isEnabled()) {
                    return;
                }
                widget->setFocus();
                clicked.clear();
                QTest::keyClick(widget->window()->focusWidget(), stroke.pressed, stroke.modifiers);
            });
            person.act([] {});  // plays what was pressed
            person.act([&form, &focus, &stroke] {
                QWidget* widget = Operator::find(nameOf(focus));
                if (testing_support::takesFocus(focus.kind) && widget != nullptr &&
                    widget->isEnabled()) {
                    EXPECT_EQ(clicked, targetOf(form, stroke, focus))
                        << form.name() << ": " << stroke.key << " on " << nameOf(focus);
                }
            });
        }
    }
}

TEST(WindowKeys, actWhicheverControlHasTheFocus) {
    testing_support::application();
    platform::QtDesktop desktop;
    const AllWindows<Deaf> windows;
    for (ui::Form* form : windows.work) {
        EXPECT_FALSE(form->keys().empty()) << form->name();
        Operator person;
        person.await(form->name());
        pressAllKeys(*form, person);
        person.act([form] { form->close(); });
        desktop.showModal(*form);
        EXPECT_TRUE(person.isDone());
    }
}

}  // namespace
