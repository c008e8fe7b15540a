#include "platform/ports/platform.h"
#include "security/login_fixture.h"
#include "security/sm_Encryption_Ops.h"
#include "support/table_file.h"
#include "util/conversions.h"
#include "windows/login_windows.h"

namespace {

using testing_support::Attempt;
using testing_support::kExpired;
using testing_support::kLocked;
using testing_support::kNotSetUp;
using testing_support::kSixth;
using testing_support::kUnknown;
using testing_support::kWrong;
using testing_support::LoginTest;
using testing_support::tableRows;

class Login : public LoginTest {
protected:
    /// A store with ZOE (password), YVES (none) and LIZ (password, closed account).
    void openShop() {
        open();
        addUser("ZOE", "Z1", "zoe1234");
        addUser("YVES", "Y1", "");
        addUser("LIZ", "L1", "liz1234");
        user("LIZ");
        gSalesCode.Status = "I";
        update();
    }
    [[nodiscard]] static std::string lastUser() {
        return platform::settings().get(
            windows::kLoginApplication, windows::kLoginSection, windows::kLastUserKey, "nobody"
        );
    }
    /// Codes of the closed accounts.
    static std::string closed() {
        return column("SELECT SalesCode FROM SalesCode WHERE Status = 'I'");
    }
};

constexpr char kMissing[] = "User ID Missing!|Security requires a 'User ID'\\nYou must correct "
                            "this before you can login - Try Again.|ok\n";
constexpr char kNone[] = "Log In Password required|You have not setup a password yet. Click OK to "
                         "setup a password now|ok/cancel\n";
constexpr char kWeak[] = "Strong password Required|You should setup new password with at least 7 "
                         "characters combining digits & alphabets|ok\n";
struct LockCase {
    const char* given;
    std::vector<Attempt> attempts;
    std::string boxes;
    const char* closed;
};

std::string times(int count, const std::string& box) {
    std::string boxes;
    for (int turn = 0; turn < count; ++turn) {
        boxes += box;
    }
    return boxes;
}

}  // namespace

TEST_F(Login, tellsWhatIsWrong) {
    openShop();
    addUser("ODD", "O1", "none");
    user("ODD");
    gSalesCode.Password = "00";  // no stored form: no password fits
    update();
    addUser("FAR", "F1", "far1234");
    execute("UPDATE SalesCode SET StoreNumber = 0 WHERE SalesCode = 'FAR'");
    for (const auto& [given, userID, password, enters, shown, failures, field] :
         tableRows<7>("security/login_attempts.json")) {
        SCOPED_TRACE(given);
        logIn({{"", ""}});  // the count begins anew
        boxes();
        logIn({{userID, password}});
        EXPECT_EQ(isIn(), enters == "yes");
        EXPECT_EQ(boxes(), shown);
        EXPECT_EQ(std::to_string(login.FailureCount()), failures);
        if (!field.empty()) {
            EXPECT_EQ(
                login.FieldIndex,
                field == "user ID" ? security::fieldUserID : security::fieldPassword
            );
        }
        EXPECT_EQ(login.Password, "");
    }
    EXPECT_EQ(closed(), "LIZ");
    EXPECT_EQ(fileText("Login.nuv"), "");
}

TEST_F(Login, keepsTheSalesCodeOfTheLastLogin) {
    openShop();
    logIn({{"ZOE", "wrong"}});
    EXPECT_EQ(lastUser(), "nobody");
    logIn({{"Z1", "zoe1234"}});
    EXPECT_EQ(login.UserID, "ZOE");
    EXPECT_EQ(lastUser(), "ZOE");
    logIn({{"LIZ", "liz1234"}});
    EXPECT_EQ(lastUser(), "ZOE");
}

