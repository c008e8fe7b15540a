#pragma once

#include <deque>
#include <functional>
#include <string>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QWidget>

namespace testing_support {

/// The application of the process, without a screen.
QApplication& application();

/// An operator at the windows: plays steps one after the other out of the toolkit's own loop, with
/// real events, each as soon as it can be played.
class Operator {
public:
    /// False: not yet, come again.
    using Step = std::function<bool()>;

    Operator();

    /// Adds a step; steps of one call are played within one event.
    Operator& then(Step step);
    Operator& act(std::function<void()> deed);
    /// Waits until a window is there.
    Operator& await(const std::string& window);
    /// Presses a control of the top window with the mouse, as soon as it can be pressed.
    Operator& press(const std::string& control);
    /// Presses a key where the focus is.
    Operator& key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    Operator& type(const std::string& text);

    /// Answers each message box with its default button unless `onBox` does something else. `onBox`
    /// gives false for "not mine".
    std::function<bool(QMessageBox&)> onBox;
    int boxes = 0;
    [[nodiscard]] bool isDone() const { return steps_.empty(); }

    /// A visible window or one of its widgets by name; nothing when it is not there.
    static QWidget* window(const std::string& name);
    static QWidget* find(const std::string& control);

private:
    void tick();
    bool answerBox();

    QTimer timer_;
    std::deque<Step> steps_;
    int idleTicks_ = 0;
    bool inTick_ = false;
};

}  // namespace testing_support
