#pragma once

#include "db/nuvDBSM_SalesCodes.h"
#include "security/clsUserLogin.h"
#include "support/link_fixture.h"
#include "windows/frmSM_USER_LOGIN.h"

#include <deque>
#include <string>
#include <vector>

namespace testing_support {

/// A clock that stands.
class StandingClock : public platform::ClockPort {
public:
    [[nodiscard]] util::DateTime now() const override { return moment; }
    void sleep(int /*milliseconds*/) override {}

    util::DateTime moment = {util::dayNumber({2026, 3, 10}), 34200};  // half past nine
};

/// What the operator types into the login window before pressing Accept.
struct Attempt {
    std::string userID;
    std::string password;
};

// Boxes of the login, as boxes() gives them.
inline constexpr char kUnknown[] = "Invalid User ID|The 'User ID' you entered does not exist.|ok\n";
inline constexpr char kWrong[] = "Invalid Password|The 'Password' you entered does not exist.|ok\n";
inline constexpr char kExpired[] =
    "Password Setup|Your password has expired. Please setup new Password now.|ok\n";
inline constexpr char kNotSetUp[] = "Password Setup|New password has not setup. you won't be able "
                                    "to login with expired password |ok\n";
inline constexpr char kLocked[] = "NUV Brevane|You have been locked due to log in Failure. "
                                  "Application will be closed|ok\n";
inline constexpr char kSixth[] =
    "Login Failure|You have failed to log in 6 times. \\rApplication will be closed|ok\n";

/// The login on a real store, with an operator's hands. Today is 10 March 2026.
class LoginTest : public LinkFixture {
protected:
    LoginTest();
    ~LoginTest() override;

    /// What the operator types into `frmPasswordEnter`, one entry for each press of OK; an entry
    /// without a new password presses Cancel, and so does the end of the entries.
    struct NewPassword {
        std::string typed;
        std::string repeated;
    };
    std::deque<NewPassword> newPasswords;

    /// Opens a new store; what is said while it opens is forgotten.
    void open();
    /// A person of store 1 whose password, when there is one, is stored under the present key.
    /// @param expires  days from today; 0 is today.
    static void
    addUser(const std::string& code, const std::string& shortCut, const std::string& password);
    /// Writes the row in `gSalesCode`.
    static void update();
    static void expireIn(const std::string& code, int days);
    /// The row of a person of store 1 as the store has it; it is also the one in `gSalesCode`.
    static db::SalesCodeRecord user(const std::string& code);
    /// Plain text of a stored column of the row in `gSalesCode`, by the present key alone.
    static std::string plainOf(const std::string& stored);
    /// First column of the rows of a statement, joined by "/".
    static std::string column(const std::string& statement);

    /// Opens the login window and types each attempt into it until it closes; then cancels.
    void logIn(const std::vector<Attempt>& attempts);
    /// Did the last login succeed?
    [[nodiscard]] bool isIn() const { return login.Valid() != kNo && login.Cancel == kNo; }
    /// The boxes since the last call, each as "title|text|buttons", joined by line breaks. A line
    /// break in a text is "\n", a carriage return alone "\r".
    std::string boxes();

    clsUserLogin login;
    StandingClock clock;
};

}  // namespace testing_support
