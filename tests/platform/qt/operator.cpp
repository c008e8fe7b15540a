#include "operator.h"

#include <cstdlib>
#include <memory>

#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace testing_support {

namespace {

/// A step that cannot be played for so long never can: the windows are closed then.
constexpr int kPatience = 200000;

/// Where a key goes: to what has the focus in the window that has the operator.
QWidget* keyTarget() {
    QWidget* window = QApplication::activePopupWidget();
    window = window == nullptr ? QApplication::activeModalWidget() : window;
    return window == nullptr || window->focusWidget() == nullptr ? window : window->focusWidget();
}

/// Ends the application with the tests: at the end of the process the toolkit's own pieces are gone
/// before a static of ours would be.
class ApplicationEnd : public testing::Environment {
public:
    std::unique_ptr<QApplication> instance;
    void TearDown() override { instance.reset(); }
};
ApplicationEnd* const kApplicationEnd = [] {
    auto* const environment = new ApplicationEnd;  // the test framework owns it
    testing::AddGlobalTestEnvironment(environment);
    return environment;
}();

}  // namespace

QApplication& application() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    // the toolkit's own loop: it lets the operator in at each turn
    static const int isSet =
        setenv("QT_QPA_PLATFORM", "offscreen", 1) + setenv("QT_NO_GLIB", "1", 1);
    static_cast<void>(isSet);
    if (kApplicationEnd->instance == nullptr) {
        kApplicationEnd->instance = std::make_unique<QApplication>(count, arguments);
    }
    return *kApplicationEnd->instance;
}

Operator::Operator() {
    application();
    QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
    timer_.start(0);
}

Operator& Operator::then(Step step) {
    steps_.push_back(std::move(step));
    return *this;
}

Operator& Operator::act(std::function<void()> deed) {
    return then([deed = std::move(deed)] {
        deed();
        return true;
    });
}

Operator& Operator::await(const std::string& name) {
    return then([name] { return window(name) != nullptr; });
}

Operator& Operator::press(const std::string& control) {
    return then([control] {
        QWidget* widget = find(control);
        if (widget == nullptr || !widget->isEnabled()) {
            return false;
        }
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(9, widget->height() / 2));
        return true;
    });
}

Operator& Operator::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    return act([key, modifiers] {
        ASSERT_NE(keyTarget(), nullptr) << "nothing has the focus";
        QTest::keyClick(keyTarget(), key, modifiers);
    });
}

Operator& Operator::type(const std::string& text) {
    return act([text] { QTest::keyClicks(keyTarget(), QString::fromStdString(text)); });
}

QWidget* Operator::window(const std::string& name) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName().toStdString() == name && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}

QWidget* Operator::find(const std::string& control) {
    QWidget* top = QApplication::activeModalWidget();
    auto* widget =
        top == nullptr ? nullptr : top->findChild<QWidget*>(QString::fromStdString(control));
    return widget != nullptr && widget->isVisible() ? widget : nullptr;
}

bool Operator::answerBox() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) {
        return false;
    }
    ++boxes;
    if (!onBox || !onBox(*box)) {
        box->defaultButton()->click();
    }
    return true;
}

void Operator::tick() {
    if (inTick_ || answerBox()) {
        return;
    }
    if (!steps_.empty()) {
        inTick_ = true;
        const bool played = steps_.front()();
        inTick_ = false;
        if (played) {
            steps_.pop_front();
            idleTicks_ = 0;
            return;
        }
    }
    if (++idleTicks_ == kPatience) {
        ADD_FAILURE() << steps_.size() << " steps could not be played";
        steps_.clear();
    }
    if (idleTicks_ >= kPatience && QApplication::activeModalWidget() != nullptr) {
        QApplication::activeModalWidget()->close();
    }
}

}  // namespace testing_support
