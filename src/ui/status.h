#pragma once

#include <string_view>

namespace ui {

/// Shows progress in the label `LblStatus` of a window and serves pending events, so that the label
/// paints and Stop gets in. Without such a window only the events are served.
void showStatus(std::string_view window, std::string_view text);

}  // namespace ui
