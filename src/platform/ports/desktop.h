#pragma once

#include "ui/form.h"

#include <cstdint>
#include <string>

namespace platform {

enum class BoxIcon : std::uint8_t { none, error, question, exclamation, information };
enum class BoxButtons : std::uint8_t { ok, okCancel, yesNo };
enum class BoxAnswer : std::uint8_t { ok, cancel, yes, no };

/// Port: the operator's screen. Forms are data (`ui::Form`); the adapter draws them or speaks for
/// them. All calls come on the one thread.
class DesktopPort {
public:
    virtual ~DesktopPort() = default;
    /// Shows a form, raises its load and activate handlers, and returns when it was unloaded.
    virtual void showModal(ui::Form& form) = 0;
    /// Shows a form and returns at once.
    virtual void showModeless(ui::Form& form) = 0;
    /// Asks, or tells, and waits for the answer. Lines are parted by "\r\n" or "\r".
    virtual BoxAnswer messageBox(
        const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon
    ) = 0;
    /// Serves what waits: painting, the operator's clicks and keys.
    virtual void pendingEvents() = 0;
    virtual void setBusyCursor(bool busy) = 0;
    /// Hands a document or address to the system's viewer; does not wait.
    virtual void openDocument(const std::string& name) = 0;
    /// File to open, chosen by the operator; empty when cancelled. `filter` is "name|mask|...".
    virtual std::string chooseFile(
        const std::string& title, const std::string& startPath, const std::string& filter
    ) = 0;
    /// False when no operator is left who could answer or press Stop (the script has ended).
    [[nodiscard]] virtual bool hasOperator() const = 0;
};

}  // namespace platform
