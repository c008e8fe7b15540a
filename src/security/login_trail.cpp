#include "config/clsDataPath.h"
#include "core/brv_op.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SecurLog.h"
#include "db/record_fields.h"
#include "platform/ports/platform.h"
#include "security/clsUserLogin.h"
#include "util/conversions.h"

/// The trail of logins: a file of the data folder and the table LogInSec.

namespace {

constexpr char kTrailFile[] = "\\Login.nuv";
constexpr char kFirstDetail[] = "Initial Login Created";
constexpr std::int16_t kIdOrdinal = 5;
constexpr std::int16_t kIdParts = 1;

std::string todayText(util::DateTime now) {
    const bool isDayFirst = gCommon.USEurope.view() == "E";
    return util::shortDate(
        now, isDayFirst ? util::DateOrder::dayFirst : util::DateOrder::monthFirst
    );
}

void appendLine(util::DateTime now, const std::string& detail, const std::string& result) {
    platform::FilePort& files = platform::files();
    const std::string name = gDataPath.DataPath + kTrailFile;
    const std::string date = todayText(now) + " ";
    std::string lines;
    if (!files.fileExists(name) || files.read(name).empty()) {
        lines = date + kFirstDetail + "\r\n";
    }
    files.append(name, lines + date + detail + " " + result + "\r\n");
}

/// ID of the table's last row; 0 when it has none.
std::int32_t lastId() {
    gpDB_SetKey(db::tableLogInSec, kIdParts, {{kIdOrdinal, std::int64_t{0}}});
    if (gfiDB_Operation(db::tableLogInSec, db::opGetLast, 0, kYes) == kNo) {
        return 0;
    }
    return db::longFrom(gfvDB_GetField(db::tableLogInSec, "ID"));
}

void insertRow(
    std::int32_t id, util::DateTime now, const std::string& detail, const std::string& result
) {
    gLogInSec = db::LogInSecRecord();
    gLogInSec.SalesCode = gSalesCode.SalesCode;
    gLogInSec.aDate = now;
    gLogInSec.aTime = now;
    gLogInSec.Detail = detail;
    gLogInSec.Result = result;
    gLogInSec.Spare = "";
    gLogInSec.Station = util::toInteger(util::val(gDataPath.Station));
    gLogInSec.ID = id;
    if (gfiDB_Operation(db::tableLogInSec, db::opInsert, 0) == kNo) {
        core::showMessage("record did not insert");
    }
}

}  // namespace

void clsUserLogin::Login_Log(const std::string& detail, const std::string& result) {
    const util::DateTime now = platform::systemClock().now();
    try {
        appendLine(now, detail, result);
    } catch (const platform::PlatformError& error) {
        core::showMessage(error.description());
    }
    std::int32_t last = lastId();
    if (last == 0) {
        last = 1;
        insertRow(last, now, kFirstDetail, "");
    }
    insertRow(util::toLong(static_cast<double>(last) + 1), now, detail, result);
}
