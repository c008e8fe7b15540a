#include "app/configuration/store_trial.h"

#include "config/clsDataPath.h"
#include "db/NuvDBSM_MSDE.h"
#include "platform/ports/platform.h"
#include "platform/sql_dialect/server_error.h"
#include "platform/system/file_names.h"
#include "platform/system/ini_settings_store.h"
#include "samplestore/store_writer.h"
#include "util/basic_error.h"
#include "util/conversions.h"
#include "util/text_codec.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace app {

namespace {

constexpr int kTimeoutSeconds = 25;
constexpr char kCatalogMask[] = "*.mdf";
constexpr std::size_t kEndingLength = 4;
constexpr char kLineBreak[] = "\r\n";

/// Other settings and another data folder for as long as the object lives.
class Instead {
public:
    Instead(platform::SettingsStore& settings, const std::string& folder)
        : settings_(std::exchange(platform::current().settings, &settings)),
          path_(std::exchange(gDataPath, clsDataPath())) {
        gDataPath.DataPath = folder;
    }
    ~Instead() {
        db::resetEngine();
        platform::current().settings = settings_;
        gDataPath = path_;
    }
    Instead(const Instead&) = delete;
    Instead& operator=(const Instead&) = delete;
    Instead(Instead&&) = delete;
    Instead& operator=(Instead&&) = delete;

private:
    platform::SettingsStore* settings_;
    clsDataPath path_;
};

/// What the numbers of a server or of its driver mean to the operator.
struct Meaning {
    std::int32_t number;
    const char* text;  ///< one that begins with a blank goes behind the step that failed
};
constexpr Meaning kMeanings[] = {
    // of FreeTDS, for what happens on the way to a server
    {20002, "The server does not take the login: check user, password and encryption."},
    {20003, " It does not answer in time: check host, port and firewall."},
    {20009, " Nobody answers there: check host, port and firewall."},
    {20013, " There is no computer of that name."},
    // of the other drivers and of the server
    {platform::errorNoServer, " Nobody answers there: check host, port and firewall."},
    {platform::errorLoginFailed, "The server refuses the login: check user and password."},
    {18452, "The server takes logins of Windows only: SQL Server logins must be allowed there."},
    {18470, "The login is disabled on the server."},
    {18487, "The login's password has expired."},
    {platform::errorNoPermission,
     "This login may not read the catalog: it lacks the right SELECT."},
    {platform::errorNoCatalog, "There is no such catalog, or this login may not open it."},
    {911, "There is no such catalog on the server."},
    {platform::errorObjectInvalid, "The catalog holds no store: it has no table Common."},
    {platform::errorFileOpen, "The file of the catalog cannot be opened: check who may read it."},
    {platform::errorNoCatalogFile, "The file of that name is no catalog."},
    {platform::errorCatalogDamaged, "The catalog is damaged: bring back a copy."},
};

/// What is wrong, in plain words, and below it what the platform said.
Finding wrong(const std::string& step, std::int32_t number, const std::string& description) {
    const auto* const meaning =
        std::find_if(std::begin(kMeanings), std::end(kMeanings), [&](const Meaning& row) {
            return row.number == number;
        });
    const bool isKnown = meaning != std::end(kMeanings);
    const std::string_view text = isKnown ? meaning->text : "";
    const std::string plain = (isKnown && !text.starts_with(' ') ? "" : step) + std::string(text);
    return {
        false, plain + kLineBreak + kLineBreak + description + " (" + std::to_string(number) + ")"};
}

/// Runs a step of the trial; a failure of the platform becomes a finding.
template <class Step>
Finding tried(const std::string& what, const Step& step) {
    try {
        return step();
    } catch (const platform::PlatformError& error) {
        return wrong(what, error.number(), error.description());
    } catch (const util::BasicError& error) {
        return wrong(what, error.number(), error.what());
    }
}

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

Finding missing(const std::string& text) {
    return {false, text};
}

/// The fields that must be filled before anything is tried.
Finding lookAtFields(const StoreChoice& choice) {
    if (choice.folder.empty()) {
        return missing("Enter the data folder.");
    }
    if (!platform::files().folderExists(choice.folder)) {
        return missing("There is no folder " + choice.folder + ".");
    }
    if (choice.kind == StoreKind::server && choice.server.empty()) {
        return missing("Enter the server, as HOST\\INSTANCE.");
    }
    if (choice.catalog.empty()) {
        return missing(
            choice.kind == StoreKind::server
                ? "Enter the name of the catalog on the server."
                : "The folder " + choice.folder + " holds no catalog (a file " + kCatalogMask + ")."
        );
    }
    return {true, ""};
}

Finding findCatalog(const StoreChoice& choice) {
    const bool isServer = choice.kind == StoreKind::server;
    const auto session = platform::current().makeManagement();
    session->setLoginTimeout(kTimeoutSeconds);
    session->connect(
        isServer ? choice.server : "embedded", choice.user, choice.password, /*integrated=*/false
    );
    std::vector<std::string> names;
    for (const platform::CatalogInfo& catalog : session->catalogs()) {
        if (util::sameName(util::trim(catalog.name), choice.catalog)) {
            return {true, ""};
        }
        if (!catalog.isSystem) {
            names.push_back(catalog.name);
        }
    }
    const std::string place = isServer ? "The server " + choice.server : "The folder";
    return missing(
        place + " has no catalog " + choice.catalog + "." + kLineBreak +
        (names.empty() ? "It has none at all." : "It has: " + joined(names) + ".")
    );
}

std::string textAt(const platform::RowSet& rows, std::string_view column) {
    const util::Value value = rows.value(platform::fieldOrdinal(rows, column));
    if (const auto* text = std::get_if<std::string>(&value)) {
        return util::trim(*text);
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    return number == nullptr ? std::string() : std::to_string(*number);
}

Finding readStore(const StoreChoice& choice) {
    const auto connection = platform::current().makeConnection();
    platform::ConnectionSettings settings;
    settings.timeoutSeconds = kTimeoutSeconds;
    settings.dataSource = choice.kind == StoreKind::server ? choice.server : "embedded";
    settings.initialCatalog = choice.catalog;
    settings.userId = choice.user;
    settings.password = choice.password;
    connection->open(settings);
    const auto rows = connection->openRowSet("SELECT TOP 1 * FROM Common");
    if (rows->atEnd()) {
        return missing("The catalog " + choice.catalog + " holds no store: Common has no row.");
    }
    const bool isSummary = textAt(*rows, "Accounting") == "SE";
    return {
        true,
        "The store opens: catalog " + choice.catalog + ", store " + textAt(*rows, "StoreNumber") +
            (isSummary ? ", Summary mode." : ", Setup mode.")};
}

bool isPlain(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char letter) { return letter > 0; });
}

