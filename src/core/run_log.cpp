#include "core/run_log.h"

#include "config/clsDataPath.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"

void gpQBLink_Log_writing(std::string_view message) {
    platform::ignoringErrors([&] {
        const util::DateTime now = platform::systemClock().now();
        std::string line = util::format(now, "yyyymmdd") + " " + util::format(now, "hh:mm") + " ";
        line += message;
        platform::files().append(core::logFileName(), line + "\r\n");
    });
}

void gpBRV_Trace_writing(std::string_view line) {
    platform::ignoringErrors([&] {
        platform::files().append(core::traceFileName(), std::string(line) + "\r\n");
    });
}

namespace core {

std::string logFileName() {
    return gDataPath.DataPath + "\\QBLINK.LOG";
}

std::string traceFileName() {
    return platform::files().traceFolder() + "\\BRV.txt";
}

void startTrace(std::string_view line) {
    platform::files().truncate(traceFileName(), true);
    platform::files().append(traceFileName(), std::string(line) + "\r\n");
}

}  // namespace core
