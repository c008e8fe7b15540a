#pragma once

#include "platform/qt/layout_builder.h"
#include "ui/control.h"

/// What the sources of a form's window share.
namespace platform {

/// The button that ends a run; it can be pressed while everything else waits.
inline constexpr char kStop[] = "cmdStop";

/// A control that the operator types into.
inline bool isTyped(ui::Kind kind) {
    return kind == ui::Kind::textBox || kind == ui::Kind::passwordBox ||
           kind == ui::Kind::datePicker;
}

/// A window without a title bar, which the operator cannot close.
inline bool isBare(const layout::Window* window) {
    return window != nullptr &&
           (window->style == layout::Style::splash || window->style == layout::Style::loading);
}

}  // namespace platform
