#include "app/display.h"
#include "config/nuvDataPath_Ops.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Common.h"
#include "desktop_adapters.h"
#include "platform/console/console_desktop.h"
#include "security/clsUserLogin.h"
#include "security/sm_Encryption_Ops.h"
#include "windows/frmSM_USER_LOGIN.h"
#include "windows/login_windows.h"

#include <exception>
#include <iostream>

#include <QApplication>

namespace {

constexpr int kLoggedIn = 0;
constexpr int kNobody = 1;

constexpr char kUsage[] =
    "usage: brevane-login [< SCRIPT]\n"
    "Shows the login window on the store that the settings name. No arguments. With a script, and\n"
    "where there is no display, the operator's actions are read from the standard input, one a\n"
    "line, and what the windows show is printed.\n"
    "BREVANE_PROGRAM_FOLDER  folder of the program's own files\n"
    "Status: 0 somebody logged in, 1 nobody did, 3 the display cannot be used.\n";

std::string loginSetting(const char* key) {
    return platform::settings().get(windows::kLoginApplication, windows::kLoginSection, key, "");
}

/// Opens the store's tables as the link does. What fails says so itself.
bool openStore() {
    if (gfbNUV_DataPath_open(kNo, 0, "") == kNo) {
        std::cerr << "brevane-login: the settings name no data folder\n";
        return false;
    }
    gsDataPath = gDataPath.DataPath;
    return db_fbInterface_open() != kNo && db_fbAllTables_open() != kNo;
}

/// Shows the window. @return whether somebody logged in.
bool logIn() {
    using LastUser = frmSM_USER_LOGIN::LastUser;
    clsUserLogin login;
    login.Application = core::kApplicationTitle;
    login.StoreNumber = gCommon.StoreNumber;
    login.StrongPwdRequired = loginSetting("Strong Password Required");
    const bool isHidden = loginSetting("Hide User ID") == "Yes";
    frmSM_USER_LOGIN window(login, isHidden ? LastUser::hidden : LastUser::shown);
    platform::desktop().showModal(window);
    return login.Cancel == kNo && login.Valid() != kNo;
}

bool run() {
    security::installPasswordCipher();
    windows::installPasswordWindow();
    try {
        return openStore() && logIn();
    } catch (const platform::ProgramEnd&) {
        return false;  // there is no server or catalog, which was said
    } catch (const platform::ConsoleScriptError& error) {
        std::cerr << "brevane-login: " << error.message << "\n";
        return false;
    }
}

int statusOf(bool isLoggedIn) {
    db::resetEngine();
    return isLoggedIn ? kLoggedIn : kNobody;
}

int atTheScreen(int argc, char** argv) {
    const auto application = app::openDisplay(argc, argv);
    QApplication::setApplicationName("brevane-login");
    const app::DesktopAdapters adapters;
    return statusOf(run());
}

int byScript() {
    const app::LinkAdapters<platform::ConsoleDesktop> adapters(std::cin, std::cout);
    return statusOf(run());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) {
        std::cerr << kUsage;
        return app::kWrongCall;
    }
    try {
        return app::hasDisplay() && !app::isScripted() ? atTheScreen(argc, argv) : byScript();
    } catch (const std::exception& error) {
        std::cerr << "brevane-login: " << error.what() << "\n";
        return kNobody;
    }
}