/// What speaks against a sample store in the folder; empty when nothing does.
std::string unfitForSample(const std::string& folder) {
    if (!folder.starts_with('/') || !isPlain(folder)) {
        return "A sample store needs a full path in plain letters, as /home/me/sample.";
    }
    if (!catalogsIn(folder).empty()) {
        return folder + " holds a store already: use it as an embedded store.";
    }
    return {};
}

}  // namespace

Finding tryStore(const StoreChoice& choice) {
    SettingsWithChoice settings(choice, platform::settings());
    const Instead trial(settings, choice.folder);
    const bool isServer = choice.kind == StoreKind::server;
    Finding finding =
        tried("The folder cannot be looked at.", [&] { return lookAtFields(choice); });
    if (finding.good) {
        finding = tried(
            isServer ? "The server " + choice.server + " cannot be reached." : "The folder fails.",
            [&] { return findCatalog(choice); }
        );
    }
    if (finding.good) {
        finding = tried("The catalog " + choice.catalog + " cannot be read.", [&] {
            return readStore(choice);
        });
    }
    return finding;
}

std::vector<std::string> catalogsIn(const std::string& folder) {
    std::vector<std::string> names;
    platform::ignoringErrors([&] { names = platform::files().list(folder, kCatalogMask); });
    for (std::string& name : names) {
        name.resize(name.size() - kEndingLength);
    }
    return names;
}

Finding makeSample(const std::string& folder, const SampleSize& size) {
    if (const std::string unfit = unfitForSample(folder); !unfit.empty()) {
        return missing(unfit);
    }
    try {
        samplestore::prepareFolder(folder);
        platform::IniSettingsStore settings(folder + "/config/brevane/settings.ini");
        const Instead making(settings, folder);
        samplestore::Options options;
        options.folder = folder;
        options.sales = size.sales;
        options.days = size.days;
        options.seed = 1;
        const int rows = samplestore::makeStore(options);
        return {true, "A sample store of " + std::to_string(rows) + " rows is in " + folder + "."};
    } catch (const std::exception& error) {
        return missing(
            "The sample store cannot be made in " + folder + "." + kLineBreak + kLineBreak +
            util::fromUtf8(error.what())
        );
    } catch (const platform::ProgramEnd&) {
        return missing("The catalog of the sample store cannot be opened.");
    }
}

}  // namespace app
