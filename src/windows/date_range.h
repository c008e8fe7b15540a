#pragma once

#include "ui/form.h"

#include <array>
#include <optional>
#include <string>

namespace windows {

/// The two date fields `DTPicker1(0)` (from) and `DTPicker1(1)` (to) of a window. They hold a short
/// date text of the store's convention at any time: a text that is no date is taken back.
class DateRange {
public:
    explicit DateRange(ui::Form& window) : window_(window) {}

    /// Shows the first day to post (yesterday when there is none) and yesterday.
    void show();
    /// Brings both fields to the short form after the operator typed into one.
    void normalise();
    /// Takes the two fields into `gsFromDate` and `gsToDate`.
    void accept();

private:
    ui::Form& window_;
    std::array<std::string, 2> shown_;  ///< last texts that were dates
};

/// Record number of the sale that was posted last, when a last invoice is known and its sale found.
/// Sends one statement and blocks.
std::optional<std::int32_t> lastPostedSale();

}  // namespace windows
