#include "db/NuvDBSM_MSDE.h"
#include "db/NuvDBSM_TenderTypes.h"
#include "export/export_run.h"
#include "export/list_exports.h"
#include "export/record_walk.h"
#include "export/sale_conversion.h"
#include "qb/journal_and_payments.h"
#include "ui/form.h"
#include "util/conversions.h"

namespace {

constexpr char kCancelled[] = "Exporting Tender Cancelled";

void sendTender() {
    gpTenderType_add(exporting::paymentMethodName(), gTenderTypes.TenderType);
    exporting::logGatewayStatus();
}

void showTender() {
    exporting::showStatus(
        util::textOf(gTenderTypes.TenderID) + " " + gTenderTypes.Description.str() + " " +
        util::textOf(static_cast<std::int64_t>(gTenderTypes.TenderType))
    );
}

void exportTenders(
    const char* name, const std::function<bool()>& first, const std::function<bool()>& next
) {
    const exporting::RecordWalk walk = {name, first, next, sendTender, showTender, kCancelled};
    const exporting::WalkEnd end = exporting::walkRecords(walk);
    if (end == exporting::WalkEnd::empty) {
        exporting::showStatus("No Tender exported");
    } else if (end == exporting::WalkEnd::done) {
        exporting::showStatus("Done Tender Types Export");
    }
}

}  // namespace

void gpTenders_export() {
    if (!exporting::ensureSession()) {
        return;
    }
    exportTenders(
        "gpTenders_export",
        exporting::firstByKey(db::tableTenderTypes, db::keyTenderTypesTenderID),
        exporting::nextByKey(db::tableTenderTypes, db::keyTenderTypesTenderID)
    );
}

void gpTendersManual_export() {
    const std::string typed = util::trim(ui::formText("frmSetup", "txtTenderManual"));
    if (!util::isNumeric(typed)) {
        exporting::showStatus("Invalid input. Please enter ID number only");
        return;
    }
    if (!exporting::ensureSession()) {
        return;
    }
    exportTenders(
        "gpTendersManual_export",
        [&] {
            gTenderTypes.TenderID = util::toLong(typed);
            return exporting::readEqual(db::tableTenderTypes, db::keyTenderTypesTenderID);
        },
        {}
    );
}
