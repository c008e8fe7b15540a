#include "platform/system/ini_settings_store.h"
#include "support/temp_folder.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

constexpr char kApplication[] = "NUV Settings";
constexpr char kSection[] = "DATABASE";

}  // namespace

class SettingsStore : public testing::Test {
protected:
    std::string get(const std::string& key) const {
        return store.get(kApplication, kSection, key, "(none)");
    }

    testing_support::TempFolder folder;
    platform::IniSettingsStore store{folder.file("config\\settings.ini")};
};

TEST_F(SettingsStore, givesBackEveryValueAsItWasSaved) {
    constexpr const char* kValues[] = {
        "",
        "C:\\KV",
        " blanks ",
        "\t",
        "\"quoted\"",
        "'",
        "a=b;c",
        "[x]",
        "Caf\xE9 \x80",
        "\"",
    };
    EXPECT_EQ(get("key"), "(none)");
    for (const char* const value : kValues) {
        SCOPED_TRACE(value);
        store.save(kApplication, kSection, "key", value);
        EXPECT_EQ(get("KEY"), value);
    }
}

TEST_F(SettingsStore, writesAFileThatAPersonCanReadAndEdit) {
    store.save(kApplication, kSection, "Server", "embedded");
    store.save(kApplication, "QUICKBOOKS", "Channel", "standin");
    store.save(kApplication, "database", "Caf\xE9", "\xFC");
    EXPECT_EQ(
        folder.read("config/settings.ini"),
        "; Brevane settings, version 1\n"
        "[NUV Settings\\DATABASE]\nServer=embedded\nCaf\xC3\xA9=\xC3\xBC\n"
        "[NUV Settings\\QUICKBOOKS]\nChannel=standin\n"
    );
    struct stat status {};
    ASSERT_EQ(stat((folder.path() / "config/settings.ini").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);

    folder.write("config/settings.ini", "# mine\n[nuv settings\\database]\n\nserver = SQL1\n; x\n");
    EXPECT_EQ(get("Server"), "SQL1");
    store.save(kApplication, kSection, "Server", "SQL2");
    store.remove(kApplication, kSection, "none");
    EXPECT_EQ(
        folder.read("config/settings.ini"), "# mine\n[nuv settings\\database]\n\nserver=SQL2\n; x\n"
    );
    store.remove(kApplication, "Database", "SERVER");
    EXPECT_EQ(get("Server"), "(none)");
}

TEST_F(SettingsStore, refusesWhatDoesNotFitOneLine) {
    struct Case {
        const char* given;
        std::string section;
        std::string key;
        std::string value;
    };
    const Case cases[] = {
        {"a line break in a value", kSection, "k", "a\nb=c"},
        {"a code 0 in a value", kSection, "k", std::string("a\0b", 3)},
        {"an equals sign in a key", kSection, "k=l", "v"},
        {"a key that reads as a comment", kSection, ";k", "v"},
        {"a key without a name", kSection, " ", "v"},
        {"a bracket in a section", "a]b", "k", "v"},
    };
    for (const auto& [given, section, key, value] : cases) {
        SCOPED_TRACE(given);
        try {
            store.save(kApplication, section, key, value);
            ADD_FAILURE() << "accepted";
        } catch (const platform::PlatformError& error) {
            EXPECT_EQ(error.number(), 5);
        }
    }
    EXPECT_FALSE(folder.has("config/settings.ini"));
}

TEST_F(SettingsStore, tellsOfAFileThatCannotBeUsed) {
    folder.write("config", "no folder");
    EXPECT_THROW(store.save(kApplication, kSection, "k", "v"), platform::PlatformError);
    const platform::IniSettingsStore folderAsFile(folder.str());
    EXPECT_THROW(
        static_cast<void>(folderAsFile.get(kApplication, kSection, "k", "")),
        platform::PlatformError
    );
}

TEST_F(SettingsStore, liesInTheUsersConfigurationFolder) {
    setenv("XDG_CONFIG_HOME", folder.str().c_str(), 1);
    EXPECT_EQ(platform::IniSettingsStore().file(), folder.str() + "/brevane/settings.ini");
    unsetenv("XDG_CONFIG_HOME");
}
