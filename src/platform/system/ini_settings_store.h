#pragma once

#include "platform/ports/system.h"

#include <string>

namespace platform {

/// The per-user settings in one text file, sections as `[NUV Settings\DATABASE]`. The file is
/// UTF-8, readable by its owner only, replaced as a whole at each change; lines that a person added
/// stay. Section and key names ignore letter case.
class IniSettingsStore : public SettingsStore {
public:
    /// @param file full name; empty: `brevane/settings.ini` in the user's configuration folder.
    explicit IniSettingsStore(const std::string& file = {});

    /// @throws PlatformError when the file is there and cannot be read.
    [[nodiscard]] std::string
    get(const std::string& application,
        const std::string& section,
        const std::string& key,
        const std::string& defaultValue) const override;
    /// Makes file and folder when they are missing. @throws PlatformError when they cannot be
    /// written, 5 for a name or value that does not fit one line.
    void save(
        const std::string& application,
        const std::string& section,
        const std::string& key,
        const std::string& value
    ) override;
    /// Removing what is not there does nothing.
    void remove(const std::string& application, const std::string& section, const std::string& key)
        override;

    [[nodiscard]] const std::string& file() const { return file_; }

private:
    std::string file_;
};

}  // namespace platform
