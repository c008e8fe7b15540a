#include "operator.h"
#include "platform/ports/platform.h"
#include "platform/qt/qt_desktop.h"
#include "security/clsUserLogin.h"
#include "support/link_fixture.h"
#include "windows/FrmQuickSetUP.h"
#include "windows/FrmSelDate.h"
#include "windows/FrmSummaryExport.h"
#include "windows/SafeDialog.h"
#include "windows/frmPasswordEnter.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSM_DATAPATH2.h"
#include "windows/frmSM_USER_LOGIN.h"
#include "windows/start_windows.h"

#include <memory>

#include <QAbstractButton>
#include <gtest/gtest.h>

namespace {

/// Loads no data: only the controls are looked at.
template <class Base>
class Still : public Base {
public:
    using Base::Base;

protected:
    bool dispatch(std::string_view /*name*/, ui::Signal /*signal*/) override { return false; }
};

/// Every control has its place, large enough for what it shows, inside the window.
void checkPlaces(ui::Form& form) {
    SCOPED_TRACE(form.name());
    platform::QtDesktop desktop;
    desktop.showModeless(form);
    desktop.pendingEvents();
    desktop.pendingEvents();  // a box within a box settles one turn later
    QWidget* window = testing_support::Operator::window(form.name());
    ASSERT_NE(window, nullptr);
    EXPECT_GE(window->width(), window->minimumSizeHint().width());
    for (const ui::ControlState& state : form.controls()) {
        const bool isArray = state.index != ui::kNoIndex;
        const std::string name =
            state.name + (isArray ? "(" + std::to_string(state.index) + ")" : "");
        const auto* widget = window->findChild<QWidget*>(QString::fromStdString(name));
        if (state.kind == ui::Kind::menuItem || !form.isShown(state) || widget->isHidden()) {
            continue;
        }
        SCOPED_TRACE(name);
        const QRect place(widget->mapTo(window, QPoint()), widget->size());
        EXPECT_TRUE(window->rect().contains(place));
        EXPECT_GE(widget->width(), widget->minimumSizeHint().width());
        EXPECT_GE(widget->height(), widget->minimumSizeHint().height());
    }
    form.close();
}

TEST(Windows, giveEveryControlItsPlace) {
    testing_support::application();
    clsUserLogin login;
    Still<frmSetup> setup;
    Still<FrmQuickSetUP> quickSetup;
    Still<FrmSummaryExport> summaryExport;
    Still<FrmSelDate> dates;
    Still<SafeDialog> safe;
    Still<frmSMFILE_PATH> browser;
    Still<frmSM_DATAPATH2> dataPath;
    Still<frmSM_USER_LOGIN> loginWindow(login);
    Still<frmPasswordEnter> password(login);
    Still<FrmLoading> loading;
    Still<frmBRVSplash> splash;
    const std::vector<ui::Form*> forms = {
        &setup,
        &quickSetup,
        &summaryExport,
        &dates,
        &safe,
        &browser,
        &dataPath,
        &loginWindow,
        &password,
        &loading,
        &splash};
    for (ui::Form* form : forms) {
        checkPlaces(*form);
    }
}

/// A window without a description of its own.
constexpr ui::Control kPlainControls[] = {
    {ui::Kind::frame, "frame", ui::kNoIndex, "Frame"},
    {ui::Kind::textBox, "inner", ui::kNoIndex, "Inner", ui::kPlain, "frame"},
    {ui::Kind::passwordBox, "secret", ui::kNoIndex, "Secret"},
    {ui::Kind::datePicker, "day", ui::kNoIndex, "Day"},
    {ui::Kind::label, "LblStatus", ui::kNoIndex, "Status"},
    {ui::Kind::button, "go", ui::kNoIndex, "Go"},
};
class PlainForm : public ui::Form {
public:
    PlainForm() : Form("PlainForm", "Plain", kPlainControls) {}

protected:
    bool dispatch(std::string_view /*name*/, ui::Signal /*signal*/) override { return false; }
};

TEST(Windows, withoutALayoutGetOne) {
    testing_support::application();
    PlainForm form;
    checkPlaces(form);
}

}  // namespace
