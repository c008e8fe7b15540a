#include "core/sm_Shell.h"

#include "platform/ports/platform.h"
#include "util/conversions.h"

namespace {

struct ArgumentText {
    const char* prefix;
    std::string ProgramArguments::*value;
    const char* suffix;
};

constexpr ArgumentText kArguments[] = {
    {"/APP=", &ProgramArguments::app, " "},
    {"/STATION=", &ProgramArguments::station, " "},
    {"/STATIONPATH=", &ProgramArguments::stationPath, " "},
    {"/DATAPATH=", &ProgramArguments::dataPath, " "},
    {"/APPDESC=", &ProgramArguments::appDescription, " "},
    {"/APPVER=", &ProgramArguments::appVersion, " "},
    {"/KVSC=", &ProgramArguments::securityCode, " "},
    {"/NETWORK=", &ProgramArguments::network, " "},
    {"/MAXSTATIONS=", &ProgramArguments::maxStations, ""},
};

}  // namespace

std::string programCommandLine(
    const std::string& folder, const std::string& file, const ProgramArguments& arguments
) {
    std::string values;
    for (const ArgumentText& argument : kArguments) {
        const std::string& value = arguments.*argument.value;
        if (util::aboveBlank(value)) {
            values += argument.prefix + value + argument.suffix;
        }
    }
    if (!util::trim(arguments.tail).empty()) {
        values += " " + arguments.tail;
    }
    return folder + "\\" + file + " " + values;
}

void gpProgram_Run(
    const std::string& folder, const std::string& file, const ProgramArguments& arguments
) {
    SyncShell(programCommandLine(folder, file, arguments));
}

void SyncShell(const std::string& commandLine, int windowStyle) {
    static_cast<void>(windowStyle);  // always a normal window; the process port knows no other
    platform::ignoringErrors([&] { platform::processes().run(commandLine); });
}
