#pragma once

#include "ui/form.h"

/// The window in which the operator sets the station and the data path, `gDataPath`. OK stores them
/// when they are valid; Cancel, and the close box, raise `gDataPath.Cancelled`.
class frmSM_DATAPATH2 : public ui::Form {
public:
    frmSM_DATAPATH2();
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
    void onBrowseData();
    void onBrowseStation();

    void browse(int field);
    void accept();

    bool accepted_ = false;
};

namespace windows {

/// Makes this window the one that asks for a data path (config::dataPathWindow).
void offerDataPathWindow();

}  // namespace windows
