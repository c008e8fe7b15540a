#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "platform/console/console_desktop.h"
#include "platform/ports/platform.h"
#include "security/clsUserLogin.h"
#include "security/sm_Encryption_Ops.h"
#include "support/link_fixture.h"
#include "windows/frmPasswordEnter.h"
#include "windows/frmSM_USER_LOGIN.h"
#include "windows/login_windows.h"

#include <sstream>

namespace {

/// The two windows of the login with an operator at the console.
class LoginWindows : public testing_support::LinkFixture {
protected:
    /// Opens a store and gives ANNA the password "anna123".
    void open() {
        makeStore(0, 1);
        windows::installPasswordWindow();
        login.StoreNumber = 1;
        login.Application = "Brevane";
        gSalesCode.StoreNumber = 1;
        gSalesCode.SalesCode = "ANNA";
        ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opEqual, db::keySalesCodeSalesCode), kNo);
        gSalesCode.Password = gfsPassword_Encrypt("anna123", gfsUserKey());
        gSalesCode.LastPwd = gfsPassword_Encrypt("before1", gfsUserKey());
        ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opUpdate, 0), kNo);
    }
    ~LoginWindows() override { security::passwordWindow() = nullptr; }

    /// Plays a script at a window. @return what was printed.
    std::string play(ui::Form& window, const std::string& script) {
        std::istringstream in(script);
        std::ostringstream out;
        platform::ConsoleDesktop console(in, out);
        platform::current().desktop = &console;
        console.showModal(window);
        platform::current().desktop = &desktop;
        return out.str();
    }

    clsUserLogin login;
};

constexpr char kOpened[] = "[window] frmSM_USER_LOGIN \"Login: Brevane\"\n";

struct LoginCase {
    const char* given;
    const char* script;
    const char* printed;
    bool enters;
};

constexpr LoginCase kLogins[] = {
    {"the end of the input gives up", "", "", false},
    {"Cancel gives up",
     "set txtUserID ANNA\nset txtPassword anna123\nclick cmdOkCancel(1)",
     "",
     false},
    {"so does Esc", "key Esc", "", false},
    {"so does the close box, after a wrong password too",
     "set txtUserID ANNA\nset txtPassword x\nkey Enter\nclose",
     "[box] Invalid Password | The 'Password' you entered does not exist. | ok -> ok\n",
     false},
    {"Enter logs in", "set txtUserID ANNA\nset txtPassword anna123\nkey Enter", "", true},
    {"the last user stands there; a password is never shown, and is emptied after a failure",
     "set txtPassword x\nshow txtUserID\nshow txtPassword\nclick cmdOkCancel(0)\nshow txtPassword\n"
     "set txtPassword anna123\nclick cmdOkCancel(0)",
     "[control] txtUserID textBox \"ANNA\" enabled visible\n"
     "[control] txtPassword passwordBox \"***\" enabled visible\n"
     "[box] Invalid Password | The 'Password' you entered does not exist. | ok -> ok\n"
     "[control] txtPassword passwordBox \"\" enabled visible\n",
     true},
    {"help",
     "key F1\nclose",
     "[box] NUV Help | LOGIN\\nEnter your sales code.  If you have not been assigned one, then use "
     "Hello.\\nSales Codes are maintained in Configuration.\\nSelect Help, Configuration and Sales "
     "Codes.\\nEnter your password and Press Enter, if one has been assigned.\\nIf not, select "
     "Accept or Press Alt A on the keyboard. | ok -> ok\n",
     false},
};

struct EntryCase {
    const char* given;
    const char* script;
    const char* box;       ///< title and text of the box that is shown; empty: none
    const char* password;  ///< what the window gives
    bool strong = false;
};

