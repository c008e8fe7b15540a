#include "db/NuvDBSM_MSDE.h"
#include "db/clear_record.h"
#include "db/nuvDBSM_Vendors.h"
#include "export/export_run.h"
#include "export/record_exports.h"
#include "export/record_walk.h"
#include "platform/ports/platform.h"
#include "qb/clsQBVendor.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"

#include <set>

namespace exporting {

namespace {

constexpr char kDefaultVendor[] = "Default";

/// Vendors that the company file is known to have, in capitals: each is asked for once.
std::set<std::string>& knownVendors() {
    static std::set<std::string> vendors;
    return vendors;
}

void fillVendor(clsQBVendor& vendor) {
    vendor.Name = gVendors.VENDCODE.trimmed();
    const std::string business = gVendors.BUSINESS.trimmed();
    vendor.CompanyName = business.empty() ? vendor.Name : business;
    vendor.NameOnCheck = vendor.CompanyName;
    vendor.FirstName = gVendors.FIRSTNAME.trimmed();
    vendor.LastName = gVendors.LASTNAME.trimmed();
    vendor.Addr1 = gVendors.ADDRESS.trimmed();
    vendor.Addr2 = gVendors.ADDRESS2.trimmed();
    vendor.City = gVendors.CITY.trimmed();
    vendor.State = gVendors.STATE.trimmed();
    vendor.PostalCode = gVendors.ZIP.trimmed();
    vendor.Phone = gVendors.PHONE.trimmed();
    vendor.AltPhone = gVendors.CELLPHONE.trimmed();
    vendor.Fax = gVendors.FAX.trimmed();
    vendor.Email = gVendors.EMAIL.trimmed();
    vendor.TermsName = termsName(gVendors.PAYMENTTERM);
}

/// Searches the vendor and reads the returned element that bears its exact name.
bool findVendor(clsQBVendor& vendor, const std::string& name) {
    vendor.Name = name;
    if (vendor.VendorSearchRq() == kNo) {
        return false;
    }
    const std::int32_t count = gnQBReturnedCount;
    for (std::int32_t index = 0; index < count; ++index) {
        vendor.VendorKeyRet_get(index);
        if (util::upper(util::trim(vendor.Name)) == util::upper(name)) {
            vendor.VendorInfoRet_get(index);
            return true;
        }
    }
    return false;
}

bool companyFileHas(const std::string& name) {
    if (knownVendors().contains(util::upper(name))) {
        return true;
    }
    clsQBVendor vendor;
    const bool found = findVendor(vendor, name);
    if (found) {
        knownVendors().insert(util::upper(name));
    }
    return found;
}

/// Reads the vendor's row. @return false when the table has none.
bool readVendorRow(const std::string& code) {
    gVendors.VENDCODE = code;
    return readEqual(db::tableVendors, db::keyVendorsVendCode);
}

bool isDefaultVendor(const std::string& name) {
    return util::upper(name) == util::upper(kDefaultVendor);
}

}  // namespace

std::string ensureVendor(const std::string& code) {
    std::string name = code.empty() ? kDefaultVendor : code;
    if (companyFileHas(name)) {
        return name;
    }
    if (!readVendorRow(name)) {
        if (!isDefaultVendor(name) && companyFileHas(kDefaultVendor)) {
            return kDefaultVendor;
        }
        name = kDefaultVendor;
        if (!readVendorRow(name)) {
            gVendors = db::clearedVendors();
            gVendors.VENDCODE = name;
        }
    }
    gpVendor_export();
    return name;
}

void resetRecordExports() {
    knownVendors().clear();
}

}  // namespace exporting

void gpVendor_export() {
    clsQBVendor vendor;
    exporting::fillVendor(vendor);
    const std::string name = vendor.Name;
    const bool found = exporting::findVendor(vendor, name);
    const std::string listId = vendor.ListID;
    const std::string editSequence = vendor.EditSequence;
    exporting::fillVendor(vendor);
    bool done = false;
    if (found) {
        vendor.ListID = listId;
        vendor.EditSequence = editSequence;
        done = vendor.VendorModifyReq() != kNo;
    } else {
        vendor.OpenBalance = {};
        vendor.OpenBalanceDate = platform::systemClock().now();
        done = vendor.VendorAddRequest() != kNo;
    }
    if (done) {
        exporting::knownVendors().insert(util::upper(name));
    }
    exporting::logGatewayStatus();
}
