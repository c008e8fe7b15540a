#pragma once

#include "ui/form.h"
#include "windows/date_range.h"

#include <cstdint>
#include <optional>

/// The one step of the operator in Summary mode: the days to post and the mapping of accounts.
/// Accept sets `gsFromDate` and `gsToDate` and closes the window; Exit, and the close box, end the
/// program. Its handlers are the last to see an error: they tell it in a message box and the window
/// stays.
class FrmQuickSetUP : public ui::Form {
public:
    FrmQuickSetUP();
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
    void onPickDate();
    void onPath();
    void onGridClick();
    void onPickAccount();
    void onAccept();
    void onExit();
    void onExportVendors();
    void onDeleteLog();

    void buildGrid();
    void connect();
    void choosePath();

    windows::DateRange days_{*this};
    std::optional<std::int32_t> lastSale_;  ///< record number of the sale posted last
    int pickRow_ = 0;                       ///< grid row that the open list belongs to
    bool accepted_ = false;
};
