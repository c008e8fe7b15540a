#include "windows/start_windows.h"

#include "core/brv_op.h"

namespace {

constexpr ui::Control kLoadingControls[] = {
    {ui::Kind::label, "lblLoading", ui::kNoIndex, "Loading,  Please Wait. . . . . . . . . . "},
};

}  // namespace

frmBRVSplash::frmBRVSplash() : Form("frmBRVSplash", core::kApplicationTitle, {}) {}

bool frmBRVSplash::dispatch(std::string_view /*name*/, ui::Signal /*signal*/) {
    return false;
}

FrmLoading::FrmLoading() : Form("FrmLoading", "", kLoadingControls) {}

bool FrmLoading::dispatch(std::string_view /*name*/, ui::Signal /*signal*/) {
    return false;
}

namespace windows {

namespace {

void closeWindow(std::string_view name) {
    ui::Form* window = ui::findForm(name);
    if (window != nullptr && !window->isClosed()) {
        window->close();
    }
}

}  // namespace

void closeStartWindows() {
    closeWindow("frmBRVSplash");
    closeLoadingWindow();
}

void closeLoadingWindow() {
    closeWindow("FrmLoading");
}

}  // namespace windows
