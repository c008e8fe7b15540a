#pragma once

#include "app/configuration/frmDataConfiguration.h"
#include "security/clsUserLogin.h"
#include "windows/FrmQuickSetUP.h"
#include "windows/FrmSelDate.h"
#include "windows/FrmSummaryExport.h"
#include "windows/SafeDialog.h"
#include "windows/frmPasswordEnter.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSM_DATAPATH2.h"
#include "windows/frmSM_USER_LOGIN.h"
#include "windows/frmSetup.h"
#include "windows/start_windows.h"

#include <string>
#include <vector>

#include <QWidget>

namespace testing_support {

/// Loads no data: only the controls are looked at.
template <class Base>
class Still : public Base {
public:
    using Base::Base;

protected:
    bool dispatch(std::string_view /*name*/, ui::Signal /*signal*/) override { return false; }
};

/// All windows of the program, each as `Kind` makes it.
template <template <class> class Kind>
struct AllWindows {
    clsUserLogin login;
    Kind<frmSetup> setup;
    Kind<FrmQuickSetUP> quickSetup;
    Kind<FrmSummaryExport> summaryExport;
    Kind<FrmSelDate> dates;
    Kind<SafeDialog> safe;
    Kind<frmSMFILE_PATH> browser;
    Kind<frmSM_DATAPATH2> dataPath;
    Kind<frmSM_USER_LOGIN> loginWindow{login};
    Kind<frmPasswordEnter> password{login};
    Kind<app::frmDataConfiguration> configuration{app::ConfigurationStart()};
    Kind<FrmLoading> loading;
    Kind<frmBRVSplash> splash;

    std::vector<ui::Form*> work = {
        &setup,
        &quickSetup,
        &summaryExport,
        &dates,
        &safe,
        &browser,
        &dataPath,
        &loginWindow,
        &password,
        &configuration};  ///< those that an operator works in
    std::vector<ui::Form*> start = {&loading, &splash};
};

/// "chkExport(3)"
inline std::string nameOf(const std::string& control, int index) {
    return control + (index == ui::kNoIndex ? "" : "(" + std::to_string(index) + ")");
}
inline std::string nameOf(const ui::ControlState& state) {
    return nameOf(state.name, state.index);
}

inline QWidget* widgetOf(const QWidget& window, const ui::ControlState& state) {
    return window.findChild<QWidget*>(QString::fromStdString(nameOf(state)));
}

inline bool takesFocus(ui::Kind kind) {
    return kind != ui::Kind::label && kind != ui::Kind::frame && kind != ui::Kind::menuItem &&
           kind != ui::Kind::fileDialog;
}

}  // namespace testing_support
