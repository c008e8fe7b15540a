#include "config/clsDataPath.h"
#include "config/clsINI_Services.h"
#include "db/connection.h"
#include "db/recorded_processes.h"
#include "db/schema.h"
#include "db/store_fixture.h"
#include "platform/ports/platform.h"

#include <algorithm>
#include <filesystem>

namespace {

/// A session that notes the files of a new catalog and makes none; its tables are told to it.
class NotedManagement : public testing_support::WatchedManagement {
public:
    NotedManagement(
        std::unique_ptr<platform::ManagementSession> inner, platform::CatalogFiles& noted
    )
        : WatchedManagement(std::move(inner), none_),
          noted_(noted) {}

    std::vector<platform::TableInfo> found;

    void addCatalog(const platform::CatalogFiles& files) override { noted_ = files; }
    [[nodiscard]] std::vector<platform::TableInfo> tables(const std::string&) const override {
        return found;
    }

private:
    testing_support::StoreWatch none_;
    platform::CatalogFiles& noted_;
};

class Catalog : public StoreTest {
protected:
    void SetUp() override {
        platform::current().processes = &processes;
        setSetting("DBName", "");
        DBServerSession = session();
    }
    /// A management session of the store.
    [[nodiscard]] static std::unique_ptr<platform::ManagementSession> session() {
        auto made = platform::current().makeManagement();
        const platform::ConnectionSettings login = GetParam().settings("");
        made->connect(login.dataSource, login.userId, login.password, false);
        return made;
    }
    [[nodiscard]] static std::string storedName() {
        return platform::settings().get(
            db::kSettingsApplication, db::kSettingsSection, "DBName", ""
        );
    }

