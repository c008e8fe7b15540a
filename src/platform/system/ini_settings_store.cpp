#include "platform/system/ini_settings_store.h"

#include "platform/system/file_io.h"
#include "platform/system/file_names.h"
#include "util/ini_text.h"
#include "util/text_codec.h"

#include <filesystem>
#include <system_error>

#include <sys/stat.h>

namespace platform {

namespace {

constexpr char kFirstLine[] = "; Brevane settings, version 1\n";
constexpr int kInvalidArgument = 5;

std::string defaultFile() {
    const std::string folder = userFolder("XDG_CONFIG_HOME", ".config");
    return (folder.empty() ? "." : folder) + "/settings.ini";
}

std::string contentOf(const std::string& file) {
    std::error_code failure;
    if (!std::filesystem::exists(file, failure) && !failure) {
        return {};
    }
    try {
        return readFile(file);
    } catch (const PlatformError& error) {
        throw PlatformError(
            error.number(), error.description() + " (" + util::fromUtf8(file) + ")"
        );
    }
}

void requireOneLine(const std::string& text, const std::string& forbidden) {
    if (text.find_first_of(forbidden + std::string("\r\n\0", 3)) != std::string::npos) {
        throw PlatformError(kInvalidArgument, "Invalid procedure call or argument");
    }
}

/// Names as they stand in the file.
struct Names {
    std::string section;
    std::string key;
};

Names namesOf(const std::string& application, const std::string& section, const std::string& key) {
    requireOneLine(application, "[]");
    requireOneLine(section, "[]");
    requireOneLine(key, "=");
    if (key.find_first_not_of(" \t") == std::string::npos || key.starts_with(';') ||
        key.starts_with('[')) {
        throw PlatformError(kInvalidArgument, "Invalid procedure call or argument");
    }
    return {util::toUtf8(application + "\\" + section), util::toUtf8(key)};
}

/// Quotes keep blanks at the ends of a value, and quotes that are its own.
std::string written(const std::string& value) {
    const bool isPlain = util::trimSpace(value) == value && util::withoutQuotes(value) == value;
    return isPlain ? value : "\"" + value + "\"";
}

void makeFolderOf(const std::string& file) {
    const std::string folder = parentOf(file);
    std::error_code failure;
    if (std::filesystem::create_directories(folder, failure)) {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, failure);
    }
}

}  // namespace

IniSettingsStore::IniSettingsStore(const std::string& file)
    : file_(file.empty() ? defaultFile() : nativeName(file)) {}

std::string IniSettingsStore::get(
    const std::string& application,
    const std::string& section,
    const std::string& key,
    const std::string& defaultValue
) const {
    const Names names = namesOf(application, section, key);
    const auto value = util::IniText(contentOf(file_)).value(names.section, names.key);
    return value ? util::fromUtf8(util::withoutQuotes(*value)) : defaultValue;
}

void IniSettingsStore::save(
    const std::string& application,
    const std::string& section,
    const std::string& key,
    const std::string& value
) {
    const Names names = namesOf(application, section, key);
    requireOneLine(value, "");
    const std::string before = contentOf(file_);
    util::IniText text(before.empty() ? kFirstLine : before);
    text.set(names.section, names.key, written(util::toUtf8(value)));
    makeFolderOf(file_);
    replaceFile(file_, text.bytes(), Access::ownerOnly);
}

void IniSettingsStore::remove(
    const std::string& application, const std::string& section, const std::string& key
) {
    const Names names = namesOf(application, section, key);
    const std::string before = contentOf(file_);
    util::IniText text(before);
    text.removeKey(names.section, names.key);
    if (text.bytes() != before) {
        replaceFile(file_, text.bytes(), Access::ownerOnly);
    }
}

}  // namespace platform
