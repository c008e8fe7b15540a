#include "core/link_setup.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Inventory.h"
#include "export/export_run.h"
#include "export/list_exports.h"
#include "export/record_exports.h"
#include "export/record_walk.h"
#include "qb/smQB_Utilities.h"
#include "ui/form.h"
#include "util/conversions.h"
#include "util/nuv_formats.h"

namespace {

constexpr char kCancelled[] = "Exporting Inventory Cancelled";
constexpr char kNone[] = "No Inventory Exported";

/// Shows the item, and what the company file had to say about it.
void showItem() {
    exporting::showStatus(gInventory.Description.str() + " " + gInventory.SL.str());
    if (!gsQBStatusMessage.empty()) {
        exporting::showStatus(gsQBStatusMessage);
    }
}

/// The stored code of a typed one: the point before the last character of the display form goes.
std::string storedCode(const std::string& typed) {
    const bool isDisplayForm = typed.size() == gfsItem_name(gfsItem_key(typed)).size();
    return typed.starts_with("~") || !isDisplayForm ? typed : gfsItem_key(typed);
}

}  // namespace

void gpInventory_export() {
    if (!exporting::ensureSession()) {
        return;
    }
    const exporting::RecordWalk walk = {
        "gpInventory_export",
        exporting::firstOfStatement(
            db::tableInventory,
            "SELECT  * FROM " + DBTableDescriptors[db::tableInventory].TableName +
                " order by RecordNum "
        ),
        exporting::nextOfStatement(db::tableInventory),
        gpItem_export,
        showItem,
        kCancelled,
    };
    const exporting::WalkEnd end = exporting::walkRecords(walk);
    if (end == exporting::WalkEnd::empty) {
        exporting::showStatus(kNone);
        return;
    }
    if (end == exporting::WalkEnd::failed) {
        return;  // the buffer holds no row of this walk
    }
    exporting::storeRecordMark(
        "Last Inventory UID Added", gnLastInventoryUID, gInventory.RecordNum
    );
    if (end == exporting::WalkEnd::done) {
        exporting::showStatus("Done Item Inventory List export");
    }
}

void gpInventoryManual_export() {
    const std::string typed = util::trim(ui::formText("frmSetup", "txtInventoryManual"));
    if (typed.empty()) {
        exporting::showStatus(kNone);
        return;
    }
    if (!exporting::ensureSession() || gfbDB_OpenTable(db::tableInventory) == kNo) {
        return;
    }
    const exporting::RecordWalk walk = {
        "gpInventoryManual_export",
        [&] {
            gInventory.SL = storedCode(typed);
            return exporting::readEqual(db::tableInventory, db::keyInventorySL);
        },
        {},
        gpItem_export,
        showItem,
        kCancelled,
    };
    if (exporting::walkRecords(walk) == exporting::WalkEnd::empty) {
        exporting::showStatus("The SL you Enter " + typed + " is Not in database.");
    }
}
