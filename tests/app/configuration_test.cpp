#include "app/configuration/frmDataConfiguration.h"
#include "app/desktop_adapters.h"
#include "db/NuvDBSM_MSDE.h"
#include "platform/qt/operator.h"
#include "support/store_adapters.h"
#include "support/temp_folder.h"

#include <cstdlib>

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using testing_support::Operator;
using testing_support::TempFolder;

/// The configuration tool as its program joins it, for a user who has no settings yet.
class Configuration : public ::testing::Test {
protected:
    Configuration() {
        testing_support::application();
        setenv("XDG_CONFIG_HOME", (home.str() + "/settings").c_str(), 1);
        setenv("BREVANE_PROGRAM_FOLDER", (home.str() + "/program").c_str(), 1);
        home.write("program/keep", "");
        adapters = std::make_unique<app::DesktopAdapters>();
        start.sampleFolder = home.str() + "/sample";
        start.sample = {24, 2};
        person.onBox = [this](QMessageBox& box) {
            said.push_back(box.text().toStdString());
            return onBox && onBox(box);
        };
    }
    ~Configuration() override { core::resetLink(); }

    /// Shows the window until it closes. @return whether settings were written.
    bool show() {
        app::frmDataConfiguration window(start);
        platform::desktop().showModal(window);
        return window.isSaved();
    }
    static std::string setting(const std::string& key) {
        return platform::settings().get(
            db::kSettingsApplication, db::kSettingsSection, key, "(none)"
        );
    }
    void typeInto(const std::string& field, const std::string& text) {
        person.act([=] {
            auto* edit = dynamic_cast<QLineEdit*>(Operator::find(field));
            ASSERT_NE(edit, nullptr) << field;
            edit->setFocus();
            edit->selectAll();
            QTest::keyClicks(edit, QString::fromStdString(text));
        });
    }

    TempFolder home;
    std::unique_ptr<app::DesktopAdapters> adapters;
    app::ConfigurationStart start;
    Operator person;
    std::function<bool(QMessageBox&)> onBox;
    std::vector<std::string> said;
    std::vector<std::string> findings;
};

TEST_F(Configuration, makesASampleStoreOnWhichTheProgramStarts) {
    // Given nothing at all, OK makes the sample store and writes the settings
    person.await("frmDataConfiguration").press("cmdOkCancel(0)");
    EXPECT_TRUE(show());
    EXPECT_EQ(said, std::vector<std::string>());
    EXPECT_EQ(setting("Server"), "embedded");
    EXPECT_EQ(setting("DBName"), "NUVDATA1");
    EXPECT_EQ(setting("DATAPATH"), home.str() + "/sample");
    EXPECT_EQ(setting("STATION"), "1");
    // When the program starts
    std::string title;
    std::string companyFile;
    person.await("frmSetup").act([&] {
        title = Operator::window("frmSetup")->windowTitle().toStdString();
        companyFile = ui::formText("frmSetup", "TxtPath");
    });
    person.key(Qt::Key_Escape);
    app::runLink();
    // Then it opens the store and its company file
    EXPECT_EQ(title, "NUV Brevane");
    EXPECT_EQ(companyFile, home.str() + "/sample/company.qbw");
    EXPECT_EQ(said, std::vector<std::string>());
}

struct Wrong {
    const char* given;
    const char* file;  ///< put into the data folder; empty: none
    const char* bytes;
    const char* folder;  ///< typed, behind the test's own
    const char* kind;    ///< option that is pressed
    const char* server;
    const char* says;
};
const Wrong kWrong[] = {
    {"a folder that is not there", "", "", "/nowhere", "optStore(1)", "", "There is no folder "},
    {"a folder without a catalog", "", "", "/data", "optStore(1)", "", " holds no catalog "},
    {"a file that is no catalog",
     "NUVDATA1.mdf",
     "this is a text, long enough to be looked at as a database of some kind",
     "/data",
     "optStore(1)",
     "",
     "The file of that name is no catalog."},
    {"a catalog without tables",
     "NUVDATA1.mdf",
     "",
     "/data",
     "optStore(1)",
     "",
     "The catalog holds no store: it has no table Common."},
    {"no server's name", "", "", "/data", "optStore(2)", "", "Enter the server, "},
    {"no catalog's name",
     "",
     "",
     "/data",
     "optStore(2)",
     "HOST\\A",
     "Enter the name of the catalog"},
};

