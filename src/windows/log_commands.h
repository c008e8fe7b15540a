#pragma once

#include "ui/form.h"

namespace windows {

/// Enables `CmdViewLog` and `cmdDeleteLog` of a window when the run log is there, else disables
/// them.
void setLogButtons(ui::Form& window);
/// Hands the run log to the system's viewer; tells when there is none.
void viewLog();
/// Deletes the run log and tells so, or that there is none; sets the buttons of the window.
void deleteLog(ui::Form& window);

}  // namespace windows
