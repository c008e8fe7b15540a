#include "db/nuvDBSM_Names.h"
#include "export/export_run.h"
#include "export/record_exports.h"
#include "qb/clsQBCustomer.h"
#include "qb/smQB_Utilities.h"
#include "util/conversions.h"

namespace exporting {

const char* termsName(int paymentTerm) {
    struct Terms {
        int days;
        const char* name;
    };
    static constexpr Terms kTerms[] = {
        {15, "Net 15"},
        {30, "Net 30"},
        {45, "Net 45"},
        {60, "Net 60"},
        {90, "Net 90"},
    };
    for (const Terms& terms : kTerms) {
        if (terms.days == paymentTerm) {
            return terms.name;
        }
    }
    return "Net 0";
}

namespace {

/// The values that the store holds. Balance, list id and edit sequence are the company file's.
void fillCustomer(clsQBCustomer& customer) {
    customer.Name = gNames.ARCode.trimmed();
    customer.Address1 = gNames.ADDRESS.trimmed();
    customer.Address2 = gNames.ADDRESS2.trimmed();
    customer.CompanyName = gNames.BUSINESS.trimmed();
    customer.City = gNames.CITY.trimmed();
    customer.State = gNames.STATE.trimmed();
    customer.PostalCode = gNames.ZIP.trimmed();
    customer.Phone = gNames.PHONE.trimmed();
    customer.Fax = gNames.FAX.trimmed();
    customer.FirstName = gNames.FIRSTNAME.trimmed();
    customer.LastName = gNames.LASTNAME.trimmed();
    customer.CreditLimit = gNames.LIMIT;
    customer.Terms = termsName(gNames.PAYMENTTERM);
    const std::string taxCode = gNames.TAXCODE.trimmed();
    customer.SalesTaxCode = taxCode.empty() ? "Tax" : taxCode;
    const std::string flag = gNames.DELETEFLAG.trimmed();
    customer.IsActive = legacyBool(flag != "I" && flag != "D");
    customer.JobType = "Residential";
}

}  // namespace

}  // namespace exporting

void gpCustomer_export() {
    clsQBCustomer customer;
    exporting::fillCustomer(customer);
    customer.OpenBalance = gNames.BALANCE;
    const bool found = customer.CustomerSearchRq() != kNo;
    const bool settled = customer.OpenBalance.isZero() || gNames.BalanceFwd.isZero();
    exporting::fillCustomer(customer);
    if (found) {
        customer.OpenBalance = settled ? util::Money() : gNames.BalanceFwd;
        customer.CustomerModifyReq();
    } else {
        customer.OpenBalance = gNames.BalanceFwd;
        customer.CustomerAddNewReq();
    }
    exporting::logGatewayStatus();
}
