#include "security/login_fixture.h"

#include "db/NuvDBSM_MSDE.h"
#include "platform/ports/platform.h"
#include "security/secret.h"
#include "security/sm_Encryption_Ops.h"
#include "util/conversions.h"
#include "windows/login_windows.h"

namespace testing_support {

namespace {

constexpr std::int16_t kStore = 1;

std::int32_t nextUserId() {
    static std::int32_t last = 1000;
    return ++last;
}

const char* buttonsWord(platform::BoxButtons buttons) {
    return buttons == platform::BoxButtons::okCancel ? "ok/cancel" : "ok";
}

}  // namespace

LoginTest::LoginTest() {
    platform::current().clock = &clock;
    windows::installPasswordWindow();
    desktop.onForm["frmPasswordEnter"] = [this](ui::Form& window) {
        while (!window.isClosed()) {
            const NewPassword entry = newPasswords.empty() ? NewPassword() : newPasswords.front();
            if (!newPasswords.empty()) {
                newPasswords.pop_front();
            }
            window.setText("txtNewPassword", entry.typed);
            window.setText("txtRepeatPassword", entry.repeated);
            window.raise("cmdOkCancel", ui::Signal::click, entry.typed.empty() ? 1 : 0);
        }
    };
}

LoginTest::~LoginTest() {
    security::passwordWindow() = nullptr;
    db::passwordCipher() = nullptr;
}

void LoginTest::open() {
    makeStore(0, 1);
    login.StoreNumber = kStore;
    desktop.boxes.clear();
}

void LoginTest::addUser(
    const std::string& code, const std::string& shortCut, const std::string& password
) {
    gSalesCode = db::SalesCodeRecord();
    gSalesCode.UserID = nextUserId();
    gSalesCode.SalesCode = code;
    gSalesCode.ShortCut = shortCut;
    gSalesCode.StoreNumber = kStore;
    const security::Secret key(gfsUserKey());
    gSalesCode.Password = gfsPassword_Encrypt(password, key.text());
    ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opInsert, 0), kNo) << code;
}

void LoginTest::update() {
    ASSERT_NE(gfiDB_Operation(db::tableSalesCode, db::opUpdate, 0), kNo);
}

void LoginTest::expireIn(const std::string& code, int days) {
    user(code);
    gSalesCode.ResetPwdDate = util::DateTime{StandingClock().moment.day + days, 0};
    update();
}

db::SalesCodeRecord LoginTest::user(const std::string& code) {
    gSalesCode.SalesCode = code;
    gSalesCode.StoreNumber = kStore;
    EXPECT_NE(gfiDB_Operation(db::tableSalesCode, db::opEqual, db::keySalesCodeSalesCode), kNo);
    return gSalesCode;
}

std::string LoginTest::plainOf(const std::string& stored) {
    return gfsPassword_Decrypt(stored, gfsUserKey());
}

std::string LoginTest::column(const std::string& statement) {
    const auto rows = db::connection().openRowSet(statement);
    std::string joined;
    for (; !rows->atEnd(); rows->moveNext()) {
        joined += joined.empty() ? "" : "/";
        joined += util::rtrim(db::statementText(rows->value(0)));
    }
    return joined;
}

void LoginTest::logIn(const std::vector<Attempt>& attempts) {
    frmSM_USER_LOGIN window(login);
    desktop.onForm["frmSM_USER_LOGIN"] = [&](ui::Form& form) {
        for (const Attempt& attempt : attempts) {
            if (!form.isClosed()) {
                form.setText("txtUserID", attempt.userID);
                form.setText("txtPassword", attempt.password);
                form.raise("cmdOkCancel", ui::Signal::click, 0);
            }
        }
        if (!form.isClosed()) {
            form.raise("cmdOkCancel", ui::Signal::click, 1);
        }
    };
    desktop.showModal(window);
}

std::string LoginTest::boxes() {
    std::string lines;
    for (const ShownBox& box : desktop.boxes) {
        std::string text = util::replaceAll(box.text, "\r\n", "\\n");
        text = util::replaceAll(text, "\r", "\\r");
        lines += box.title + "|" + text + "|" + buttonsWord(box.buttons) + "\n";
    }
    desktop.boxes.clear();
    return lines;
}

}  // namespace testing_support
