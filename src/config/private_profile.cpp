#include "config/private_profile.h"

#include "platform/ports/platform.h"
#include "util/conversions.h"
#include "util/ini_text.h"

#include <algorithm>

namespace config {

namespace {

std::string contentOf(const std::string& file) {
    if (file.empty() || !platform::files().fileExists(file)) {
        return {};
    }
    return platform::files().read(file);
}

ProfileText filledBuffer(const std::string& text, std::size_t length, std::size_t size) {
    ProfileText result{text.substr(0, length), length};
    result.buffer.resize(size, '\0');
    return result;
}

ProfileText valueBuffer(const std::string& text, std::size_t size) {
    return filledBuffer(text, std::min(text.size(), size - std::min<std::size_t>(size, 1)), size);
}

/// A list ends with one more code 0, for which and for the last name's own there must be room.
ProfileText listBuffer(const std::vector<std::string>& names, std::size_t size) {
    std::string text;
    for (const std::string& name : names) {
        text.append(name).push_back('\0');
    }
    const std::size_t room = size - std::min<std::size_t>(size, 2);
    return filledBuffer(text, std::min(text.size(), room), size);
}

}  // namespace

ProfileText getPrivateProfileString(
    const std::optional<std::string>& section,
    const std::optional<std::string>& key,
    const std::string& defaultValue,
    std::size_t size,
    const std::string& file
) {
    const util::IniText text(contentOf(file));
    if (!section) {
        return listBuffer(text.sections(), size);
    }
    if (!key) {
        return listBuffer(text.keys(*section), size);
    }
    const auto value = text.value(*section, *key);
    if (!value) {
        return valueBuffer(util::rtrim(defaultValue), size);
    }
    return valueBuffer(std::string(util::withoutQuotes(*value)), size);
}

bool writePrivateProfileString(
    const std::string& section,
    const std::optional<std::string>& key,
    const std::optional<std::string>& value,
    const std::string& file
) {
    bool isDone = false;
    platform::ignoringErrors([&] {
        if (file.empty() || !platform::files().isWritable(file)) {
            return;
        }
        const std::string before = contentOf(file);
        util::IniText text(before);
        if (key && value) {
            const std::size_t begin = std::min(value->find_first_not_of(" \t"), value->size());
            text.set(section, *key, std::string_view(*value).substr(begin));
        } else if (key) {
            text.removeKey(section, *key);
        } else if (!section.empty()) {
            text.removeSection(section);
        }
        const std::string after = text.bytes();
        if (after != before) {
            platform::files().write(file, after);
        }
        isDone = true;
    });
    return isDone;
}

}  // namespace config
