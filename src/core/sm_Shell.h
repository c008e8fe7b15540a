#pragma once

#include <string>

/// Values that a sibling program of the suite takes on its command line; one that is not above a
/// blank is left out.
struct ProgramArguments {
    std::string app;
    std::string station;
    std::string stationPath;
    std::string dataPath;
    std::string appDescription;
    std::string appVersion;
    std::string securityCode;
    std::string network;
    std::string maxStations;
    std::string tail;  ///< free text behind the rest
};

/// Command line of a sibling program, as "folder\file /APP=... /MAXSTATIONS=..." with the values
/// that are given.
std::string programCommandLine(
    const std::string& folder, const std::string& file, const ProgramArguments& arguments
);

/// Builds the command line of a sibling program and runs it to its end. Errors are passed over.
void gpProgram_Run(
    const std::string& folder, const std::string& file, const ProgramArguments& arguments
);

/// Runs a command line and returns when its process has ended. Errors are passed over: what the
/// program left behind tells how it went.
// NOLINTNEXTLINE(readability-identifier-naming): fixed name
void SyncShell(const std::string& commandLine, int windowStyle = 1);
