#pragma once

#include "ui/form.h"

#include <string>

/// The three-way question when the data folder cannot be reached. No path of this program shows it.
class SafeDialog : public ui::Form {
public:
    SafeDialog();
    [[nodiscard]] std::span<const ui::Key> keys() const override;

    /// "R" to try again, "L" to work locally, "X" to leave; empty before the answer.
    [[nodiscard]] const std::string& answer() const { return answer_; }

protected:
    bool dispatch(std::string_view name, ui::Signal signal) override;

private:
    template <char Letter>
    void onButton() {
        answer_ = Letter;
        close();
    }

    std::string answer_;
};
