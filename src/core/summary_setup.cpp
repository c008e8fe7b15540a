#include "core/summary_setup.h"

#include "config/clsDataPath.h"
#include "config/clsINI_Services.h"
#include "core/brv_op.h"
#include "core/link_setup.h"
#include "platform/ports/platform.h"
#include "qb/wire_values.h"
#include "util/basic_error.h"
#include "util/conversions.h"

namespace {

constexpr char kPathKey[] = "QuickBooks Path";
constexpr char kLastDayKey[] = "Last Date Posted";
constexpr int kTypeMismatch = 13;

/// A switch is off only when its value is exactly "No".
LegacyBool readSwitch(const std::string& key, const std::string& defaultValue) {
    return legacyBool(gIni.getvalue(core::kSummarySection, key, defaultValue) != "No");
}

std::string dayAfter(const std::string& text) {
    const auto date = core::dateOf(text);
    if (!date) {
        throw util::BasicError::of(kTypeMismatch);
    }
    return core::dateText(*date, 1);
}

std::string settingsFile(const std::string& kind) {
    return kind == "P" ? platform::files().programFolder() + "\\station.ini"
                       : gDataPath.DataPath + "\\NUV.INI";
}

void writeLastDay() {
    gIni.WriteData(core::kSummarySection, kLastDayKey, gsToDate);
    for (const NuvAccountRow& row : goNuvAcct) {
        gIni.WriteData(core::kSummarySection, util::trim(row.AcctDesc), row.QBAccount);
    }
}

}  // namespace

LegacyBool gfbSummary_Setup_reading() {
    gsDataPath = gDataPath.DataPath;
    if (!core::openSummarySettings()) {
        core::showMessage("Unable to open NUV Configuration Settings File, NUV.INI.", "Error");
        return kYes;
    }
    if (gsQBFilePath.empty()) {
        gsQBFilePath = gIni.getvalue(core::kSummarySection, kPathKey, "");
    }
    const std::string lastDay = gIni.getvalue(core::kSummarySection, kLastDayKey, "");
    gsFromDate = util::aboveBlank(lastDay) ? dayAfter(lastDay) : core::yesterdayText();
    gbPostDailyTotals = readSwitch("Post Daily Totals", "");
    gbPostPOTotals = readSwitch("Post Purchase Order Totals", "Yes");
    return kYes;
}

void gpSummary_Setup_writing(const std::string& kind) {
    gIni.File(settingsFile(kind));
    if (gIni.FileOpen() == kNo) {
        core::showMessage("Unable to open NUV Configuration Settings File", "Error");
    }
    // Kept: the company file goes into a file that the reading never looks at.
    if (kind == "P" && util::aboveBlank(gsQBFilePath)) {
        gIni.WriteData(core::kSummarySection, kPathKey, gsQBFilePath);
    } else if (kind == "D" && util::aboveBlank(gsToDate)) {
        writeLastDay();
    }
}

namespace core {

bool openSummarySettings() {
    gIni.File(settingsFile("D"));
    return gIni.FileOpen() != kNo;
}

std::optional<util::DateTime> dateOf(const std::string& text) {
    const int year = util::calendarDate(platform::systemClock().now().day).year;
    return util::dateFromText(text, qb::dateOrder(), year);
}

std::string dateText(util::DateTime date, int days) {
    return util::shortDate({date.day + days, 0}, qb::dateOrder());
}

std::string yesterdayText() {
    return dateText(platform::systemClock().now(), -1);
}

std::string dayDigits(const std::string& text) {
    const auto date = dateOf(text);
    return date ? util::format(*date, "yyyymmdd") : text;
}

}  // namespace core
