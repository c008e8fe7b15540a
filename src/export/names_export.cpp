#include "core/link_setup.h"
#include "core/run_log.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Names.h"
#include "export/export_run.h"
#include "export/list_exports.h"
#include "export/record_exports.h"
#include "export/record_walk.h"
#include "ui/form.h"
#include "util/conversions.h"

namespace {

constexpr char kCancelled[] = "Exporting Names Cancelled";
constexpr char kNone[] = "No Names exported";

void sendWithBalance() {
    if (gNames.BalanceFwd.isZero() && gNames.BALANCE.isZero()) {
        gpQBLink_Log_writing(
            "ERROR: Names ARcode = " + gNames.ARCode.str() + " No Names exported! Balance = 0"
        );
        return;
    }
    gpCustomer_export();
}

void showName() {
    exporting::showStatus(gNames.ARCode.str() + " " + gNames.BUSINESS.str());
}

}  // namespace

void gpNames_export() {
    if (!exporting::ensureSession()) {
        return;
    }
    const exporting::RecordWalk walk = {
        "gpNames_export",
        exporting::firstOfStatement(
            db::tableNames,
            "SELECT  * FROM " + DBTableDescriptors[db::tableNames].TableName + " WHERE nameID > " +
                util::textOf(static_cast<std::int64_t>(gnLastNameUID)) + " order by NameID "
        ),
        exporting::nextOfStatement(db::tableNames),
        sendWithBalance,
        showName,
        kCancelled,
    };
    const exporting::WalkEnd end = exporting::walkRecords(walk);
    if (end == exporting::WalkEnd::empty) {
        exporting::showStatus(kNone);
    } else if (end != exporting::WalkEnd::failed) {
        exporting::storeRecordMark("Last Name UID Added", gnLastNameUID, gNames.NameID);
    }
}

void gpNamesManual_export() {
    const std::string key = util::trim(ui::formText("frmSetup", "txtNameManual"));
    if (key.empty()) {
        exporting::showStatus(kNone);
        return;
    }
    if (!exporting::ensureSession()) {
        return;
    }
    const exporting::RecordWalk walk = {
        "gpNamesManual_export",
        [&] {
            gNames.ARCode = key;
            return exporting::readEqual(db::tableNames, db::keyNamesARCode);
        },
        {},
        gpCustomer_export,
        showName,
        kCancelled,
    };
    if (exporting::walkRecords(walk) == exporting::WalkEnd::empty) {
        exporting::reportMissing("ARCode = " + key);
    }
}
