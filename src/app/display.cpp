#include "app/display.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

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

bool isScripted() {
    struct stat status {};
    return ::fstat(STDIN_FILENO, &status) == 0 &&
           (S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

}  // namespace app
