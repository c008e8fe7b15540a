#include "store.h"

#include <csignal>
#include <filesystem>

#include <sys/resource.h>

namespace {

using Management = Store;

TEST_F(Management, makesFindsAndListsCatalogs) {
    management.addCatalog(files("Training"));
    db.execute("Create Table Names (A CHAR(1))");
    std::string names;
    for (const auto& catalog : management.catalogs()) {
        names += catalog.name + (catalog.isSystem ? "! " : " ");
    }
    EXPECT_EQ(names, "NUVDATA1 Training ");
    ASSERT_EQ(management.tables("nuvdata1").size(), 1U);
    EXPECT_EQ(management.tables("nuvdata1").front().name, "Names");
    EXPECT_THROW(static_cast<void>(management.tables("Nobody")), platform::PlatformError);
    EXPECT_EQ(management.status(), 0);
    namespace fs = std::filesystem;
    EXPECT_EQ(fs::status(file()).permissions() & fs::perms::others_all, fs::perms::none);
    // A catalog that is there keeps its tables.
    management.addCatalog(files("NUVDATA1"));
    EXPECT_EQ(first("SELECT COUNT(*) FROM Names"), "0");
}

struct OpenCase {
    const char* given;
    const char* catalog;
    std::int32_t error;
};

constexpr OpenCase kOpens[] = {
    {"letter case and blanks do not matter", "nuvData1  ", 0},
    {"no file", "Nobody", 4060},
    {"a file that is no catalog", "Text", 5171},
    {"a folder of that name", "Folder", 5120},
};

TEST_F(Management, opensWhatIsACatalog) {
    folder.write("Text.mdf", std::string(5000, 'x'));
    std::filesystem::create_directory(folder.path() / "Folder.mdf");
    for (const auto& [given, catalog, error] : kOpens) {
        SCOPED_TRACE(given);
        auto wanted = settings();
        wanted.initialCatalog = catalog;
        std::int32_t number = 0;
        try {
            db.open(wanted);
        } catch (const platform::PlatformError& failure) {
            number = failure.number();
        }
        EXPECT_EQ(number, error);
        EXPECT_EQ(db.isOpen(), error == 0);
    }
    EXPECT_THROW(
        management.addCatalog({"X", folder.file("no\\X.mdf"), "", "", false, false}),
        platform::PlatformError
    );
}

TEST_F(Management, aDiskThatIsFullFailsTheStatementAndKeepsTheCatalog) {
    db.execute("Create Table T (N INTEGER, A CHAR(250))");
    db.execute("INSERT INTO T VALUES(1,'kept')");
    // Given: no file may grow past 100,000 bytes
    struct rlimit former {};
    getrlimit(RLIMIT_FSIZE, &former);
    const struct rlimit small { 100'000, former.rlim_max };
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    // When
    std::int32_t number = 0;
    for (int row = 0; row < 2000 && number == 0; ++row) {
        number = failure("INSERT INTO T VALUES(2,'" + std::string(250, 'x') + "')");
    }
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, handler);
    // Then
    EXPECT_TRUE(number == 823 || number == 1105) << number << " " << message;
    EXPECT_EQ(first("SELECT A FROM T WHERE N=1").substr(0, 4), "kept");
    EXPECT_EQ(failure("INSERT INTO T VALUES(3,'after')"), 0);
    EXPECT_EQ(otherProgram("PRAGMA integrity_check"), "ok");
}

}  // namespace
