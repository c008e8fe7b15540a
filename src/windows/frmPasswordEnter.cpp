#include "windows/frmPasswordEnter.h"

#include "core/brv_op.h"
#include "qb/request_cycle.h"
#include "security/secret.h"
#include "security/sm_Encryption_Ops.h"
#include "util/conversions.h"
#include "windows/login_windows.h"

namespace {

using ui::Kind;
using ui::kNoIndex;

constexpr int kOkButton = 0;
constexpr char kNewField[] = "txtNewPassword";
constexpr char kRepeatedField[] = "txtRepeatPassword";

constexpr ui::Control kControls[] = {
    {Kind::passwordBox, kNewField, kNoIndex, "New Password"},
    {Kind::passwordBox, kRepeatedField, kNoIndex, "Re-Enter Password"},
    {Kind::button, "cmdOkCancel", 0, "OK"},
    {Kind::button, "cmdOkCancel", 1, "Cancel"},
};

constexpr ui::Key kKeys[] = {
    {"Enter", "cmdOkCancel", 0},
    {"Esc", "cmdOkCancel", 1},
};

struct Look {
    const char* application;
    const char* title;
};
/// Programs whose windows bear a title of their own.
constexpr Look kLooks[] = {
    {"NUVPOSCNC", "NUV Point of Sale"},
    {"NUVPOS", "NUV Point of Sale"},
};

std::string titleFor(const std::string& application) {
    for (const Look& look : kLooks) {
        if (util::sameName(look.application, application)) {
            return look.title;
        }
    }
    return application.empty() ? core::kApplicationTitle : application;
}

bool refuse(const std::string& text, const std::string& title) {
    core::showMessage(text, title);
    return false;
}

}  // namespace

frmPasswordEnter::frmPasswordEnter(const clsUserLogin& login)
    : Form("frmPasswordEnter", "", kControls),
      login_(login) {}

frmPasswordEnter::~frmPasswordEnter() {
    wipeTexts();
}

std::span<const ui::Key> frmPasswordEnter::keys() const {
    return kKeys;
}

bool frmPasswordEnter::dispatch(std::string_view name, ui::Signal signal) {
    using ui::Signal;
    static constexpr ui::Handler<frmPasswordEnter> kHandlers[] = {
        {"frmPasswordEnter", Signal::load, &frmPasswordEnter::onLoad},
        {"frmPasswordEnter", Signal::unload, &frmPasswordEnter::onUnload},
        {"cmdOkCancel", Signal::click, &frmPasswordEnter::onOkCancel},
    };
    bool handled = true;
    qb::onLanguageError(
        [&] { handled = ui::runHandler(*this, kHandlers, name, signal); },
        [](std::int32_t, const std::string& description) { core::showMessage(description); }
    );
    return handled;
}

void frmPasswordEnter::onLoad() {
    accepted_ = false;
    setTitle(titleFor(login_.Application));
    control(kNewField).text.reserve(security::kTypedRoom);
    control(kRepeatedField).text.reserve(security::kTypedRoom);
}

/// The close box gives up as Cancel does.
void frmPasswordEnter::onUnload() {
    if (!accepted_) {
        wipeFields();
    }
}

void frmPasswordEnter::onOkCancel() {
    if (raisedIndex() != kOkButton) {
        wipeFields();
        close();
    } else if (accepts()) {
        accepted_ = true;
        close();
    }
}

bool frmPasswordEnter::accepts() {
    const std::string& typed = text(kNewField);
    if (!security::sameSecret(typed, text(kRepeatedField))) {
        windows::wipeField(*this, kRepeatedField);
        setFocus(kRepeatedField);
        return refuse("Re-Enter Password not matched. Please do again.", "Password confirmmation");
    }
    const security::Secret trimmed{std::string(security::trimmed(typed))};
    if (trimmed.text().size() > security::kLongestPassword) {
        return refuse("A password has at most 28 characters.", title());
    }
    LegacyBool isStrong = kNo;
    login_.gfb_PwdStandardMet(typed, isStrong);
    if (isStrong == kNo && login_.StrongPwdRequired == "Yes") {
        return refuse("Minimum 7 characters combining digits and letters.", "Password Setting");
    }
    if (security::isInHistory(trimmed.text())) {
        return refuse(
            "You cannot use the same last 4 passwords. Please try another.", "Password Setup"
        );
    }
    return true;
}

std::string frmPasswordEnter::takePassword() {
    std::string password = text(kNewField);
    wipeTexts();
    return password;
}

void frmPasswordEnter::wipeFields() {
    windows::wipeField(*this, kNewField);
    windows::wipeField(*this, kRepeatedField);
}

/// For a closed window, which nobody draws any more.
void frmPasswordEnter::wipeTexts() {
    security::wipe(control(kNewField).text);
    security::wipe(control(kRepeatedField).text);
}
