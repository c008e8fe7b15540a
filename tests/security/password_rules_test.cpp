#include "platform/ports/platform.h"
#include "security/login_fixture.h"
#include "security/sm_Encryption_Ops.h"
#include "util/conversions.h"

namespace {

using testing_support::LoginTest;

class PasswordRules : public LoginTest {};

struct StandardCase {
    const char* given;
    const char* password;
    bool met;
};

constexpr StandardCase kStandards[] = {
    {"nothing", "", false},
    {"three letters and four digits", "abc1234", true},
    {"six characters", "abc123", false},
    {"letters alone", "abcdefg", false},
    {"digits alone", "1234567", false},
    {"an exclamation mark and six digits", "!123456", true},
    {"a slash, the last sign before the digits", "/123456", true},
    {"a colon, the first behind them", ":123456", true},
    {"a tilde, the last that counts", "~123456", true},
    {"code 127",
     "\x7f"
     "123456",
     false},
    {"a blank is no letter", "1234 567", false},
    {"a tab is none", "\t1234567", false},
    {"an accented letter is none",
     "\xe9\xe9\xe9"
     "1234",
     false},
    {"blanks at the ends do not count for the length", "  abc12  ", false},
    {"but seven characters between them do", " abc1234 ", true},
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

struct HistoryCase {
    const char* given;
    const char* change;
    const char* history;  ///< present password first
};

constexpr HistoryCase kChanges[] = {
    {"the first change", "second2", "second2/first11////"},
    {"the next", "third33", "third33/second2/first11///"},
    {"and the next", "fourth4", "fourth4/third33/second2/first11//"},
    {"the history is full", "fifth55", "fifth55/fourth4/third33/second2/first11/"},
    {"the oldest drops out", "sixth66", "sixth66/fifth55/fourth4/third33/second2/"},
    {"and may be used again", "first11", "first11/sixth66/fifth55/fourth4/third33/"},
};

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

constexpr char kExpired[] =
    "Password Setup|Your password has expired. Please setup new Password now.|ok\n";
constexpr char kUsedBefore[] =
    "Password Setup|You cannot use the same last 4 passwords. Please try another.|ok\n";
constexpr char kNotSetUp[] = "Password Setup|New password has not setup. you won't be able to "
                             "login with expired password |ok\n";
constexpr char kWrongPassword[] =
    "Invalid Password|The 'Password' you entered does not exist.|ok\n";

}  // namespace

TEST(PasswordStandard, asksForSevenCharactersWithDigitAndLetter) {
    const clsUserLogin login;
    for (const auto& [given, password, met] : kStandards) {
        SCOPED_TRACE(given);
        LegacyBool result = kNo;
        login.gfb_PwdStandardMet(password, result);
        EXPECT_EQ(result, legacyBool(met));
    }
}

TEST_F(PasswordRules, aChangeShiftsTheHistory) {
    open();
    addUser("ZOE", "Z1", "first11");
    std::string present = "first11";
    for (const auto& [given, change, history] : kChanges) {
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
    ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opUpdate, 0), kNo);
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
            kUsedBefore + kNotSetUp + kWrongPassword
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
        ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opUpdate, 0), kNo);
        logIn({{code, "valid123"}});
        EXPECT_EQ(isIn(), !expired);
        EXPECT_EQ(boxes(), expired ? std::string(kExpired) + kNotSetUp + kWrongPassword : "");
    }
}

TEST_F(PasswordRules, aColumnOfAnOlderKeyIsStoredAnewOnce) {
    open();
    for (const auto& [code, key] : kOlder) {
        SCOPED_TRACE(code);
        addUser(code, std::string(code).substr(0, 4), "none");
        user(code);
        gSalesCode.Password = gfsPassword_Encrypt("older123", key());
        ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opUpdate, 0), kNo);
        // A wrong password brings the column up to date too: it is read before it is compared.
        logIn({{code, "wrong"}, {code, "older123"}});
        EXPECT_TRUE(isIn());
        EXPECT_EQ(boxes(), kWrongPassword);
        EXPECT_EQ(plainOf(user(code).Password.trimmed()), "older123");
        watch.statements.clear();
        logIn({{code, "older123"}});
        EXPECT_TRUE(isIn());
        EXPECT_TRUE(watch.beginningWith({"UPDATE"}).empty());
    }
    EXPECT_EQ(
        column("SELECT * FROM SalesCode WHERE Password > ' '").find("older"), std::string::npos
    );
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
