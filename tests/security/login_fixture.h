#pragma once

#include "db/nuvDBSM_SalesCodes.h"
#include "security/clsUserLogin.h"
#include "support/link_fixture.h"
#include "support/watched_store.h"
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
    StoreWatch watch;
};

}  // namespace testing_support
