#include "app/configuration/frmDataConfiguration.h"
#include "app/display.h"
#include "desktop_adapters.h"
#include "platform/system/ini_settings_store.h"
#include "util/text_codec.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>

#include <QApplication>

namespace {

constexpr int kSaved = 0;
constexpr int kNothingSaved = 1;

constexpr char kUsage[] =
    "usage: NUVDataConfiguration.exe\n"
    "Asks for the connection of the store, tries it and writes the settings. Arguments of the "
    "form\n"
    "/KEY=VALUE, as the suite's programs give them, are passed over.\n"
    "Status: 0 the settings were written, 1 they were not, 3 there is no display.\n";

app::ConfigurationStart startValues() {
    app::ConfigurationStart start;
    if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') {
        start.sampleFolder = util::fromUtf8(home) + "/brevane-sample";
    }
    const bool isAsked = std::getenv("BREVANE_COMMAND_LINE") != nullptr;
    start.folderIsFixed = isAsked && !app::readChoice(platform::settings()).folder.empty();
    return start;
}

}  // namespace

int main(int argc, char** argv) {
    for (int at = 1; at < argc; ++at) {
        if (!std::string_view(argv[at]).starts_with('/')) {
            std::cerr << kUsage;
            return app::kWrongCall;
        }
    }
    if (!app::hasDisplay()) {
        std::cerr << "NUVDataConfiguration.exe: there is no display; write the settings into "
                  << platform::IniSettingsStore().file() << "\n";
        return app::kPlatformFailed;
    }
    const auto application = app::openDisplay(argc, argv);
    QApplication::setApplicationName("NUVDataConfiguration");
    QApplication::setApplicationDisplayName("");
    try {
        const app::DesktopAdapters adapters;
        app::frmDataConfiguration window(startValues());
        platform::desktop().showModal(window);
        return window.isSaved() ? kSaved : kNothingSaved;
    } catch (const std::exception& error) {
        std::cerr << "NUVDataConfiguration.exe: " << error.what() << "\n";
        return app::kPlatformFailed;
    }
}
