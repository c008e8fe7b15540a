#include "db/NuvDBSM_MSDE.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SalesCodes.h"
#include "export/export_run.h"
#include "export/list_exports.h"
#include "export/record_walk.h"
#include "qb/clsQBEmployee.h"
#include "qb/journal_and_payments.h"
#include "qb/smQB_Utilities.h"
#include "ui/form.h"
#include "util/conversions.h"

namespace {

constexpr char kStart[] = "Importing Sales Codes/Employees...";
constexpr char kDone[] = "Done Employee/SalesCode Export";
constexpr char kCancelled[] = "Exporting Employee/SalesCode Cancelled";
constexpr std::size_t kInitialWidth = 5;

clsQBEmployee personOfRecord() {
    // The padded field always has a second piece: the name of one word has an empty last name.
    const std::vector<std::string> words = util::split(gSalesCode.FullName.str(), ' ');
    clsQBEmployee person;
    person.EmployeeType = "0";
    person.FirstName = util::trim(words.front());
    person.LastName = words.size() > 1 ? util::trim(words[1]) : std::string();
    person.IsActive = kYes;
    person.Name = gSalesCode.FullName.trimmed() + " Rep";
    person.Gender = "0";
    person.AccountNumber = gSalesCode.SalesCode.trimmed();
    return person;
}

void sendSalesCode() {
    clsQBEmployee person = personOfRecord();
    if (!util::aboveBlank(person.Name) || person.OtherNameSearchRq() != kNo) {
        return;
    }
    person.OtherNameAddNewReq();
    const std::string initial = gSalesCode.SalesCode.trimmed().substr(0, kInitialWidth);
    gpSalesCode_add(person.Name, initial, kYes);
    exporting::logGatewayStatus();
}

void showSalesCode() {
    exporting::showStatus(
        "Importing " + gSalesCode.FullName.trimmed() + " " + gSalesCode.SalesCode.trimmed()
    );
}

std::string keyOfRecord() {
    return util::rtrim(gSalesCode.SalesCode.str()) + " " +
           util::textOf(static_cast<std::int64_t>(gSalesCode.StoreNumber));
}

/// @return the walk's end; a walk that was not stopped has shown its closing text.
exporting::WalkEnd exportSalesCodes(
    const char* name, const std::function<bool()>& first, const std::function<bool()>& next
) {
    const exporting::RecordWalk walk = {
        name, first, next, sendSalesCode, showSalesCode, kCancelled, keyOfRecord};
    const exporting::WalkEnd end = exporting::walkRecords(walk);
    if (end == exporting::WalkEnd::done) {
        exporting::showStatus(kDone);
    }
    if (end != exporting::WalkEnd::empty) {
        qb::querySalesReps();  // the sales of this run find the new initials
    }
    return end;
}

}  // namespace

void gpSalesCodes_export() {
    if (!exporting::ensureSession()) {
        return;
    }
    exporting::showStatus(kStart);
    const exporting::WalkEnd end = exportSalesCodes(
        "gpSalesCodes_export",
        exporting::firstByKey(db::tableSalesCode, db::keySalesCodeSalesCode),
        exporting::nextByKey(db::tableSalesCode, db::keySalesCodeSalesCode)
    );
    if (end == exporting::WalkEnd::empty) {
        exporting::showStatus(kDone);
    }
}

void gpSalesCodesManual_export() {
    if (!exporting::ensureSession()) {
        return;
    }
    exporting::showStatus(kStart);
    const std::string code = util::trim(ui::formText("frmSetup", "txtSalescodeManual"));
    const exporting::WalkEnd end = exportSalesCodes(
        "gpSalesCodesManual_export",
        [&] {
            gSalesCode.SalesCode = code;
            gSalesCode.StoreNumber = gCommon.StoreNumber;
            return exporting::readEqual(db::tableSalesCode, db::keySalesCodeSalesCode);
        },
        {}
    );
    if (end == exporting::WalkEnd::empty) {
        exporting::reportMissing("SalesCode = " + code);
    }
}
