#pragma once

#include <memory>

class QApplication;

namespace app {

/// True when windows can be drawn, as far as the environment tells: a display is named, or the
/// toolkit is told what to draw on.
bool hasDisplay();

/// Connects to the display. @param argc, argv  live as long as the result, which the program needs
/// before its first window.
/// Ends the process with kPlatformFailed and one line on the error output when no window can be
/// drawn: no display, one that does not answer or that refuses this user.
std::unique_ptr<QApplication> openDisplay(int& argc, char** argv);

/// True when the standard input is a file or a pipe: somebody feeds the program a script.
bool isScripted();

}  // namespace app
