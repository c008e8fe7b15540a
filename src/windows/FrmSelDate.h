#pragma once

#include "ui/form.h"
#include "windows/date_range.h"

#include <cstdint>
#include <optional>

/// The days to post, and nothing else. No run shows it; it stands ready.
class FrmSelDate : public ui::Form {
public:
    FrmSelDate();
    [[nodiscard]] std::span<const ui::Key> keys() const override;

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    void onLoad();
    void onPickDate();
    void onAccept();
    void onExit();

    windows::DateRange days_{*this};
    std::optional<std::int32_t> lastSale_;  ///< record number of the sale posted last
};
