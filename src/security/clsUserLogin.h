#pragma once

#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "util/legacy_bool.h"

#include <cstdint>
#include <functional>
#include <string>

/// The check of a user ID and a password against the store's sales codes. Lives from its first use
/// to the program's end; uses `gSalesCode` and `gLogInSec`, sends statements and shows boxes.
class clsUserLogin {
public:
    clsUserLogin() = default;
    ~clsUserLogin();
    clsUserLogin(const clsUserLogin&) = delete;
    clsUserLogin& operator=(const clsUserLogin&) = delete;
    clsUserLogin(clsUserLogin&&) = delete;
    clsUserLogin& operator=(clsUserLogin&&) = delete;

    std::int16_t TableIndex = db::tableSalesCode;
    std::string Application;            ///< calling application, for the titles of the windows
    std::int16_t StoreNumber = 0;       ///< store of the user; part of the key
    std::string UserID;                 ///< as typed; after a short-cut match the real sales code
    std::string Password;               ///< as typed; wiped by the window when it closes
    LegacyBool Cancel = kNo;            ///< the operator gave up, or the account is closed
    std::string TableID = "SalesCode";  ///< SQL name for the direct statements
    std::string StrongPwdRequired;      ///< "Yes": passwords must meet gfb_PwdStandardMet
    std::int16_t FieldIndex = 0;        ///< security::LoginField in error
    std::string CaptionUserID = "User ID";
    std::string CaptionPassword = "Password";

    /// Failed attempts in a row, whatever the user ID; an empty ID and a success begin anew.
    [[nodiscard]] std::int16_t FailureCount() const { return failureCount_; }
    /// Result of the last Validate.
    [[nodiscard]] LegacyBool Valid() const { return valid_; }

    /// Checks `UserID` and `Password`; sets `Valid`, `FailureCount`, `FieldIndex`. Says what is
    /// wrong, lets an operator without a password or with an expired one set a new one.
    /// @throws platform::PlatformError when the store fails; `Valid` is then kNo.
    void Validate();
    // NOLINTBEGIN(readability-identifier-naming): fixed names

    /// Is a password strong: 7 characters (trimmed) with a digit and a letter or sign among them?
    /// Signs are those of the codes 33 to 47 and 58 to 126; blanks and all else count for nothing.
    static void gfb_PwdStandardMet(const std::string& password, LegacyBool& result);
    /// Writes one entry of the trail for the sales code in `gSalesCode`: a line of "Login.nuv" of
    /// the data folder and a row of LogInSec. A file that cannot be written and a row that cannot
    /// be inserted are told in a box.
    static void Login_Log(const std::string& detail, const std::string& result);

    // NOLINTEND(readability-identifier-naming)

private:
    bool readUser();
    bool findUser();
    bool checkFields();
    bool checkPassword();
    bool offerFirstPassword();
    bool changePassword(db::SalesCodeRecord kept);
    bool storePassword(db::SalesCodeRecord& kept, const std::string& plain);
    bool fail(std::int16_t field, const std::string& text, const std::string& title);
    [[nodiscard]] bool isWeak(const std::string& password) const;

    bool hasPassword_ = false;
    std::int16_t failureCount_ = 0;
    LegacyBool valid_ = kNo;
};

namespace security {

/// What `FieldIndex` can name.
enum LoginField : std::int16_t { fieldUserID = 0, fieldPassword = 1 };

/// Failed attempts in a row that close an account.
inline constexpr std::int16_t kMostFailures = 6;

/// Asks for a new password and gives it, or an empty text when that was cancelled. The window fills
/// this in; unset it counts as cancelled.
std::function<std::string(clsUserLogin& login)>& passwordWindow();

/// Closes the account that `login` names in its row; an unknown user ID closes none. Nothing of
/// this program opens it again.
void lockAccount(const clsUserLogin& login);

}  // namespace security
