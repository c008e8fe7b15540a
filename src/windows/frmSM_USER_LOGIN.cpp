#include "windows/frmSM_USER_LOGIN.h"

#include "core/brv_op.h"
#include "platform/ports/platform.h"
#include "qb/request_cycle.h"
#include "security/secret.h"
#include "util/conversions.h"
#include "windows/login_windows.h"

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr int kOkButton = 0;
constexpr std::string_view kLocked = "I";

/// Field controls by `security::LoginField`.
constexpr const char* kFields[] = {"txtUserID", "txtPassword"};
constexpr const char* kUserField = kFields[security::fieldUserID];
constexpr const char* kPasswordField = kFields[security::fieldPassword];

constexpr ui::Control kControls[] = {
    {Kind::textBox, kUserField, kNoIndex, "User ID"},
    {Kind::passwordBox, kPasswordField, kNoIndex, "Password"},
    {Kind::button, "cmdOkCancel", 0, "Accept"},
    {Kind::button, "cmdOkCancel", 1, "Cancel"},
    {Kind::button, "cmdHelp", kNoIndex, "Help"},
};

constexpr ui::Key kKeys[] = {
    {"Enter", "cmdOkCancel", 0},
    {"Esc", "cmdOkCancel", 1},
    {"F1", "cmdHelp"},
};

constexpr char kHelp[] =
    "LOGIN\r\n"
    "Enter your sales code.  If you have not been assigned one, then use Hello.\r\n"
    "Sales Codes are maintained in Configuration.\r\n"
    "Select Help, Configuration and Sales Codes.\r\n"
    "Enter your password and Press Enter, if one has been assigned.\r\n"
    "If not, select Accept or Press Alt A on the keyboard.";

void showHelp() {
    core::showMessage(kHelp, "NUV Help");
}

void showError(std::int32_t /*number*/, const std::string& description) {
    core::showMessage(description);
}

/// For the next login of this user; a settings store that cannot be written does not matter.
void keepUser(const std::string& userID) {
    platform::ignoringErrors([&] {
        platform::settings().save(
            windows::kLoginApplication, windows::kLoginSection, windows::kLastUserKey, userID
        );
    });
}

}  // namespace

frmSM_USER_LOGIN::frmSM_USER_LOGIN(clsUserLogin& login, LastUser lastUser)
    : Form("frmSM_USER_LOGIN", "", kControls),
      login_(login),
      lastUser_(lastUser) {}

std::span<const ui::Key> frmSM_USER_LOGIN::keys() const {
    return kKeys;
}

bool frmSM_USER_LOGIN::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<frmSM_USER_LOGIN> kHandlers[] = {
        {"frmSM_USER_LOGIN", Signal::load, &frmSM_USER_LOGIN::onLoad},
        {"frmSM_USER_LOGIN", Signal::unload, &frmSM_USER_LOGIN::onUnload},
        {"cmdOkCancel", Signal::click, &frmSM_USER_LOGIN::onOkCancel},
        {"cmdHelp", Signal::click, &frmSM_USER_LOGIN::perform<showHelp>},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); }, showError
    );
    return handled;
}

void frmSM_USER_LOGIN::onLoad() {
    accepted_ = false;
    login_.Cancel = kNo;
    setTitle("Login: " + login_.Application);
    setCaption(kUserField, login_.CaptionUserID);
    setCaption(kPasswordField, login_.CaptionPassword);
    control(kPasswordField).text.reserve(security::kTypedRoom);
    setFocus(kUserField);
    if (lastUser_ == LastUser::shown) {
        const std::string userID = platform::settings().get(
            windows::kLoginApplication, windows::kLoginSection, windows::kLastUserKey, ""
        );
        setText(kUserField, userID);
    }
}

/// The close box gives up as Cancel does. What was typed does not outlive the window.
void frmSM_USER_LOGIN::onUnload() {
    if (!accepted_) {
        login_.Cancel = kYes;
    }
    windows::wipeField(*this, kPasswordField);
    security::wipe(login_.Password);
}

void frmSM_USER_LOGIN::onOkCancel() {
    if (raisedIndex() != kOkButton) {
        giveUp();
        return;
    }
    login_.UserID = util::trim(text(kUserField));
    const security::WipedAtEnd wipedPassword(login_.Password);
    login_.Password = text(kPasswordField);
    login_.Validate();
    if (login_.Valid() != kNo) {
        accept();
    } else {
        refuse();
    }
}

void frmSM_USER_LOGIN::accept() {
    // Kept: only here does a closed account matter, after a change of its password too
    if (gSalesCode.Status.view() == kLocked) {
        core::showMessage("You have been locked due to log in Failure. Application will be closed");
        giveUp();
        return;
    }
    accepted_ = true;
    keepUser(login_.UserID);
    close();
}

void frmSM_USER_LOGIN::refuse() {
    if (login_.FailureCount() >= security::kMostFailures) {
        closeAccount();
        return;
    }
    windows::wipeField(*this, kPasswordField);
    setFocus(login_.FieldIndex == security::fieldPassword ? kPasswordField : kUserField);
}

/// A trail that cannot be written does not keep the account open.
void frmSM_USER_LOGIN::closeAccount() {
    gSalesCode.SalesCode = login_.UserID;
    qb::onLanguageError([&] { login_.Login_Log("Log in Kelvane", "I"); }, showError);
    core::showMessage(
        "You have failed to log in 6 times. \rApplication will be closed", "Login Failure"
    );
    security::lockAccount(login_);
    giveUp();
}

void frmSM_USER_LOGIN::giveUp() {
    login_.Cancel = kYes;
    close();
}