    RecordedProcesses processes;
};

INSTANTIATE_TEST_SUITE_P(Store, Catalog, ::testing::ValuesIn(storeAdapters()), adapterName);

/// A catalog whose files lie in the data folder.
using CatalogFile = Catalog;

INSTANTIATE_TEST_SUITE_P(Store, CatalogFile, ::testing::ValuesIn(embeddedStore()), adapterName);

TEST_P(Catalog, takesTheNumberBehindTheHighestAndKeepsItsName) {
    if (GetParam().at && GetParam().at->isSqlServer()) {
        GTEST_SKIP() << "a server that others use may have a catalog of that name";
    }
    GetParam().dropCatalog("NUVDATA12");  // of a run that was cut short
    watch.moreCatalogs = {
        {"NUVDATA7", false}, {"nuvdata12", false}, {"NUVDATAX", false}, {"NUVDATA99", true}};
    DBAllowCreate = kYes;
    std::string message;
    EXPECT_NE(gfbDB_Connect(message), kNo);
    EXPECT_EQ(DBName, "NUVDATA12");
    EXPECT_EQ(folder.has("NUVDATA12.mdf"), GetParam().isEmbedded());
    EXPECT_EQ(storedName(), "NUVDATA12");
    watch.moreCatalogs.clear();
    EXPECT_NE(gfbDB_DatabaseExists(), kNo);
    GetParam().dropCatalog("NUVDATA12");
    const std::string trace = fileText("program/52.txt");
    const std::string file = folder.file("NUVDATA12");
    EXPECT_EQ(
        trace.substr(std::min(trace.find("Database Create"), trace.size())),
        "Database Create\r\nPath= " + folder.str() +
            "\r\nDatabases= 12\r\ndatabase Name NUVDATA12\r\ndatabase Name NUVDATA12\r\n"
            "PhysicalName " +
            file + ".mdf\r\nLogName " + file + ".ldf\r\n"
    );
}

TEST_P(CatalogFile, ofTheTrainingModeIsItsOwnAndNotKept) {
    DBTrainingMode = kYes;
    DBAllowCreate = kYes;
    DBName = "NUVDATA1";
    EXPECT_EQ(gfbDB_DatabaseExists(), kNo);
    EXPECT_EQ(DBName, "NUVDATA1");

    EXPECT_NE(gfbDB_CreateDatabase(), kNo);
    EXPECT_TRUE(folder.has("Training.mdf"));
    EXPECT_EQ(storedName(), "");

    DBName.clear();
    EXPECT_NE(gfbDB_DatabaseExists(), kNo);
    EXPECT_EQ(DBName, "Training");
}

TEST_P(Catalog, ofALocalStationIsMissingWithoutItsFile) {
    DBName = catalogName();
    watch.moreCatalogs = {{"NUVRemote", false}, {catalogName(), false}};
    EXPECT_NE(gfbDB_DatabaseExists(), kNo);
    for (LegacyBool* const mode : {&DBLocalMode, &DBRemoteMode}) {
        *mode = kYes;
        EXPECT_EQ(gfbDB_DatabaseExists(), kNo);
        *mode = kNo;
    }
}

TEST_P(Catalog, ofTheServerItselfIsNoStores) {
    DBName = "NUVDATA99";
    watch.moreCatalogs = {{"NUVDATA99", true}};
    EXPECT_EQ(gfbDB_DatabaseExists(), kNo);
    DBName = " nuvdata99 ";
    watch.moreCatalogs = {{"NUVDATA99 ", false}};
    EXPECT_NE(gfbDB_DatabaseExists(), kNo);
}

TEST_P(Catalog, isAttachedWhenItsFileIsThere) {
    struct Case {
        const char* given;
        LegacyBool& mode;
        const char* name;
        const char* stored;
    };
    LegacyBool noMode = kNo;
    const Case cases[] = {
        {"the usual way", noMode, "NUVDATA0", "NUVDATA0"},
        {"a database of its own", DBLocalMode, "NUVRemote", ""},
        {"the remote copy", DBRemoteMode, "NUVRemote", "NUVRemote"},
    };
    platform::CatalogFiles files;
    DBServerSession = std::make_unique<NotedManagement>(session(), files);
    DBAllowCreate = kYes;
    for (const auto& [given, mode, name, stored] : cases) {
        SCOPED_TRACE(given);
        setSetting("DBName", "");
        DBName.clear();
        folder.write(std::string(name) + ".mdf", "");
        mode = kYes;
        EXPECT_NE(gfbDB_CreateDatabase(), kNo);
        mode = kNo;
        EXPECT_EQ(files.name, name);
        EXPECT_EQ(files.dataFile, folder.file(std::string(name) + ".mdf"));
        EXPECT_EQ(files.logicalLog, std::string("Log") + name);
        EXPECT_TRUE(files.attachData);
        EXPECT_FALSE(files.attachLog);
        EXPECT_EQ(storedName(), stored);
    }
}

TEST_P(Catalog, hasTablesOfTheServerThatAreNoStores) {
    platform::CatalogFiles files;
    auto noted = std::make_unique<NotedManagement>(session(), files);
    noted->found = {{"Names", true}, {"VENDOR", false}};
    DBServerSession = std::move(noted);
    TableDescriptor descriptor;
    descriptor.TableName = "Names";
    EXPECT_EQ(gfbDB_TableExists(descriptor), kNo);
    descriptor.TableName = "Vendor";
    EXPECT_NE(gfbDB_TableExists(descriptor), kNo);
}

struct ConversionCase {
    const char* given;
    const char* version;
    LegacyBool isConversionRun;
    bool runs;
    bool ends;
};

TEST_P(CatalogFile, ofOlderFilesIsMadeByTheConversion) {
    constexpr ConversionCase kCases[] = {
        {"a version that goes on", "Pro 10", kNo, true, false},
        {"a version that wants a new start", "Pro 9", kNo, true, true},
        {"the conversion itself", "Pro 9", kYes, false, false},
    };
    folder.write("common.nuv", "");
    processes.onRun = [this] { setSetting("DBName", "NUVDATA3"); };
    DBAllowCreate = kYes;
    const std::string path = folder.str();
    for (const auto& [given, version, isConversionRun, runs, ends] : kCases) {
        SCOPED_TRACE(given);
        processes.lines.clear();
        desktop.boxes.clear();
        DBConvertRun = isConversionRun;
        DBName = "NUVDATA2";
        folder.write("NUV.INI", "[NUV Version]\r\nVersion Name=" + std::string(version) + "\r\n");
        gIni.File(folder.file("NUV.INI"));
        EXPECT_EQ(endsProgram([] { gfbDB_CreateDatabase(); }), ends);
        const std::vector<std::string> conversion = {path + "\\CONVERT_bt.EXE  " + path};
        EXPECT_EQ(processes.lines, runs ? conversion : std::vector<std::string>());
        EXPECT_EQ(DBName, runs ? "NUVDATA3" : "NUVDATA2");
        EXPECT_EQ(desktop.boxes.size(), ends ? 1U : 0U);
        if (ends) {
            EXPECT_EQ(desktop.boxes[0].text, "Please Restart Kelvane");
            EXPECT_EQ(desktop.boxes[0].title, "Data Conversion Completed");
        }
    }
}

TEST_P(CatalogFile, thatCannotBeMadeIsToldAndEndsTheProgram) {
    std::filesystem::create_directory(folder.path() / "NUVDATA0.mdf");
    DBAllowCreate = kYes;
    std::string message;
    EXPECT_THROW(gfbDB_Connect(message), platform::ProgramEnd);
    ASSERT_EQ(desktop.boxes.size(), 2U);
    EXPECT_TRUE(desktop.boxes[0].text.starts_with("Error creating database 5"))
        << desktop.boxes[0].text;
    EXPECT_EQ(desktop.boxes[0].icon, platform::BoxIcon::error);
    EXPECT_EQ(desktop.boxes[1].text, "DataBase Create failed call Support");
    EXPECT_EQ(storedName(), "");
}

using CatalogOnServer = Catalog;

INSTANTIATE_TEST_SUITE_P(
    Store, CatalogOnServer, ::testing::ValuesIn(testing_support::serverStores()), adapterName
);

TEST_P(CatalogOnServer, ofANameThatIsTakenIsToldAndNotMade) {
    GetParam().makeCatalog(folder.str(), catalogName());
    DBAllowCreate = kYes;
    DBName = catalogName();
    EXPECT_EQ(gfbDB_CreateDatabase(), kNo);
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.starts_with("Error creating database 1801"))
        << desktop.boxes[0].text;
}

}  // namespace
