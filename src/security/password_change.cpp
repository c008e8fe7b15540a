#include "core/brv_op.h"
#include "platform/ports/platform.h"
#include "security/clsUserLogin.h"
#include "security/secret.h"
#include "security/sm_Encryption_Ops.h"
#include "util/conversions.h"

#include <optional>

/// The check of a password at login, and its change.

using security::Secret;

namespace {

constexpr char kSetupTitle[] = "Password Setup";
constexpr char kChange[] = "Password Change";
constexpr std::int32_t kDaysInForce = 90;
/// What the column holds when no date was given: the first day of 1900, or day zero.
constexpr util::CalendarDate kDefaultDate = {1900, 1, 1};

std::int32_t today() {
    return platform::systemClock().now().day;
}

/// A password expires on the morning of its date.
bool hasExpired(const std::optional<util::DateTime>& date) {
    return date && date->day > util::dayNumber(kDefaultDate) && date->day - today() <= 0;
}

/// Is the password the present one or one of the four before it?
bool isUsed(const std::string& stored, const std::string& plain) {
    const Secret present(stored.empty() ? std::string() : gfsPassword_Stored(stored));
    const bool isPresent = !present.empty() && security::sameSecret(present.text(), plain);
    return security::isInHistory(plain) || isPresent;
}

void shiftHistory(db::SalesCodeRecord& record) {
    record.Last4thPwd = record.Last3rdPwd;
    record.Last3rdPwd = record.Last2ndPwd;
    record.Last2ndPwd = record.LastPwd;
    record.LastPwd = record.Password;
}

}  // namespace

bool clsUserLogin::checkPassword() {
    if (!readUser()) {
        return false;
    }
    const std::string stored = gSalesCode.Password.trimmed();
    const Secret plain(stored.empty() ? std::string() : gfsPassword_Stored(stored));
    const db::SalesCodeRecord kept = gSalesCode;
    if (!security::sameSecret(plain.text(), Password)) {
        return false;
    }
    if (isWeak(Password)) {
        core::showMessage(
            "You should setup new password with at least 7 characters combining digits & "
            "alphabets",
            "Strong password Required"
        );
        return changePassword(kept);
    }
    if (hasExpired(kept.ResetPwdDate)) {
        core::showMessage("Your password has expired. Please setup new Password now.", kSetupTitle);
        return changePassword(kept);
    }
    return true;
}

bool clsUserLogin::changePassword(db::SalesCodeRecord kept) {
    for (;;) {
        const auto& window = security::passwordWindow();
        const Secret typed(window ? window(*this) : std::string());
        const Secret plain{std::string(security::trimmed(typed.text()))};
        if (plain.empty()) {
            core::showMessage(
                "New password has not setup. you won't be able to login with expired password ",
                kSetupTitle
            );
            Login_Log(kChange, "Failed");
            return false;
        }
        if (!isUsed(kept.Password.trimmed(), plain.text())) {
            return storePassword(kept, plain.text());
        }
        core::showMessage(
            "You cannot use the same last 4 passwords. Please try another.", kSetupTitle
        );
    }
}

/// Stores the new password in the row that `kept` was read from. A row that has gone by now cannot
/// be changed: that counts as a failed change. An account that was closed while its owner typed
/// stays closed. @throws platform::PlatformError when the store refuses the change.
bool clsUserLogin::storePassword(db::SalesCodeRecord& kept, const std::string& plain) {
    if (util::aboveBlank(kept.Password.trimmed())) {
        shiftHistory(kept);
    }
    const Secret key(gfsUserKey());
    kept.Password = gfsPassword_Encrypt(plain, key.text());
    kept.ResetPwdDate = util::DateTime{today() + kDaysInForce, 0};
    if (!readUser()) {
        Login_Log(kChange, "Failed");
        return false;
    }
    kept.Status = gSalesCode.Status;
    gSalesCode = kept;
    gfiDB_Operation(db::tableSalesCode, db::opUpdate, db::keySalesCodeSalesCode);
    Login_Log(kChange, "Sucessful");  // Kept: the word stands in the trails of all stores
    return true;
}

namespace security {

std::function<std::string(clsUserLogin& login)>& passwordWindow() {
    static std::function<std::string(clsUserLogin & login)> window;
    return window;
}

}  // namespace security
