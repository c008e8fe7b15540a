#include "windows/log_commands.h"

#include "core/brv_op.h"
#include "core/run_log.h"
#include "platform/ports/platform.h"

namespace windows {

namespace {

bool logExists() {
    bool exists = false;
    platform::ignoringErrors([&] { exists = platform::files().fileExists(core::logFileName()); });
    return exists;
}

void showMissing() {
    core::showMessage(core::logFileName() + " Not Exist.");
}

}  // namespace

void setLogButtons(ui::Form& window) {
    const bool exists = logExists();
    window.setEnabled("CmdViewLog", exists);
    window.setEnabled("cmdDeleteLog", exists);
}

void viewLog() {
    if (logExists()) {
        platform::desktop().openDocument(core::logFileName());
    } else {
        showMissing();
    }
}

void deleteLog(ui::Form& window) {
    if (logExists()) {
        platform::files().remove(core::logFileName());
        core::showMessage("Delete QBLINK.LOG successful");
    } else {
        showMissing();
    }
    setLogButtons(window);
}

}  // namespace windows
