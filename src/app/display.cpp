#include "app/display.h"

#include "app/link_adapters.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string>

#include <QApplication>
#include <sys/stat.h>
#include <unistd.h>

namespace app {

bool hasDisplay() {
    static constexpr const char* kVariables[] = {"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"};
    return std::any_of(std::begin(kVariables), std::end(kVariables), [](const char* variable) {
        const char* const value = std::getenv(variable);
        return value != nullptr && *value != '\0';
    });
}

namespace {

/// Name of the running program, as its messages begin.
std::string programName;  // NOLINT(cert-err58-cpp)
QtMessageHandler otherMessages = nullptr;

/// The toolkit tells that it cannot draw by a fatal message, and would abort behind it.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) {
        otherMessages(type, context, text);
        return;
    }
    std::cerr << programName
              << ": no window can be drawn: there is no display, or it cannot be used by this user "
                 "(DISPLAY, WAYLAND_DISPLAY)"
              << std::endl;
    std::_Exit(kPlatformFailed);
}

}  // namespace

std::unique_ptr<QApplication> openDisplay(int& argc, char** argv) {
    programName = std::filesystem::path(argv[0]).filename();
    otherMessages = qInstallMessageHandler(endWithoutDisplay);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(otherMessages);
    return application;
}

bool isScripted() {
    struct stat status {};
    return ::fstat(STDIN_FILENO, &status) == 0 &&
           (S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

}  // namespace app
