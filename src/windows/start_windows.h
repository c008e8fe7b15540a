#pragma once

#include "ui/form.h"

/// The picture that stands while the program starts; the main window takes it away.
class frmBRVSplash : public ui::Form {
public:
    frmBRVSplash();

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;
};

/// "Loading, Please Wait": a third of the way down the screen, centred across it.
class FrmLoading : public ui::Form {
public:
    FrmLoading();

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;
};

namespace windows {

/// Takes away the two windows above when they stand.
void closeStartWindows();
/// Takes away the second of them only: the picture stays to the end of a run in Summary mode.
void closeLoadingWindow();

}  // namespace windows