TEST_F(Configuration, saysWhatIsWrongAndWritesNothing) {
    home.write("data/keep", "");
    for (const Wrong& row : kWrong) {
        SCOPED_TRACE(row.given);
        std::filesystem::remove(home.path() / "data" / "NUVDATA1.mdf");
        if (*row.file != '\0') {
            home.write(std::string("data/") + row.file, row.bytes);
        }
        said.clear();
        person.await("frmDataConfiguration").press(row.kind);
        typeInto("txtFolder", home.str() + row.folder);
        if (*row.server != '\0') {
            typeInto("txtServer", row.server);
        }
        person.press("cmdTest").then([this] { return !said.empty(); }).key(Qt::Key_Escape);
        EXPECT_FALSE(show());
        EXPECT_NE(said.front().find(row.says), std::string::npos) << said.front();
        EXPECT_EQ(setting("Server"), "(none)");
    }
}

TEST_F(Configuration, namesAServerThatDoesNotAnswer) {
    home.write("data/keep", "");
    person.await("frmDataConfiguration").press("optStore(2)");
    typeInto("txtFolder", home.str() + "/data");
    typeInto("txtServer", "127.0.0.1\\TILL");
    typeInto("txtPort", "1");
    typeInto("txtCatalog", "NUVDATA1");
    person.press("cmdTest").then([this] { return !said.empty(); }).key(Qt::Key_Escape);
    EXPECT_FALSE(show());
    EXPECT_TRUE(said.front().starts_with(
        "The server 127.0.0.1\\TILL cannot be reached. Nobody answers there: check host, port and "
        "firewall.\n\n"
    )) << said.front();
}

TEST_F(Configuration, triesAStoreOnAServerStepByStep) {
    // Given a server with a catalog that is empty at first
    home.write("data/keep", "");
    const testing_support::StoreAdapter adapter = testing_support::serverStores().front();
    const platform::OdbcOptions options = adapter.at->options();
    const std::string catalog = adapter.newCatalogName();
    adapter.makeCatalog(home.str(), catalog);
    const auto expectToTest = [&](const std::string& field, const std::string& text) {
        typeInto(field, text);
        person.act([this] { said.clear(); }).press("cmdTest").then([this] {
            return !said.empty();
        });
        person.act([this] { findings.push_back(said.front()); });
    };
    // When it is tried with more and more put right
    person.await("frmDataConfiguration").press("optStore(2)");
    typeInto("txtFolder", home.str() + "/data");
    typeInto("txtServer", adapter.server);
    typeInto("txtPort", options.port);
    typeInto("txtDriver", options.driver);
    typeInto("txtUser", "stranger");
    expectToTest("txtCatalog", "NOWHERE");
    expectToTest("txtUser", "qz");
    expectToTest("txtCatalog", catalog);
    person.act([&] {
        const auto connection = adapter.makeConnection(home.str());
        connection->open(adapter.settings(catalog));
        connection->execute("CREATE TABLE Common (StoreNumber SMALLINT, Accounting CHAR (2))");
        connection->execute("INSERT INTO Common (StoreNumber, Accounting) VALUES (7, 'SE')");
    });
    expectToTest("txtCatalog", catalog);
    person.press("cmdOkCancel(0)");
    EXPECT_TRUE(show());
    adapter.dropCatalog(catalog);
    // Then each time the one thing that is wrong is named, and at the end the store
    ASSERT_EQ(findings.size(), 4U);
    EXPECT_TRUE(findings[0].starts_with("The server refuses the login")) << findings[0];
    EXPECT_NE(findings[1].find(" has no catalog NOWHERE."), std::string::npos) << findings[1];
    EXPECT_NE(findings[1].find(catalog), std::string::npos) << findings[1];
    EXPECT_TRUE(findings[2].starts_with("The catalog holds no store")) << findings[2];
    EXPECT_EQ(findings[3], "The store opens: catalog " + catalog + ", store 7, Summary mode.");
    EXPECT_EQ(setting("Server"), adapter.server);
    EXPECT_EQ(setting("Port"), options.port);
}

