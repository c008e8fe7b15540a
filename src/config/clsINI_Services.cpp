#include "config/clsINI_Services.h"

#include "config/private_profile.h"
#include "platform/ports/platform.h"
#include "util/basic_error.h"
#include "util/conversions.h"

#include <algorithm>

clsINI_Services gIni;

namespace {

constexpr std::size_t kBufferSize = 255;

void report(int number, const std::string& description, const char* source) {
    platform::desktop().messageBox(
        "Error Number: " + std::to_string(number) + "\r\n" + description + "\r\n" + source,
        "INI Class",
        platform::BoxButtons::ok,
        platform::BoxIcon::error
    );
}

/// Runs `body`; an error is shown with the name of its source and gives `otherwise`.
template <class Result, class Body>
Result trapped(const char* source, Result otherwise, Body&& body) {
    try {
        return body();
    } catch (const platform::PlatformError& error) {
        report(error.number(), error.description(), source);
    } catch (const util::BasicError& error) {
        report(error.number(), error.what(), source);
    }
    return otherwise;
}

/// Names of a list buffer. Kept: the walk stops one character before the returned length, which is
/// the last name's end of a whole list and a character of the last name of one that was cut.
clsINI_Services::Names namesOf(const config::ProfileText& list) {
    clsINI_Services::Names names(1);
    for (std::size_t i = 0; i + 1 < list.length; ++i) {
        if (list.buffer[i] == '\0') {
            names.emplace_back();
        } else {
            names.back() += list.buffer[i];
        }
    }
    return names;
}

/// Adds to a list whose first entry is empty as long as nothing was found.
template <class Entry>
void addTo(std::vector<Entry>& list, bool& isFirst, Entry entry) {
    if (isFirst) {
        list.front() = std::move(entry);
        isFirst = false;
    } else {
        list.push_back(std::move(entry));
    }
}

}  // namespace

void clsINI_Services::File(const std::string& name) {
    const bool canBeUsed = trapped("Checkexist", false, [&name] {
        return config::writePrivateProfileString("", std::nullopt, std::nullopt, name);
    });
    name_ = canBeUsed ? name : "";
    isOpen_ = legacyBool(canBeUsed);
}

LegacyBool clsINI_Services::WriteData(
    const std::string& section, const std::string& key, const std::string& value
) {
    if (isOpen_ == kNo) {
        return kNo;
    }
    return trapped("Write Date Class INI", kNo, [&] {
        return legacyBool(config::writePrivateProfileString(section, key, value, name_));
    });
}

LegacyBool clsINI_Services::DeleteData(
    const std::string& section,
    const std::optional<std::string>& key,
    const std::optional<std::string>& value
) {
    if (isOpen_ == kNo) {
        return kNo;
    }
    return trapped("Delete Data Class INI", kNo, [&] {
        return legacyBool(config::writePrivateProfileString(section, key, value, name_));
    });
}

clsINI_Services::Names clsINI_Services::GetAllSections() const {
    if (isOpen_ == kNo) {
        return Names(1);
    }
    return trapped("GetAllSections Class INI ", Names(1), [this] {
        return namesOf(
            config::getPrivateProfileString(std::nullopt, std::nullopt, "", kBufferSize, name_)
        );
    });
}

clsINI_Services::Names clsINI_Services::GetAllKeysInSection(const std::string& section) const {
    if (isOpen_ == kNo) {
        return Names(1);
    }
    return trapped("KeysIn Section Class INI", Names(1), [&] {
        return namesOf(
            config::getPrivateProfileString(section, std::nullopt, "", kBufferSize, name_)
        );
    });
}

clsINI_Services::Pairs clsINI_Services::GetAllKeysValuesInSection(const std::string& section
) const {
    if (isOpen_ == kNo) {
        return Pairs(1);
    }
    return trapped("Get All KeyValues Class INI", Pairs(1), [&] {
        Pairs pairs;
        for (const std::string& key : GetAllKeysInSection(section)) {
            // The one empty entry of a section without keys is a row of two empty texts.
            pairs.push_back({key, key.empty() ? "" : getvalue(section, key, "")});
        }
        return pairs;
    });
}

std::string clsINI_Services::getvalue(
    const std::string& section, const std::string& key, const std::string& defaultValue
) const {
    return trapped("Get Value Class ini", std::string(), [&] {
        const config::ProfileText text =
            config::getPrivateProfileString(section, key, defaultValue, kBufferSize, name_);
        return text.buffer.substr(0, std::min(text.buffer.find('\0'), text.length));
    });
}

clsINI_Services::Names clsINI_Services::FindKeyInFile(const std::string& key) const {
    Names found(1);
    if (isOpen_ == kNo) {
        return found;
    }
    return trapped("Find Key IN File Class ini", found, [&] {
        const Names sections = GetAllSections();
        if (sections.front().empty()) {
            return found;  // Kept: a section without a name that is the first hides all others
        }
        bool isFirst = true;
        for (const std::string& section : sections) {
            if (FindKeyInSection(section, key) != kNo) {
                addTo(found, isFirst, section);
            }
        }
        return found;
    });
}

LegacyBool
clsINI_Services::FindKeyInSection(const std::string& section, const std::string& key) const {
    if (isOpen_ == kNo) {
        return kNo;
    }
    return trapped("Find Key In Section Class INI", kNo, [&] {
        const Names keys = GetAllKeysInSection(section);
        return legacyBool(std::any_of(keys.begin(), keys.end(), [&key](const std::string& name) {
            return util::sameName(name, key);
        }));
    });
}

clsINI_Services::Names
clsINI_Services::FindValueInSection(const std::string& section, const std::string& value) const {
    Names found(1);
    if (isOpen_ == kNo) {
        return found;
    }
    return trapped("Find Value in Section", found, [&] {
        bool isFirst = true;
        for (const auto& [key, held] : GetAllKeysValuesInSection(section)) {
            if (util::sameName(held, value)) {
                addTo(found, isFirst, key);
            }
        }
        return found;
    });
}

clsINI_Services::Pairs clsINI_Services::FindValueInFile(const std::string& value) const {
    Pairs found(1);
    bool isFirst = true;
    for (const std::string& section : GetAllSections()) {
        for (const std::string& key : FindValueInSection(section, value)) {
            if (!key.empty()) {
                addTo(found, isFirst, {section, key});
            }
        }
    }
    return found;
}

LegacyBool
clsINI_Services::RenameSection(const std::string& oldSection, const std::string& newSection) {
    const Pairs pairs = GetAllKeysValuesInSection(oldSection);
    if (DeleteData(oldSection) == kNo) {
        return kNo;
    }
    if (pairs.size() == 1 && pairs.front()[0].empty()) {
        const bool isMade = WriteData(newSection, "dummy", "") != kNo;
        return legacyBool(isMade && DeleteData(newSection, "dummy") != kNo);
    }
    for (const auto& [key, value] : pairs) {
        WriteData(newSection, key, value);
    }
    return kYes;
}

LegacyBool clsINI_Services::RenameKey(
    const std::string& section, const std::string& oldKey, const std::string& newKey
) {
    const std::string value = getvalue(section, oldKey, "");
    if (DeleteData(section, oldKey) == kNo) {
        return kNo;
    }
    WriteData(section, newKey, value);
    return kYes;
}
