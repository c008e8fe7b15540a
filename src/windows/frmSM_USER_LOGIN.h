#pragma once

#include "security/clsUserLogin.h"
#include "ui/form.h"

/// The login window. It hides when somebody logged in, when the operator gave up, and after the
/// sixth failed attempt; `Cancel` and `Valid` of the login tell which.
class frmSM_USER_LOGIN : public ui::Form {
public:
    /// Does the window begin with the user ID of the last login of this workstation's user?
    enum class LastUser : std::uint8_t { shown, hidden };

    explicit frmSM_USER_LOGIN(clsUserLogin& login, LastUser lastUser = LastUser::shown);
    [[nodiscard]] std::span<const ui::Key> keys() const override;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    /// A handler that needs nothing of the window.
    template <void (*Run)()>
    void perform() {
        Run();
    }
    void onLoad();
    void onUnload();
    void onOkCancel();
    void accept();
    void refuse();
    void closeAccount();
    void giveUp();

    clsUserLogin& login_;
    LastUser lastUser_;
    bool accepted_ = false;
};
