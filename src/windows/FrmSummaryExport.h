#pragma once

#include "ui/form.h"

/// The window inside which the summary files are posted: it does so when it comes forward for the
/// first time and then stays until the operator closes it. A failure is told in a message box and
/// the window stays.
class FrmSummaryExport : public ui::Form {
public:
    FrmSummaryExport();
    [[nodiscard]] std::span<const ui::Key> keys() const override;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    void onLoad();
    void onActivate();
    void onExit();
    void choosePath();

    bool activated_ = false;
};
