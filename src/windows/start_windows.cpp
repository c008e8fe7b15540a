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

void closeStartWindows() {
    for (const char* name : {"frmBRVSplash", "FrmLoading"}) {
        ui::Form* window = ui::findForm(name);
        if (window != nullptr && !window->isClosed()) {
            window->close();
        }
    }
}

}  // namespace windows
