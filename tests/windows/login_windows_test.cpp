#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "platform/ports/platform.h"
#include "security/clsUserLogin.h"
#include "security/sm_Encryption_Ops.h"
#include "support/table_file.h"
#include "windows/frmPasswordEnter.h"
#include "windows/frmSM_USER_LOGIN.h"
#include "windows/login_windows.h"
#include "windows/window_operator.h"

namespace {

/// The two windows of the login with an operator at the console.
class LoginWindows : public testing_support::WindowOperator {
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

    clsUserLogin login;
};

}  // namespace

TEST_F(LoginWindows, loginIsWorkedByMouseAndKeys) {
    open();
    for (const auto& [given, script, printed, enters] :
         testing_support::tableRows<4>("windows/login_scripts.json")) {
        SCOPED_TRACE(given);
        frmSM_USER_LOGIN window(login);
        EXPECT_EQ(play(window, script).printed, printed);
        EXPECT_EQ(window.title(), "Login: Brevane");
        EXPECT_EQ(login.Cancel, legacyBool(enters == "no"));
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
        EXPECT_EQ(form.focus().name, "txtPassword");
        form.setText("txtUserID", "NOBODY");
        form.raise("cmdOkCancel", ui::Signal::click, 0);
        EXPECT_EQ(form.focus().name, "txtUserID");
    };
    desktop.showModal(window);
}

TEST_F(LoginWindows, aNewPasswordIsTypedTwice) {
    open();
    login.Application.clear();
    // The box that is shown, if any, and what the window gives.
    for (const auto& [given, script, box, password, strong] :
         testing_support::tableRows<5>("windows/password_scripts.json")) {
        SCOPED_TRACE(given);
        login.StrongPwdRequired = strong == "yes" ? "Yes" : "No";
        frmPasswordEnter window(login);
        EXPECT_EQ(play(window, script).printed, box);
        EXPECT_EQ(window.takePassword(), password);
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
