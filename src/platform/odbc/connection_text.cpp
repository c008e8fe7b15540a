#include "platform/odbc/connection_text.h"

#include "util/conversions.h"
#include "util/text_codec.h"

#include <algorithm>

namespace platform {

namespace {

/// Drivers for a SQL Server, the best first.
constexpr std::string_view kPreferred[] = {
    "ODBC Driver 18 for SQL Server",
    "ODBC Driver 17 for SQL Server",
    "FreeTDS",
    "SQL Server Native Client 11.0",
    "SQL Server",
};
constexpr char kFallback[] = "FreeTDS";

std::string bestDriver(const std::vector<std::string>& installed) {
    for (const std::string_view wanted : kPreferred) {
        const auto found =
            std::find_if(installed.begin(), installed.end(), [&](const std::string& name) {
                return util::sameName(name, wanted);
            });
        if (found != installed.end()) {
            return *found;
        }
    }
    return kFallback;
}

/// Puts a keyword into the list, in the place of one of the same name.
void put(ConnectionWords& words, const std::string& word, const std::string& value) {
    for (auto& [present, old] : words) {
        if (util::sameName(present, word)) {
            old = value;
            return;
        }
    }
    words.emplace_back(word, value);
}

/// A value in braces when the list's own signs stand in it.
std::string quoted(const std::string& value) {
    const bool isPlain = value.find_first_of(";{}[]()=@!?* ") == std::string::npos;
    const bool isBraced = value.size() > 1 && value.front() == '{' && value.back() == '}';
    return isPlain || isBraced ? value : "{" + util::replaceAll(value, "}", "}}") + "}";
}

}  // namespace

ConnectionText connectionText(
    const ConnectionSettings& settings,
    const OdbcOptions& options,
    const std::vector<std::string>& installed
) {
    const std::vector<std::string> parts = util::split(options.driver, ';');
    std::string driver = parts.empty() ? std::string() : util::trim(parts.front());
    if (driver.empty()) {
        driver = bestDriver(installed);
    }
    ConnectionWords words = {{"Driver", driver}};
    for (const auto& [word, value] :
         serverKind(driver).address(driver, settings.dataSource, options.port)) {
        put(words, word, value);
    }
    if (!settings.initialCatalog.empty()) {
        put(words, "Database", util::trim(settings.initialCatalog));
    }
    if (settings.integratedSecurity) {
        put(words, "Trusted_Connection", "Yes");
    } else {
        put(words, "UID", settings.userId);
        put(words, "PWD", settings.password);
    }
    for (std::size_t at = 1; at < parts.size(); ++at) {
        const std::size_t sign = parts[at].find('=');
        if (sign != std::string::npos) {
            put(words, util::trim(parts[at].substr(0, sign)), parts[at].substr(sign + 1));
        }
    }
    std::string text;
    for (const auto& [word, value] : words) {
        text += word + "=" + (word == "Driver" ? "{" + value + "}" : quoted(value)) + ";";
    }
    return {driver, util::toUtf8(text)};
}

}  // namespace platform
