#include "app/display.h"
#include "desktop_adapters.h"

#include <exception>
#include <iostream>

#include <QApplication>

namespace {

constexpr char kUsage[] =
    "usage: brevane\n"
    "Posts a store's records into its company file. No arguments.\n"
    "BREVANE_PROGRAM_FOLDER  folder of the program's own files\n"
    "BREVANE_QBXML_LOG       file to which every document sent and received is appended\n"
    "Status: 0 the program ended by itself, 3 there is no display, or the platform failed before "
    "the\n"
    "program could start.\n";

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) {
        std::cerr << kUsage;
        return app::kWrongCall;
    }
    const auto application = app::openDisplay(argc, argv);
    QApplication::setApplicationName("brevane");
    QApplication::setApplicationDisplayName("NUV Brevane");
    try {
        const app::DesktopAdapters adapters;
        return app::runLink();
    } catch (const std::exception& error) {
        std::cerr << "brevane: " << error.what() << "\n";
        return app::kPlatformFailed;
    }
}
