#pragma once

#include "ui/control.h"

#include <span>

namespace windows {

/// Rows of the tax table that the setup window shows.
inline constexpr int kTaxFieldRows = 7;

/// Controls of `frmSetup` in the order of the screen, and its keys.
std::span<const ui::Control> setupControls();
std::span<const ui::Key> setupKeys();

}  // namespace windows
