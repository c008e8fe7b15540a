#include "link_adapters.h"
#include "platform/console/console_desktop.h"

#include <exception>
#include <iostream>

namespace {

constexpr int kScriptBroken = 2;

constexpr char kUsage[] =
    "usage: brevane-console < SCRIPT\n"
    "Posts a store's records into its company file. Reads the operator's actions, one a line,\n"
    "from the standard input and prints what the windows show. No arguments.\n"
    "BREVANE_PROGRAM_FOLDER  folder of the program's own files\n"
    "BREVANE_QBXML_LOG       file to which every document sent and received is appended\n"
    "Status: 0 the program ended by itself, 2 the script cannot be understood, 3 the platform\n"
    "failed before the program could start.\n";

/// Runs the program on the installed adapters. @return status of the process.
int runScript() {
    try {
        return app::runLink();
    } catch (const platform::ConsoleScriptError& error) {
        std::cerr << "brevane-console: " << error.message << "\n";
        core::resetLink();
        return kScriptBroken;
    }
}

}  // namespace

int main(int argc, char** /*argv*/) {
    if (argc > 1) {
        std::cerr << kUsage;
        return app::kWrongCall;
    }
    try {
        const app::LinkAdapters<platform::ConsoleDesktop> adapters(std::cin, std::cout);
        return runScript();
    } catch (const std::exception& error) {
        std::cerr << "brevane-console: " << error.what() << "\n";
        return app::kPlatformFailed;
    }
}
