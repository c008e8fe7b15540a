#include "db/NuvDBSM_MSDE.h"
#include "platform/ports/platform.h"
#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_management.h"
#include "platform/system/file_names.h"
#include "platform/system/ini_settings_store.h"
#include "platform/system/native_clock.h"
#include "platform/system/native_files.h"
#include "platform/system/native_processes.h"
#include "samplestore/store_writer.h"
#include "util/text_codec.h"

#include <charconv>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string_view>
#include <vector>

namespace {

using samplestore::Options;

constexpr int kFailed = 1;
constexpr int kWrongCall = 64;

constexpr char kUsage[] =
    "usage: samplestore FOLDER --sales N --days D --seed S [--from YYYYMMDD] [--summary]\n"
    "Makes a data folder with the sales of a shop, its settings, its company file and the report\n"
    "tools. The folder must be empty, or new. --summary makes a store whose daily totals are "
    "posted.\n"
    "Status: 0 the store was made, 1 it was not, 64 a wrong call.\n";

/// The operator of a tool: boxes go to the error output and take their default answer.
class BoxPrinter : public platform::DesktopPort {
public:
    void showModal(ui::Form&) override {}
    void showModeless(ui::Form&) override {}
    platform::BoxAnswer messageBox(
        const std::string& text, const std::string& title, platform::BoxButtons, platform::BoxIcon
    ) override {
        std::cerr << title << ": " << text << "\n";
        return platform::BoxAnswer::ok;
    }
    void pendingEvents() override {}
    void setBusyCursor(bool) override {}
    void openDocument(const std::string&) override {}
    std::string chooseFile(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    [[nodiscard]] bool hasOperator() const override { return false; }
};

template <class Number>
bool readNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

bool isDay(std::string_view text) {
    int number = 0;
    return text.size() == 8 && readNumber(text, number) &&
           util::isCalendarDate(number / 10000, number / 100 % 100, number % 100);
}

std::optional<Options> readOptions(std::vector<std::string> arguments) {
    Options options;
    options.summary = std::erase(arguments, "--summary") > 0;
    bool isGood = !arguments.empty() && !arguments.front().starts_with("--");
    if (!isGood || arguments.size() % 2 == 0) {
        return std::nullopt;
    }
    options.folder = arguments.front();
    bool hasSeed = false;
    for (std::size_t index = 1; index < arguments.size() && isGood; index += 2) {
        const std::string& name = arguments[index];
        const std::string& value = arguments[index + 1];
        if (name == "--sales") {
            isGood = readNumber(value, options.sales);
        } else if (name == "--days") {
            isGood = readNumber(value, options.days);
        } else if (name == "--seed") {
            isGood = hasSeed = readNumber(value, options.seed);
        } else {
            options.firstDay = value;
            isGood = name == "--from" && isDay(value);
        }
    }
    isGood = isGood && hasSeed && options.sales > 0 && options.days > 0 && options.days <= 3660 &&
             options.sales <= 9000000;
    return isGood ? std::optional(options) : std::nullopt;
}

int run(const Options& options) {
    const std::string folder = util::fromUtf8(options.folder);
    platform::IniSettingsStore settings(folder + "/config/brevane/settings.ini");
    platform::NativeFiles files(folder + "/program");
    platform::NativeProcesses processes;
    platform::NativeClock clock;
    BoxPrinter desktop;
    platform::Platform adapters;
    adapters.settings = &settings;
    adapters.files = &files;
    adapters.processes = &processes;
    adapters.clock = &clock;
    adapters.desktop = &desktop;
    const auto dataFolder = [folder] { return folder; };
    adapters.makeConnection = [dataFolder] {
        return std::make_unique<platform::SqliteConnection>(dataFolder);
    };
    adapters.makeManagement = [dataFolder] {
        return std::make_unique<platform::SqliteManagement>(dataFolder);
    };
    platform::install(std::move(adapters));
    const int rows = samplestore::makeStore(options);
    std::cout << "# " << rows << " rows in " << options.folder << "\n"
              << "export XDG_CONFIG_HOME='" << options.folder << "/config'\n"
              << "export BREVANE_PROGRAM_FOLDER='" << options.folder << "/program'\n";
    db::resetEngine();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    auto options = readOptions(std::vector<std::string>(argv + 1, argv + argc));
    if (!options) {
        std::cerr << kUsage;
        return kWrongCall;
    }
    try {
        samplestore::prepareFolder(options->folder);
        options->folder = std::filesystem::canonical(options->folder).string();
        options->toolsFolder = std::filesystem::path(platform::executableFile()).parent_path();
        return run(*options);
    } catch (const std::exception& error) {
        std::cerr << "samplestore: " << error.what() << "\n";
    } catch (const platform::ProgramEnd&) {
        std::cerr << "samplestore: the catalog could not be opened\n";
    }
    return kFailed;
}
