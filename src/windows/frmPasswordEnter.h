#pragma once

#include "security/clsUserLogin.h"
#include "ui/form.h"

#include <string>

/// The window in which a new password is typed twice. The user is the sales code in `gSalesCode`.
class frmPasswordEnter : public ui::Form {
public:
    explicit frmPasswordEnter(const clsUserLogin& login);
    ~frmPasswordEnter() override;
    frmPasswordEnter(const frmPasswordEnter&) = delete;
    frmPasswordEnter& operator=(const frmPasswordEnter&) = delete;
    frmPasswordEnter(frmPasswordEnter&&) = delete;
    frmPasswordEnter& operator=(frmPasswordEnter&&) = delete;

    [[nodiscard]] std::span<const ui::Key> keys() const override;
    /// The new password, empty when the window was cancelled; both fields are wiped.
    [[nodiscard]] std::string takePassword();

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    void onLoad();
    void onUnload();
    void onOkCancel();
    bool accepts();
    void wipeFields();
    void wipeTexts();

    const clsUserLogin& login_;
    bool accepted_ = false;
};
