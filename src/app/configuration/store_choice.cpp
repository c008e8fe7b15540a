#include "app/configuration/store_choice.h"

#include "db/NuvDBSM_MSDE.h"
#include "util/conversions.h"

#include <algorithm>

namespace app {

namespace {

constexpr char kEmbedded[] = "embedded";

/// A key of the settings that holds a text of the choice.
struct Stored {
    const char* key;
    std::string StoreChoice::*text;
    bool ofServer;  ///< left alone while the store is no server
};
constexpr Stored kStored[] = {
    {"DATAPATH", &StoreChoice::folder, false},
    {"DBName", &StoreChoice::catalog, false},
    {"Server", &StoreChoice::server, false},
    {"Port", &StoreChoice::port, true},
    {"Driver", &StoreChoice::driver, true},
    {"UserName", &StoreChoice::user, true},
    {"Password", &StoreChoice::password, true},
};

std::string setting(const platform::SettingsStore& settings, const char* key) {
    return util::trim(settings.get(db::kSettingsApplication, db::kSettingsSection, key, ""));
}

}  // namespace

std::vector<std::pair<std::string, std::string>> StoreChoice::values() const {
    const bool isServer = kind == StoreKind::server;
    std::vector<std::pair<std::string, std::string>> result;
    for (const Stored& row : kStored) {
        const bool isName = row.text == &StoreChoice::server;
        if (isServer || !row.ofServer) {
            result.emplace_back(
                row.key, isName && !isServer ? kEmbedded : util::trim(this->*row.text)
            );
        }
    }
    return result;
}

StoreChoice readChoice(const platform::SettingsStore& settings) {
    StoreChoice choice;
    for (const Stored& row : kStored) {
        choice.*row.text = setting(settings, row.key);
    }
    const bool isEmbedded = util::sameName(choice.server, kEmbedded);
    if (!choice.server.empty() && !isEmbedded) {
        choice.kind = StoreKind::server;
    }
    if (isEmbedded) {
        choice.server.clear();
    }
    return choice;
}

void writeChoice(const StoreChoice& choice, platform::SettingsStore& settings) {
    using db::kSettingsApplication;
    using db::kSettingsSection;
    for (const auto& [key, value] : choice.values()) {
        if (value.empty()) {
            settings.remove(kSettingsApplication, kSettingsSection, key);
        } else {
            settings.save(kSettingsApplication, kSettingsSection, key, value);
        }
    }
    if (setting(settings, "STATION").empty()) {
        settings.save(kSettingsApplication, kSettingsSection, "STATION", "1");
    }
}

std::string SettingsWithChoice::get(
    const std::string& application,
    const std::string& section,
    const std::string& key,
    const std::string& defaultValue
) const {
    const bool isOurs = util::sameName(application, db::kSettingsApplication) &&
                        util::sameName(section, db::kSettingsSection);
    const auto found = std::find_if(values_.begin(), values_.end(), [&](const auto& row) {
        return isOurs && util::sameName(row.first, key);
    });
    if (found == values_.end()) {
        return below_->get(application, section, key, defaultValue);
    }
    return found->second.empty() ? defaultValue : found->second;
}

void SettingsWithChoice::save(
    const std::string& /*application*/,
    const std::string& /*section*/,
    const std::string& /*key*/,
    const std::string& /*value*/
) {}

void SettingsWithChoice::remove(
    const std::string& /*application*/, const std::string& /*section*/, const std::string& /*key*/
) {}

}  // namespace app
