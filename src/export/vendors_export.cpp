#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Vendors.h"
#include "export/export_run.h"
#include "export/list_exports.h"
#include "export/record_exports.h"
#include "export/record_walk.h"
#include "ui/form.h"
#include "ui/status.h"
#include "util/conversions.h"

namespace {

constexpr char kCancelled[] = "Exporting Vendor Cancelled";
constexpr char kNone[] = "No Vendor exported";
constexpr char kDone[] = "Done Vendor List export";

void showVendor(std::string_view window) {
    ui::showStatus(window, " " + gVendors.VENDCODE.str());
}

}  // namespace

void gpVendors_export(std::string_view window) {
    if (!exporting::ensureSession()) {
        return;
    }
    const exporting::RecordWalk walk = {
        "gpVendors_export",
        exporting::firstByKey(db::tableVendors, db::keyVendorsVendCode),
        exporting::nextByKey(db::tableVendors, db::keyVendorsVendCode),
        gpVendor_export,
        [&] { showVendor(window); },
        kCancelled,
        [] { return util::rtrim(gVendors.VENDCODE.str()); },
        {},
        window,
    };
    const exporting::WalkEnd end = exporting::walkRecords(walk);
    if (end == exporting::WalkEnd::empty || end == exporting::WalkEnd::done) {
        ui::showStatus(window, end == exporting::WalkEnd::empty ? kNone : kDone);
    }
}

void gpVendorsManual_export() {
    const std::string key = util::trim(ui::formText("frmSetup", "txtVendorManual"));
    if (key.empty()) {
        exporting::showStatus(kNone);
        return;
    }
    if (!exporting::ensureSession()) {
        return;
    }
    const exporting::RecordWalk walk = {
        "gpVendorsManual_export",
        [&] {
            gVendors.VENDCODE = key;
            return exporting::readEqual(db::tableVendors, db::keyVendorsVendCode);
        },
        {},
        gpVendor_export,
        [] { showVendor("frmSetup"); },
        kCancelled,
    };
    const exporting::WalkEnd end = exporting::walkRecords(walk);
    if (end == exporting::WalkEnd::empty) {
        exporting::reportMissing("Vendor = " + key);
    } else if (end == exporting::WalkEnd::done) {
        exporting::showStatus(kDone);
    }
}
