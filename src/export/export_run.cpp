#include "export/export_run.h"

#include "config/clsDataPath.h"
#include "core/brv_op.h"
#include "core/run_log.h"
#include "platform/ports/platform.h"
#include "platform/ports/platform_error.h"
#include "qb/smQB_Utilities.h"
#include "qb/wire_values.h"
#include "ui/form.h"
#include "ui/status.h"
#include "util/conversions.h"

namespace exporting {

namespace {

constexpr char kSetup[] = "frmSetup";

}  // namespace

bool ensureSession() {
    if (gbQBReady == kNo) {
        gpSessionReady_ensure();
    }
    return gbQBReady != kNo;
}

/// A folder whose file system knows no locks, or that cannot be written, is exported all the same.
ExportLock::ExportLock() {
    platform::ignoringErrors([&] {
        file_ = platform::files().lock(gDataPath.DataPath + "\\QBLINK.LCK");
        isHeld_ = file_ != nullptr;
    });
    if (!isHeld_) {
        core::showMessage("Another program is exporting from this data folder. Nothing was sent.");
    }
}

std::string storedDate(const std::string& text) {
    const util::DateTime now = platform::systemClock().now();
    const auto date = util::dateFromText(text, qb::dateOrder(), util::calendarDate(now.day).year);
    return date ? util::format(*date, "yyyymmdd") : text;
}

std::string normaliseDateField(const std::string& name) {
    std::string text = ui::formText(kSetup, name);
    if (util::trim(text).empty()) {
        text = util::format(platform::systemClock().now(), "yyyymmdd");
    } else {
        text = storedDate(text);
    }
    ui::setFormText(kSetup, name, text);
    return text;
}

void showStatus(const std::string& text) {
    ui::showStatus(kSetup, text);
}

void logError(const std::string& where, long number, const std::string& description) {
    gpQBLink_Log_writing(
        where + " Error: " + util::textOf(static_cast<std::int64_t>(number)) + " " + description
    );
}

bool guardRecord(const std::string& where, const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const platform::PlatformError& error) {
        logError(where, error.number(), error.description());
    } catch (const util::BasicError& error) {
        logError(where, error.number(), error.what());
    }
    return false;
}

void logGatewayStatus() {
    if (util::aboveBlank(util::trim(gsQBStatusMessage))) {
        gpQBLink_Log_writing(gsQBStatusMessage);
    }
}

}  // namespace exporting
