#pragma once

#include "platform/ports/system.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace app {

/// Where the tables of the store are.
enum class StoreKind : std::uint8_t { sample, embedded, server };

/// The connection of a store as the operator gives it. Texts are code page 1252.
struct StoreChoice {
    StoreKind kind = StoreKind::embedded;
    std::string folder;   ///< data folder; the embedded catalog lies in it
    std::string catalog;  ///< name of the catalog
    std::string server;   ///< `host\instance`; the rest is for a server only
    std::string port;     ///< blank: the driver's own
    std::string driver;   ///< name of the ODBC driver; blank: the program's choice
    std::string user;
    std::string password;

    /// What the per-user settings hold for it: key of the section "DATABASE", and value. A blank
    /// value means that the key is not kept.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> values() const;
};

/// The choice that the settings hold at the moment; without any it names no folder.
StoreChoice readChoice(const platform::SettingsStore& settings);

/// Writes the choice; keys that it does not know stay.
/// @throws PlatformError when the settings cannot be written.
void writeChoice(const StoreChoice& choice, platform::SettingsStore& settings);

/// The settings as they would be with `choice` written: reads through, keeps nothing.
class SettingsWithChoice : public platform::SettingsStore {
public:
    SettingsWithChoice(const StoreChoice& choice, const platform::SettingsStore& below)
        : values_(choice.values()),
          below_(&below) {}

    [[nodiscard]] std::string
    get(const std::string& application,
        const std::string& section,
        const std::string& key,
        const std::string& defaultValue) const override;
    void save(
        const std::string& application,
        const std::string& section,
        const std::string& key,
        const std::string& value
    ) override;
    void remove(const std::string& application, const std::string& section, const std::string& key)
        override;

private:
    std::vector<std::pair<std::string, std::string>> values_;
    const platform::SettingsStore* below_;
};

}  // namespace app
