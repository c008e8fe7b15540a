#include "platform/ports/platform.h"
#include "security/login_fixture.h"
#include "security/sm_Encryption_Ops.h"
#include "support/table_file.h"
#include "util/conversions.h"

#include <sqlite3.h>

namespace {

using testing_support::kExpired;
using testing_support::kLocked;
using testing_support::kNotSetUp;
using testing_support::kWrong;
using testing_support::LoginTest;
using testing_support::tableRows;

class PasswordRules : public LoginTest {
protected:
    /// Lets the store refuse changes of one column of the sales codes.
    void refuseUpdates(const std::string& column) const {
        sqlite3* catalog = nullptr;
        ASSERT_EQ(sqlite3_open((folder() + "/NUVDATA1.mdf").c_str(), &catalog), SQLITE_OK);
        const std::string trigger = "CREATE TRIGGER refuse BEFORE UPDATE OF " + column +
                                    " ON SalesCode BEGIN SELECT RAISE(ABORT, 'refused'); END";
        EXPECT_EQ(sqlite3_exec(catalog, trigger.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(catalog);
        sqlite3_close(catalog);
    }
};

/// What the columns of a person hold, from the present password to the oldest.
std::string historyOf(const db::SalesCodeRecord& row) {
    std::string plain;
    for (const auto& stored :
         {row.Password, row.LastPwd, row.Last2ndPwd, row.Last3rdPwd, row.Last4thPwd}) {
        plain += gfsPassword_Decrypt(stored.trimmed(), gfsUserKey()) + "/";
    }
    return plain;
}

struct ExpiryCase {
    const char* given;
    std::optional<util::DateTime> date;
    bool expired;
};

const std::int32_t kToday = util::dayNumber({2026, 3, 10});

const ExpiryCase kExpiries[] = {
    {"no date", std::nullopt, false},
    {"the column's default", util::DateTime{util::dayNumber({1900, 1, 1}), 0}, false},
    {"yesterday", util::DateTime{kToday - 1, 0}, true},
    {"today", util::DateTime{kToday, 0}, true},
    {"tomorrow", util::DateTime{kToday + 1, 0}, false},
    {"the date of a first password", util::DateTime{util::dayNumber({2000, 1, 1}), 0}, true},
};

struct OlderCase {
    const char* code;
    std::string (*key)();
};

constexpr OlderCase kOlder[] = {
    {"OLDKEY", gfsUserKeyOld},
    {"OLDEST", [] { return gSalesCode.SalesCode.trimmed(); }},
    {"O'NEIL", gfsUserKeyOld},
};

constexpr char kUsedBefore[] =
    "Password Setup|You cannot use the same last 4 passwords. Please try another.|ok\n";

}  // namespace

TEST(PasswordStandard, asksForSevenCharactersWithDigitAndLetter) {
    const clsUserLogin login;
    for (const auto& [given, password, met] : tableRows<3>("security/password_standard.json")) {
        SCOPED_TRACE(given);
        LegacyBool result = kNo;
        login.gfb_PwdStandardMet(password, result);
        EXPECT_EQ(result, legacyBool(met == "yes"));
    }
}

TEST_F(PasswordRules, aChangeShiftsTheHistory) {
    open();
    addUser("ZOE", "Z1", "first11");
    std::string present = "first11";
    for (const auto& [given, change, history] : tableRows<3>("security/password_changes.json")) {
        SCOPED_TRACE(given);
        expireIn("ZOE", 0);
        newPasswords = {{change, change}};
        logIn({{"ZOE", present}});
        EXPECT_TRUE(isIn());
        EXPECT_EQ(boxes(), kExpired);
        EXPECT_EQ(historyOf(user("ZOE")), history);
        EXPECT_EQ(gSalesCode.ResetPwdDate, (util::DateTime{kToday + 90, 0}));
        present = change;
    }
}

TEST_F(PasswordRules, theLastFiveAreRefused) {
    open();
    addUser("ZOE", "Z1", "first11");
    // Entries of the history that were stored under older keys count too, and stay as they are.
    user("ZOE");
    gSalesCode.LastPwd = gfsPassword_Encrypt("later0", gfsUserKey());
    gSalesCode.Last2ndPwd = gfsPassword_Encrypt("oldkey2", gfsUserKeyOld());
    gSalesCode.Last3rdPwd = gfsPassword_Encrypt("oldest3", "ZOE");
    gSalesCode.Last4thPwd = "no stored form";
    update();
    expireIn("ZOE", -1);
    const db::SalesCodeRecord before = user("ZOE");
    newPasswords = {
        {"later0", "later0"},  // the window itself refuses what is in the history
        {"oldkey2", "oldkey2"},
        {" oldest3", " oldest3"},
        {"first11", "first11"},  // the change refuses the present one and opens the window again
        {"later0", "later0"},
    };
    logIn({{"ZOE", "first11"}});
    EXPECT_FALSE(isIn());
    EXPECT_EQ(
        boxes(),
        std::string(kExpired) + kUsedBefore + kUsedBefore + kUsedBefore + kUsedBefore +
            kUsedBefore + kNotSetUp + kWrong
    );
    const db::SalesCodeRecord after = user("ZOE");
    EXPECT_EQ(after.Password, before.Password);
    EXPECT_EQ(after.Last2ndPwd, before.Last2ndPwd);
    EXPECT_EQ(after.Last3rdPwd, before.Last3rdPwd);
    EXPECT_EQ(after.ResetPwdDate, before.ResetPwdDate);
}

TEST_F(PasswordRules, aPasswordExpiresOnItsDay) {
    open();
    int number = 0;
    for (const auto& [given, date, expired] : kExpiries) {
        SCOPED_TRACE(given);
        const std::string code = "EXP" + std::to_string(++number);
        addUser(code, "E" + std::to_string(number), "valid123");
        user(code);
        gSalesCode.ResetPwdDate = date;
        update();
        logIn({{code, "valid123"}});
        EXPECT_EQ(isIn(), !expired);
        EXPECT_EQ(boxes(), expired ? std::string(kExpired) + kNotSetUp + kWrong : "");
    }
}

TEST_F(PasswordRules, aColumnOfAnOlderKeyIsStoredAnewOnce) {
    open();
    for (const auto& [code, key] : kOlder) {
        SCOPED_TRACE(code);
        addUser(code, std::string(code).substr(0, 4), "none");
        user(code);
        gSalesCode.Password = gfsPassword_Encrypt("older123", key());
        update();
        // A wrong password brings the column up to date too: it is read before it is compared.
        logIn({{code, "wrong"}, {code, "older123"}});
        EXPECT_TRUE(isIn());
        EXPECT_EQ(boxes(), kWrong);
        const std::string stored = user(code).Password.trimmed();
        EXPECT_EQ(plainOf(stored), "older123");
        EXPECT_EQ(
            store.beginningWith({"UPDATE SalesCode SET Password = '"}).back(),
            "UPDATE SalesCode SET Password = '" + stored + "' WHERE  SalesCode = '" +
                util::replaceAll(code, "'", "''") + "' AND storenumber =1"
        );
        store.statements.clear();
        logIn({{code, "older123"}});
        EXPECT_TRUE(isIn());
        EXPECT_TRUE(store.beginningWith({"UPDATE"}).empty());
    }
    EXPECT_EQ(
        column("SELECT * FROM SalesCode WHERE Password > ' '").find("older"), std::string::npos
    );
}

TEST_F(PasswordRules, aChangeThatTheStoreRefusesIsNone) {
    open();
    addUser("ZOE", "Z1", "first11");
    expireIn("ZOE", 0);
    const db::SalesCodeRecord before = user("ZOE");
    newPasswords = {{"second2", "second2"}};
    refuseUpdates("Password");
    logIn({{"ZOE", "first11"}});
    EXPECT_FALSE(isIn());
    EXPECT_EQ(boxes(), std::string(kExpired) + "NUV Brevane|refused|ok\n");
    EXPECT_EQ(user("ZOE").Password, before.Password);
    EXPECT_EQ(gSalesCode.ResetPwdDate, before.ResetPwdDate);
    EXPECT_EQ(column("SELECT Result FROM LogInSec WHERE Detail = 'Password Change'"), "");
}

TEST_F(PasswordRules, anAccountThatIsClosedDuringTheChangeStaysClosed) {
    open();
    addUser("ZOE", "Z1", "first11");
    expireIn("ZOE", 0);
    newPasswords = {{"second2", "second2"}};
    const auto type = desktop.onForm["frmPasswordEnter"];
    desktop.onForm["frmPasswordEnter"] = [&](ui::Form& window) {
        execute("UPDATE SalesCode SET Status = 'I', FullName = 'Zoe' WHERE SalesCode = 'ZOE'");
        type(window);
    };
    logIn({{"ZOE", "first11"}});
    EXPECT_FALSE(isIn());
    EXPECT_EQ(boxes(), std::string(kExpired) + kLocked);
    EXPECT_EQ(user("ZOE").Status.trimmed(), "I");
    EXPECT_EQ(historyOf(gSalesCode), "second2/first11////");
}

TEST_F(PasswordRules, theFirstPasswordOfANewStoreHasExpired) {
    security::installPasswordCipher();
    std::filesystem::create_directories(folder() + "/program");
    std::ofstream(folder() + "/program/DefaultSalesCodes.txt")
        << "901|HELLO|1|H|Hello\r\n\r\n902|GUEST|1|G|Guest\r\n";
    makeStore(0, 1);
    login.StoreNumber = 1;
    desktop.boxes.clear();
    const std::string stored = user("HELLO").Password.trimmed();
    EXPECT_EQ(stored, gfsPassword_Encrypt("qrx7351", gfsUserKeyOld()));
    EXPECT_FALSE(util::aboveBlank(user("GUEST").Password.trimmed()));
    newPasswords = {{"mine2026", "mine2026"}};
    logIn({{"H", "qrx7351"}});
    EXPECT_TRUE(isIn());
    EXPECT_EQ(boxes(), kExpired);
    EXPECT_EQ(historyOf(user("HELLO")), "mine2026/qrx7351////");
    logIn({{"HELLO", "mine2026"}});
    EXPECT_TRUE(isIn());
}
