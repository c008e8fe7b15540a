#include "config/clsDataPath.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SecurLog.h"
#include "security/login_fixture.h"
#include "security/secret.h"
#include "security/sm_Encryption_Ops.h"
#include "util/conversions.h"

#include <filesystem>

#include <sys/stat.h>

namespace {

using testing_support::Attempt;
using testing_support::kSixth;
using testing_support::LoginTest;

class LoginTrail : public LoginTest {
protected:
    void openShop() {
        open();
        addUser("ZOE", "Z1", "zoe1234");
        execute("DELETE FROM LogInSec");
    }
    /// The rows of the trail in order, their columns joined by "|".
    static std::string rows() {
        const auto set = db::connection().openRowSet("SELECT * FROM LogInSec ORDER BY ID");
        std::string text;
        for (; !set->atEnd(); set->moveNext()) {
            for (int ordinal = 0; ordinal < set->fieldCount(); ++ordinal) {
                text += util::rtrim(db::statementText(set->value(ordinal)));
                text += ordinal + 1 < set->fieldCount() ? "|" : "\n";
            }
        }
        return text;
    }
    void failSixTimes() { logIn(std::vector<Attempt>(6, {"ZOE", "wrong"})); }
};

}  // namespace

TEST_F(LoginTrail, hasALineForEachChangeAndForTheSixthFailure) {
    openShop();
    expireIn("ZOE", 0);
    logIn({{"ZOE", "zoe1234"}});  // the change is cancelled
    clock.moment.seconds += 60;
    newPasswords = {{"zoe5678", "zoe5678"}};
    logIn({{"z1", "zoe1234"}});
    EXPECT_TRUE(isIn());
    clock.moment.seconds += 60;
    logIn({{"ZOE", "zoe5678"}});  // leaves no line
    gCommon.USEurope = "E";
    failSixTimes();
    EXPECT_EQ(
        rows(),
        "ZOE|20260310 09:30:00|20260310 09:30:00|Initial Login Create||1|1|\n"
        "ZOE|20260310 09:30:00|20260310 09:30:00|Password Change|F|2|1|\n"
        "ZOE|20260310 09:31:00|20260310 09:31:00|Password Change|S|3|1|\n"
        "ZOE|20260310 09:32:00|20260310 09:32:00|Log in Kelvane|I|4|1|\n"
    );
    EXPECT_EQ(
        fileText("Login.nuv"),
        "3/10/2026 Initial Login Created\r\n"
        "3/10/2026 Password Change Failed\r\n"
        "3/10/2026 Password Change Sucessful\r\n"
        "10/3/2026 Log in Kelvane I\r\n"
    );
    struct stat status {};
    ASSERT_EQ(::stat((folder() + "/Login.nuv").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & S_IRWXO, 0U);
}

TEST_F(LoginTrail, goesOnBehindTheLastRowAndInAnEmptyFile) {
    openShop();
    std::ofstream(folder() + "/Login.nuv").close();
    gLogInSec = db::LogInSecRecord();
    gLogInSec.SalesCode = "ANNA";
    gLogInSec.ID = 7;
    ASSERT_NE(gfiDB_Operation(db::tableLogInSec, db::opInsert, 0), kNo);
    gDataPath.Station = "12";
    user("ZOE");
    login.Login_Log("A detail that is longer than its column", "Result");
    EXPECT_TRUE(
        rows().ends_with("ZOE|20260310 09:30:00|20260310 09:30:00|A detail that is lon|R|8|12|\n")
    ) << rows();
    EXPECT_EQ(
        fileText("Login.nuv"),
        "3/10/2026 Initial Login Created\r\n"
        "3/10/2026 A detail that is longer than its column Result\r\n"
    );
}

TEST_F(LoginTrail, failuresOfTheTrailAreToldAndTheAccountIsClosedAllTheSame) {
    openShop();
    const auto statusAfterFailures = [this] {
        execute("UPDATE SalesCode SET Status = ' ' WHERE SalesCode = 'ZOE'");
        logIn({{"", ""}});
        boxes();
        failSixTimes();
        return user("ZOE").Status.trimmed();
    };
    // A file that cannot be written: the row is there.
    std::filesystem::create_directory(folder() + "/Login.nuv");
    EXPECT_EQ(statusAfterFailures(), "I");
    EXPECT_TRUE(boxes().ends_with(kSixth));
    EXPECT_EQ(
        column("SELECT Detail FROM LogInSec ORDER BY ID"), "Initial Login Create/Log in Kelvane"
    );
    std::filesystem::remove(folder() + "/Login.nuv");
    // A row that is refused.
    store.failures.emplace("INSERT INTO LogInSec", platform::PlatformError(1205, "deadlock"));
    EXPECT_EQ(statusAfterFailures(), "I");
    EXPECT_TRUE(boxes().ends_with(std::string("NUV Brevane|record did not insert|ok\n") + kSixth));
    // A table that cannot be read, and IDs that have run out.
    store.failures.clear();
    store.failures.emplace("SELECT TOP 1 * FROM LogInSec", platform::PlatformError(11, "gone"));
    EXPECT_EQ(statusAfterFailures(), "I");
    EXPECT_TRUE(boxes().ends_with(std::string("NUV Brevane|gone|ok\n") + kSixth));
    store.failures.clear();
    execute("UPDATE LogInSec SET ID = 2147483647 WHERE ID = 2");
    EXPECT_EQ(statusAfterFailures(), "I");
    EXPECT_TRUE(boxes().ends_with(std::string("NUV Brevane|Overflow|ok\n") + kSixth));
}

TEST_F(LoginTrail, aStoreThatFailsLetsNobodyIn) {
    openShop();
    logIn({{"ZOE", "zoe1234"}});
    EXPECT_TRUE(isIn());
    struct Case {
        const char* given;
        const char* statement;
    };
    user("ZOE");
    gSalesCode.Password = gfsPassword_Encrypt("zoe1234", gfsUserKeyOld());
    update();
    for (const auto& [given, statement] :
         {Case{"the row cannot be read", "SELECT TOP 1 * FROM SalesCode"},
          Case{
              "the column of an older key cannot be stored anew",
              "UPDATE SalesCode SET Password"}}) {
        SCOPED_TRACE(given);
        store.failures.clear();
        store.failures.emplace(statement, platform::PlatformError(1205, "deadlock"));
        logIn({{"ZOE", "zoe1234"}});
        EXPECT_FALSE(isIn());
        EXPECT_EQ(login.Valid(), kNo);
        EXPECT_EQ(boxes(), "NUV Brevane|deadlock|ok\n");
    }
}

TEST_F(LoginTrail, aChangeNeverHitsAnotherRow) {
    openShop();
    addUser("ADA", "A1", "ada1234");
    expireIn("ZOE", 0);
    const std::string before = column("SELECT Password FROM SalesCode WHERE SalesCode <> 'ZOE'");
    // The row goes while its owner types the new password.
    newPasswords = {{"zoe5678", "zoe5678"}};
    const auto type = desktop.onForm["frmPasswordEnter"];
    desktop.onForm["frmPasswordEnter"] = [&](ui::Form& window) {
        execute("DELETE FROM SalesCode WHERE SalesCode = 'ZOE'");
        type(window);
    };
    logIn({{"ZOE", "zoe1234"}});
    EXPECT_FALSE(isIn());
    EXPECT_EQ(column("SELECT Password FROM SalesCode WHERE SalesCode <> 'ZOE'"), before);
    EXPECT_EQ(column("SELECT Detail FROM LogInSec WHERE Result = 'F'"), "Password Change");
}

TEST_F(LoginTrail, noFileHoldsAPasswordOrAKey) {
    openShop();
    expireIn("ZOE", 0);
    const security::Secret key(gfsUserKey());  // a later test searches the memory for it
    newPasswords = {{"s3cretNew", "s3cretNeu"}, {"s3cretNew", "s3cretNew"}};
    logIn({{"ZOE", "s3cretBad"}, {"Z1", "zoe1234"}});
    EXPECT_TRUE(isIn());
    store.failures.emplace(
        "UPDATE SalesCode SET Status", platform::PlatformError(1205, "deadlock")
    );
    logIn(std::vector<Attempt>(6, {"ZOE", "s3cretBad"}));
    const std::string stored = user("ZOE").Password.trimmed();
    // The people go to the company file without their passwords; a log of the documents holds
    // what is sent.
    openSetup();
    exportChecked(5);
    EXPECT_GT(faults->documents.size(), 3U);
    for (const std::string& document : faults->documents) {
        EXPECT_EQ(document.find(stored), std::string::npos) << document;
    }
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder())) {
        if (!entry.is_regular_file()) {
            continue;
        }
        ++files;
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        SCOPED_TRACE(entry.path());
        for (const std::string_view secret :
             {std::string_view("s3cret"),
              std::string_view("zoe1234"),
              std::string_view(key.text())}) {
            EXPECT_EQ(bytes.find(secret), std::string::npos) << secret;
        }
        const bool isStore = entry.path().string().find("NUVDATA1.mdf") != std::string::npos;
        EXPECT_TRUE(isStore || bytes.find(stored) == std::string::npos);
    }
    EXPECT_GT(files, 5);
    EXPECT_NE(fileText("PVSW.log"), "");
}
