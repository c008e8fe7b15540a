#pragma once

namespace app {

/// True when windows can be drawn: a display is named, or the toolkit is told what to draw on.
bool hasDisplay();

/// True when the standard input is a file or a pipe: somebody feeds the program a script.
bool isScripted();

}  // namespace app