TEST_F(Configuration, savesAStoreThatDoesNotOpenOnlyWhenToldSo) {
    home.write("data/keep", "");
    bool yes = false;
    onBox = [&yes](QMessageBox& box) {
        box.button(yes ? QMessageBox::Yes : QMessageBox::No)->click();
        return true;
    };
    person.await("frmDataConfiguration").press("optStore(2)");
    typeInto("txtFolder", home.str() + "/data");
    typeInto("txtServer", "TILL");
    person.press("cmdOkCancel(0)").then([this] { return said.size() == 1; });
    person.act([&] {
        EXPECT_EQ(setting("Server"), "(none)");
        yes = true;
    });
    person.press("cmdOkCancel(0)");
    EXPECT_TRUE(show());
    EXPECT_EQ(said.size(), 2U);
    EXPECT_EQ(setting("Server"), "TILL");
    EXPECT_EQ(setting("UserName"), "qz");
    EXPECT_EQ(setting("Driver"), "(none)");
}

TEST_F(Configuration, isOperatedByTheKeyboard) {
    std::string frame;
    person.await("frmDataConfiguration").act([] { Operator::find("optStore(0)")->setFocus(); });
    person.key(Qt::Key_Down).then([] { return Operator::find("cboCatalog") != nullptr; });
    person.key(Qt::Key_Down).then([] { return Operator::find("txtServer") != nullptr; });
    person.key(Qt::Key_F5).then([this] { return said.size() == 1; });
    person.key(Qt::Key_F1).then([this] { return said.size() == 2; });
    person.key(Qt::Key_Escape);
    EXPECT_FALSE(show());
}

TEST_F(Configuration, makesNoSampleStoreAmongOtherFiles) {
    // Given the data folder of a store whose tables are on a server
    home.write("data/QBLINK.NUV", "the accounts");
    const auto folder = home.path() / "data";
    std::filesystem::permissions(folder, std::filesystem::perms(0750));
    start.sampleFolder = folder.string();
    // When the tool is told to make a sample store in it
    person.await("frmDataConfiguration").press("cmdOkCancel(0)");
    person.then([this] { return !said.empty(); }).key(Qt::Key_Escape);
    // Then it refuses, and nothing is changed
    EXPECT_FALSE(show());
    EXPECT_NE(said.front().find("holds something already"), std::string::npos) << said.front();
    EXPECT_EQ(home.read("data/QBLINK.NUV"), "the accounts");
    EXPECT_FALSE(home.has("data/config"));
    EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms(0750));
}

TEST_F(Configuration, leavesTheFolderToAProgramThatHasOpenedIt) {
    std::filesystem::create_directory(home.path() / "data");
    platform::settings().save(
        db::kSettingsApplication, db::kSettingsSection, "DATAPATH", home.str() + "/data"
    );
    start.folderIsFixed = true;
    person.await("frmDataConfiguration");
    typeInto("txtFolder", "/elsewhere");
    person.act([] { EXPECT_FALSE(Operator::find("cmdBrowse")->isEnabled()); });
    person.press("cmdOkCancel(0)");
    EXPECT_TRUE(show());
    EXPECT_TRUE(home.has("data/NUVDATA1.mdf"));
    EXPECT_EQ(setting("DATAPATH"), home.str() + "/data");
}

TEST_F(Configuration, keepsTheKeysOfAServerWhileTheStoreIsEmbedded) {
    using app::StoreChoice;
    StoreChoice choice;
    choice.kind = app::StoreKind::server;
    choice.folder = "/data";
    choice.server = "HOST\\A";
    choice.catalog = "NUVDATA7";
    choice.user = "qz";
    choice.password = "secret";
    app::writeChoice(choice, platform::settings());
    choice.kind = app::StoreKind::embedded;
    app::writeChoice(choice, platform::settings());
    EXPECT_EQ(setting("Server"), "embedded");
    EXPECT_EQ(setting("Password"), "secret");
    const StoreChoice read = app::readChoice(platform::settings());
    EXPECT_EQ(read.kind, app::StoreKind::embedded);
    EXPECT_EQ(read.server, "");
    EXPECT_EQ(read.catalog, "NUVDATA7");
}

}  // namespace