TEST_F(Login, closesTheAccountAtTheSixthFailure) {
    openShop();
    addUser("O'NEIL", "N1", "neil123");
    const LockCase kLocks[] = {
        {"five failures close nothing, and the right password ends them",
         {{"ZOE", "1"}, {"ZOE", "2"}, {"ZOE", "3"}, {"ZOE", "4"}, {"ZOE", "5"}, {"ZOE", "zoe1234"}},
         times(5, kWrong),
         "LIZ"},
        {"a missing user ID ends them too",
         {{"ZOE", "1"},
          {"ZOE", "2"},
          {"ZOE", "3"},
          {"ZOE", "4"},
          {"ZOE", "5"},
          {"", ""},
          {"ZOE", "6"}},
         times(5, kWrong) + kMissing + kWrong,
         "LIZ"},
        {"six unknown user IDs close no account",
         {{"A", "1"}, {"B", "2"}, {"C", "3"}, {"D", "4"}, {"E", "5"}, {"ZED", "6"}, {"ZOE", "x"}},
         times(6, kUnknown) + kSixth,
         "LIZ"},
        {"failures of different user IDs count together; the last one typed is closed",
         {{"ZOE", "1"}, {"NOBODY", "2"}, {"ZOE", "3"}, {"YVETTE", "4"}, {"ZOE", "5"}, {"n1", "6"}},
         std::string(kWrong) + kUnknown + kWrong + kUnknown + kWrong + kWrong + kSixth,
         "LIZ/O'NEIL"},
        {"a code longer than its column closes the account that it finds",
         std::vector<Attempt>(6, {"ZOE     X", "1"}),
         times(6, kWrong) + kSixth,
         "LIZ/O'NEIL/ZOE"},
    };
    for (const LockCase& row : kLocks) {
        SCOPED_TRACE(row.given);
        clock.moment.seconds += 60;
        logIn({{"", ""}});
        boxes();
        logIn(row.attempts);
        EXPECT_EQ(boxes(), row.boxes);
        EXPECT_EQ(
            column("SELECT SalesCode FROM SalesCode WHERE Status = 'I' ORDER BY SalesCode"),
            row.closed
        );
        if (row.boxes.ends_with(kSixth)) {
            EXPECT_EQ(login.Cancel, kYes);
            EXPECT_FALSE(isIn());
        }
    }
    EXPECT_EQ(
        store.beginningWith({"UPDATE SalesCode SET Status"}),
        (std::vector<std::string>{
            "UPDATE SalesCode SET Status = 'I' WHERE  SalesCode = 'ZED' AND storenumber =1",
            "UPDATE SalesCode SET Status = 'I' WHERE  SalesCode = 'O''NEIL' AND storenumber =1",
            "UPDATE SalesCode SET Status = 'I' WHERE  SalesCode = 'ZOE' AND storenumber =1",
        })
    );
    logIn({{"O'NEIL", "neil123"}});
    EXPECT_EQ(boxes(), kLocked);
    EXPECT_FALSE(isIn());
}

TEST_F(Login, asksForAStrongPasswordWhereItMust) {
    openShop();
    addUser("WEAK", "W1", "weak");
    login.StrongPwdRequired = "Yes";
    struct Case {
        const char* given;
        const char* userID;
        const char* password;
        std::deque<NewPassword> typed;
        bool agrees;
        std::string boxes;
        bool enters;
    };
    const Case kCases[] = {
        {"a strong one passes", "ZOE", "zoe1234", {}, true, "", true},
        {"no password, and none wanted", "YVES", "", {}, false, kNone, false},
        {"no password, cancelled", "YVES", "", {{}}, true, std::string(kNone) + kNotSetUp, false},
        {"no password, set now", "Y1", "", {{"yves1234", "yves1234"}}, true, kNone, true},
        {"it holds from then on", "YVES", "yves1234", {}, true, "", true},
        {"a weak one, cancelled",
         "WEAK",
         "weak",
         {{}},
         true,
         std::string(kWeak) + kNotSetUp + kWrong,
         false},
        {"a weak one, changed", "WEAK", "weak", {{"strong12", "strong12"}}, true, kWeak, true},
        {"the weak one is gone", "WEAK", "weak", {}, true, kWrong, false},
        {"no password is asked for when it may be missing", "GUEST", "", {}, true, "", true},
    };
    addUser("GUEST", "G1", "");
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.given);
        login.StrongPwdRequired = std::string(row.userID) == "GUEST" ? "yes" : "Yes";
        newPasswords = row.typed;
        desktop.otherwise = row.agrees ? platform::BoxAnswer::ok : platform::BoxAnswer::cancel;
        logIn({{row.userID, row.password}});
        EXPECT_EQ(boxes(), row.boxes);
        EXPECT_EQ(isIn(), row.enters);
    }
    EXPECT_EQ(plainOf(user("YVES").Password.trimmed()), "yves1234");
    EXPECT_FALSE(util::aboveBlank(gSalesCode.LastPwd.trimmed()));
    EXPECT_EQ(gSalesCode.ResetPwdDate->day, clock.moment.day + 90);
}

TEST_F(Login, anExpiredPasswordOfAClosedAccountIsChangedInVain) {
    openShop();
    expireIn("LIZ", 0);
    newPasswords = {{"liz5678", "liz5678"}};
    logIn({{"LIZ", "liz1234"}});
    EXPECT_FALSE(isIn());
    EXPECT_EQ(boxes(), std::string(kExpired) + kLocked);
    EXPECT_EQ(plainOf(user("LIZ").Password.trimmed()), "liz5678");
    EXPECT_EQ(user("LIZ").Status.trimmed(), "I");
}
