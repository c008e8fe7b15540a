#pragma once

#include "ui/control.h"

#include <functional>
#include <memory>
#include <string>

#include <QRect>
#include <QString>

class QAction;
class QWidget;

namespace platform {

/// Where a control reports what the operator does to it.
struct ControlSinks {
    /// The operator changed what the control holds: its new text, or its value as "0" or "1".
    std::function<void(const std::string&)> holds;
    /// The operator raised a signal; row 0 of a grid is its header.
    std::function<void(ui::Signal signal, int row, int column)> raised;
};

/// How the host's operators write a date.
using DayFirst = std::function<bool()>;

/// One control on the screen. The widget belongs to its parent widget; this object only steers it.
class ControlWidget {
public:
    ControlWidget() = default;
    virtual ~ControlWidget() = default;
    ControlWidget(const ControlWidget&) = delete;
    ControlWidget& operator=(const ControlWidget&) = delete;
    ControlWidget(ControlWidget&&) = delete;
    ControlWidget& operator=(ControlWidget&&) = delete;

    /// The widget to place; a menu entry and what is never seen have none.
    [[nodiscard]] virtual QWidget* widget() const = 0;
    /// The action of a menu entry.
    [[nodiscard]] virtual QAction* action() const { return nullptr; }
    /// Shows caption, text, value, entries and rows as they are now. Raises nothing.
    virtual void apply(const ui::ControlState& state) = 0;
    virtual void setUsable(bool usable) = 0;
    virtual void setShown(bool shown) = 0;
    /// What a screen reader says for it instead of its caption.
    void setSpoken(const QString& name) { spoken_ = name; }
    /// Letter of the caption that reaches the control with Alt; 0 for none.
    virtual void setMnemonic(char /*letter*/) {}
    /// Numbers stand at the right edge.
    virtual void alignRight() {}
    /// Place of the part of the widget that a list is laid over, in the widget's coordinates.
    [[nodiscard]] virtual QRect partAt(int row, int column) const;
    /// The palette of the program is another one now.
    virtual void takePalette() {}
    /// Opens a list so that the operator can pick.
    virtual void openList() {}

protected:
    /// What a screen reader says: the name that was set, the caption, or else the control's name.
    [[nodiscard]] QString nameFor(const ui::ControlState& state) const;

private:
    QString spoken_;
};

/// Makes the widget of a control's kind as a child of `parent`.
std::unique_ptr<ControlWidget> makeControlWidget(
    const ui::ControlState& state,
    const ControlSinks& sinks,
    QWidget* parent,
    const DayFirst& dayFirst
);

}  // namespace platform
