#include "ui/status.h"

#include "platform/ports/platform.h"
#include "ui/form.h"

namespace ui {

void showStatus(std::string_view window, std::string_view text) {
    setFormText(window, "LblStatus", text);
    platform::desktop().pendingEvents();
}

}  // namespace ui
