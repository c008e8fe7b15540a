#pragma once

#include "platform/qt/control_widget.h"

#include <memory>

namespace platform {

/// The grid: a header, rows, cells that copy to the clipboard. A click, or Enter, Space and F4 on
/// the present cell, raise `click` with row and column; a letter goes to the next row that begins
/// with it.
std::unique_ptr<ControlWidget> makeGrid(const ControlSinks& sinks, QWidget* parent);

}  // namespace platform
