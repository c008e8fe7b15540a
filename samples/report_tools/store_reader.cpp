#include "report_tools/store_reader.h"

#include "platform/ports/platform_error.h"
#include "platform/system/file_io.h"
#include "platform/system/ini_settings_store.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace report_tools {

namespace {

namespace fs = std::filesystem;

std::string setting(const std::string& key) {
    return platform::IniSettingsStore().get("NUV Settings", "DATABASE", key, "");
}

/// The catalog's file: the one that the settings name, or the lowest of the folder.
fs::path catalogFile(const fs::path& folder) {
    const std::string name = util::trim(setting("DBName"));
    if (!name.empty()) {
        return folder / (name + ".mdf");
    }
    fs::path lowest;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string file = util::upper(entry.path().filename().string());
        if (file.starts_with("NUVDATA") && file.ends_with(".MDF") &&
            (lowest.empty() || entry.path() < lowest)) {
            lowest = entry.path();
        }
    }
    return lowest;
}

[[noreturn]] void fail(const std::string& text) {
    throw std::runtime_error(text);
}

}  // namespace

std::string Row::text(int column) const {
    const auto* bytes = sqlite3_column_text(statement_, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    if (bytes == nullptr) {
        return {};
    }
    std::string value(size, '\0');
    std::copy_n(bytes, size, value.begin());
    std::erase(value, '\0');
    return util::trim(value);
}

double Row::number(int column) const {
    return sqlite3_column_double(statement_, column);
}

util::Money Row::money(int column) const {
    return util::Money::fromDouble(number(column));
}

StoreReader::StoreReader() : folder_(util::replaceAll(setting("DATAPATH"), "\\", "/")) {
    if (folder_.empty()) {
        fail("the settings name no data folder");
    }
    const std::string file = catalogFile(folder_).string();
    if (sqlite3_open_v2(file.c_str(), &database_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        sqlite3_close(database_);
        fail(file + " cannot be opened");
    }
    sqlite3_busy_timeout(database_, 10000);
    each("SELECT USEurope FROM Common", {}, [this](const Row& row) {
        order_ = row.text(0) == "E" ? util::DateOrder::dayFirst : util::DateOrder::monthFirst;
    });
}

StoreReader::~StoreReader() {
    sqlite3_close(database_);
}

void StoreReader::each(
    const std::string& statement,
    const std::vector<std::string>& values,
    const std::function<void(const Row&)>& take
) {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(database_, statement.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
        fail(sqlite3_errmsg(database_));
    }
    int number = 0;
    for (const std::string& value : values) {
        sqlite3_bind_text(prepared, ++number, value.c_str(), -1, nullptr);
    }
    int status = sqlite3_step(prepared);
    for (; status == SQLITE_ROW; status = sqlite3_step(prepared)) {
        take(Row(prepared));
    }
    sqlite3_finalize(prepared);
    if (status != SQLITE_DONE) {
        fail(sqlite3_errmsg(database_));
    }
}

std::string StoreReader::day(const std::string& text) const {
    const auto date = util::dateFromText(text, order_);
    if (!date) {
        fail("\"" + text + "\" is no date");
    }
    return util::format(*date, "yyyymmdd");
}

std::string StoreReader::shortText(const std::string& day) const {
    if (day.size() != 8 || !util::isNumeric(day)) {
        return day;
    }
    const util::CalendarDate date{
        std::stoi(day.substr(0, 4)), std::stoi(day.substr(4, 2)), std::stoi(day.substr(6, 2))};
    return util::shortDate({util::dayNumber(date), 0}, order_);
}

void StoreReader::writeExport(const std::string& name, const std::vector<std::string>& lines)
    const {
    const fs::path file = fs::path(folder_) / "export" / name;
    if (lines.empty()) {
        fs::remove(file);
        return;
    }
    if (fs::create_directories(file.parent_path())) {
        fs::permissions(file.parent_path(), fs::perms::others_all, fs::perm_options::remove);
    }
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\r\n";
    }
    try {
        platform::replaceFile(file.string(), text);
    } catch (const platform::PlatformError& error) {
        fail(file.string() + " cannot be written: " + error.description());
    }
}

std::vector<std::string>
valuesBetween(const std::string& line, const std::vector<std::string>& fixedTexts) {
    std::vector<std::string> values;
    if (!line.starts_with(fixedTexts.front())) {
        return {};
    }
    std::size_t at = fixedTexts.front().size();
    for (std::size_t index = 1; index < fixedTexts.size(); ++index) {
        const bool isLast = index + 1 == fixedTexts.size();
        const std::string& text = fixedTexts[index];
        const std::size_t next = isLast && text.empty() ? line.size() : line.find(text, at);
        if (next == std::string::npos) {
            return {};
        }
        values.push_back(line.substr(at, next - at));
        at = next + text.size();
    }
    return at == line.size() ? values : std::vector<std::string>();
}

int runTool(
    const std::vector<std::string>& arguments,
    const std::vector<std::string>& fixedTexts,
    const char* usage,
    const std::function<void(StoreReader&, const std::vector<std::string>&)>& work
) {
    constexpr int kWrongCall = 64;
    std::string line;
    for (const std::string& argument : arguments) {
        line += (line.empty() ? "" : " ") + argument;
    }
    const std::vector<std::string> values = valuesBetween(line, fixedTexts);
    if (values.empty()) {
        std::cerr << usage;
        return kWrongCall;
    }
    try {
        StoreReader store;
        work(store, values);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "report: " << error.what() << "\n";
        return 1;
    }
}

}  // namespace report_tools