constexpr EntryCase kEntries[] = {
    {"typed twice", "set txtNewPassword a\nset txtRepeatPassword a\nkey Enter", "", "a"},
    {"no password at all is cancelled by the caller", "key Enter", "", ""},
    {"the second one differs",
     "set txtNewPassword abc\nset txtRepeatPassword Abc\nkey Enter\nshow txtRepeatPassword",
     "Password confirmmation | Re-Enter Password not matched. Please do again.",
     ""},
    {"a weak one where that does not matter",
     "set txtNewPassword abc\nset txtRepeatPassword abc\nkey Enter",
     "",
     "abc"},
    {"a weak one where it does",
     "set txtNewPassword abc\nset txtRepeatPassword abc\nkey Enter",
     "Password Setting | Minimum 7 characters combining digits and letters.",
     "",
     true},
    {"a strong one",
     "set txtNewPassword abc1234\nset txtRepeatPassword abc1234\nkey Enter",
     "",
     "abc1234",
     true},
    {"one of the history",
     "set txtNewPassword before1\nset txtRepeatPassword before1\nkey Enter",
     "Password Setup | You cannot use the same last 4 passwords. Please try another.",
     ""},
    {"28 characters",
     "set txtNewPassword 1234567890123456789012345678\n"
     "set txtRepeatPassword 1234567890123456789012345678\nkey Enter",
     "",
     "1234567890123456789012345678"},
    {"29 characters do not fit the column",
     "set txtNewPassword 12345678901234567890123456789\n"
     "set txtRepeatPassword 12345678901234567890123456789\nkey Enter",
     "NUV Brevane | A password has at most 28 characters.",
     ""},
    {"Cancel", "set txtNewPassword abc\nset txtRepeatPassword abc\nclick cmdOkCancel(1)", "", ""},
    {"the close box", "set txtNewPassword abc\nset txtRepeatPassword abc\nclose", "", ""},
};

}  // namespace

TEST_F(LoginWindows, loginIsWorkedByMouseAndKeys) {
    open();
    for (const auto& [given, script, printed, enters] : kLogins) {
        SCOPED_TRACE(given);
        frmSM_USER_LOGIN window(login);
        EXPECT_EQ(play(window, script), std::string(kOpened) + printed);
        EXPECT_EQ(login.Cancel, legacyBool(!enters));
        EXPECT_EQ(window.text("txtPassword") + login.Password, "");
    }
}

TEST_F(LoginWindows, loginShowsItsCaptionsAndHidesTheLastUserWhenTold) {
    open();
    platform::settings().save(
        windows::kLoginApplication, windows::kLoginSection, windows::kLastUserKey, "ANNA"
    );
    login.CaptionUserID = "Cashier";
    login.CaptionPassword = "Secret";
    using LastUser = frmSM_USER_LOGIN::LastUser;
    for (const LastUser lastUser : {LastUser::shown, LastUser::hidden}) {
        frmSM_USER_LOGIN window(login, lastUser);
        play(window, "close");
        EXPECT_EQ(window.control("txtUserID").caption, "Cashier");
        EXPECT_EQ(window.control("txtPassword").caption, "Secret");
        EXPECT_EQ(window.text("txtUserID"), lastUser == LastUser::shown ? "ANNA" : "");
    }
}

TEST_F(LoginWindows, theFieldInErrorGetsTheCursor) {
    open();
    frmSM_USER_LOGIN window(login);
    desktop.onForm["frmSM_USER_LOGIN"] = [](ui::Form& form) {
        form.setText("txtUserID", "ANNA");
        form.raise("cmdOkCancel", ui::Signal::click, 0);
        EXPECT_EQ(form.focus(), "txtPassword");
        form.setText("txtUserID", "NOBODY");
        form.raise("cmdOkCancel", ui::Signal::click, 0);
        EXPECT_EQ(form.focus(), "txtUserID");
    };
    desktop.showModal(window);
}

TEST_F(LoginWindows, aNewPasswordIsTypedTwice) {
    open();
    login.Application.clear();
    for (const EntryCase& row : kEntries) {
        SCOPED_TRACE(row.given);
        login.StrongPwdRequired = row.strong ? "Yes" : "No";
        frmPasswordEnter window(login);
        const std::string printed = play(window, row.script);
        std::string expected = "[window] frmPasswordEnter \"NUV Brevane\"\n";
        if (row.box[0] != '\0') {
            expected += std::string("[box] ") + row.box + " | ok -> ok\n";
        }
        if (std::string(row.script).ends_with("show txtRepeatPassword")) {
            expected += "[control] txtRepeatPassword passwordBox \"\" enabled visible\n";
        }
        EXPECT_EQ(printed, expected);
        EXPECT_EQ(window.takePassword(), row.password);
        EXPECT_EQ(window.text("txtNewPassword") + window.text("txtRepeatPassword"), "");
    }
}

TEST_F(LoginWindows, thePasswordWindowBearsTheNameOfItsProgram) {
    for (const auto& [application, title] :
         {std::pair{"NUVPOSCNC", "NUV Point of Sale"},
          std::pair{"nuvpos", "NUV Point of Sale"},
          std::pair{"Brevane", "Brevane"},
          std::pair{"", "NUV Brevane"}}) {
        login.Application = application;
        frmPasswordEnter window(login);
        play(window, "");
        EXPECT_EQ(window.title(), title);
    }
}
