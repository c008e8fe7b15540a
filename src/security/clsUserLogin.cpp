#include "security/clsUserLogin.h"

#include "core/brv_op.h"
#include "db/connection.h"
#include "platform/ports/platform.h"
#include "security/secret.h"
#include "security/sm_Encryption_Ops.h"
#include "util/conversions.h"

namespace {

constexpr std::string_view kYesWord = "Yes";
constexpr std::size_t kFewestCharacters = 7;

bool isBetween(unsigned char code, unsigned char first, unsigned char last) {
    return code >= first && code <= last;
}

}  // namespace

clsUserLogin::~clsUserLogin() {
    security::wipe(Password);
}

void clsUserLogin::Validate() {
    valid_ = kNo;
    const bool isGiven = !util::trim(UserID).empty();
    valid_ = legacyBool(checkFields());
    if (valid_ == kNo && isGiven) {
        ++failureCount_;
    } else {
        failureCount_ = 0;
    }
}

void clsUserLogin::gfb_PwdStandardMet(const std::string& password, LegacyBool& result) {
    bool hasDigit = false;
    bool hasLetter = false;
    for (const char character : password) {
        const auto code = static_cast<unsigned char>(character);
        hasDigit = hasDigit || isBetween(code, '0', '9');
        // Kept: signs count as letters, "!123456" is strong
        hasLetter = hasLetter || isBetween(code, 33, 47) || isBetween(code, 58, 126);
    }
    const bool isLong = security::trimmed(password).size() >= kFewestCharacters;
    result = legacyBool(isLong && hasDigit && hasLetter);
}

bool clsUserLogin::isWeak(const std::string& password) const {
    LegacyBool isStrong = kNo;
    gfb_PwdStandardMet(password, isStrong);
    return StrongPwdRequired == kYesWord && isStrong == kNo;
}

/// Reads the row of `UserID`.
bool clsUserLogin::readUser() {
    gSalesCode.StoreNumber = StoreNumber;
    gSalesCode.SalesCode = UserID;
    return gfiDB_Operation(db::tableSalesCode, db::opEqual, db::keySalesCodeSalesCode) != kNo;
}

/// Reads the row whose code, or short-cut, is `UserID`.
bool clsUserLogin::findUser() {
    hasPassword_ = false;
    bool found = readUser();
    if (!found) {
        platform::desktop().pendingEvents();
        gSalesCode.ShortCut = UserID;
        found = gfiDB_Operation(db::tableSalesCode, db::opEqual, db::keySalesCodeShortCut) != kNo;
        if (found) {
            UserID = gSalesCode.SalesCode.trimmed();
        }
    }
    if (found) {
        hasPassword_ = util::aboveBlank(gSalesCode.Password.trimmed());
    }
    return found;
}

bool clsUserLogin::fail(std::int16_t field, const std::string& text, const std::string& title) {
    FieldIndex = field;
    core::showMessage(text, title);
    return false;
}

bool clsUserLogin::checkFields() {
    if (util::trim(UserID).empty()) {
        return fail(
            security::fieldUserID,
            "Security requires a 'User ID'\r\nYou must correct this before you can login - "
            "Try Again.",
            "User ID Missing!"
        );
    }
    if (!findUser()) {
        return fail(
            security::fieldUserID, "The 'User ID' you entered does not exist.", "Invalid User ID"
        );
    }
    if (hasPassword_) {
        return (!Password.empty() && checkPassword()) ||
               fail(
                   security::fieldPassword,
                   "The 'Password' you entered does not exist.",
                   "Invalid Password"
               );
    }
    return StrongPwdRequired != kYesWord || offerFirstPassword();
}

bool clsUserLogin::offerFirstPassword() {
    FieldIndex = security::fieldPassword;
    const auto answer = platform::desktop().messageBox(
        "You have not setup a password yet. Click OK to setup a password now",
        "Log In Password required",
        platform::BoxButtons::okCancel,
        platform::BoxIcon::none
    );
    return answer == platform::BoxAnswer::ok && changePassword(gSalesCode);
}

namespace security {

void lockAccount(const clsUserLogin& login) {
    gfiDB_ExecuteSQL(
        "UPDATE " + login.TableID + " SET Status = 'I'" + whereUser(login.UserID, login.StoreNumber)
    );
}

}  // namespace security
