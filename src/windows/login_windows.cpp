#include "windows/login_windows.h"

#include "platform/ports/platform.h"
#include "security/clsUserLogin.h"
#include "security/secret.h"
#include "windows/frmPasswordEnter.h"

namespace windows {

void installPasswordWindow() {
    security::passwordWindow() = [](clsUserLogin& login) {
        frmPasswordEnter window(login);
        platform::desktop().showModal(window);
        return window.takePassword();
    };
}

void wipeField(ui::Form& window, std::string_view field) {
    ui::ControlState& state = window.control(field);
    security::wipe(state.text);
    window.notify(state);
}

}  // namespace windows
