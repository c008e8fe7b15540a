#pragma once

#include "platform/ports/system.h"

#include <functional>
#include <memory>
#include <string>

namespace exporting {

/// Makes sure that a session is open. @return false when none could be opened (the operator gave up
/// or is gone): nothing may be walked then.
bool ensureSession();

/// Holds the data folder for an export that posts transactions ("QBLINK.LCK"), so that two programs
/// never walk the same sales side by side.
class ExportLock {
public:
    ExportLock();
    /// False while another program exports from this folder; the operator was told so.
    [[nodiscard]] bool isHeld() const { return isHeld_; }

private:
    std::unique_ptr<platform::FileLock> file_;
    bool isHeld_ = true;
};

/// The eight digits of the date in the control `name` of the setup window (today for an empty one);
/// puts them into the control. A text that is no date stays as it is.
std::string normaliseDateField(const std::string& name);

/// The eight digits of `text` when it is a date in the store's convention, else `text`.
std::string storedDate(const std::string& text);

/// Shows progress in the setup window and serves pending events.
void showStatus(const std::string& text);

/// Logs an error of one record: where, number and description.
void logError(const std::string& where, long number, const std::string& description);

/// Runs one record's work; an error that nothing handled is logged under `where` and the walk goes
/// on. @return false when an error was logged.
bool guardRecord(const std::string& where, const std::function<void()>& work);

/// Writes the last status text of the gateway to the log when it is above a blank.
void logGatewayStatus();

}  // namespace exporting
