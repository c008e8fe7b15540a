#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "db/nuvDBSM_Common.h"
#include "qb/request_cycle.h"
#include "util/conversions.h"
#include "util/sm_date_time.h"
#include "windows/account_table.h"
#include "windows/company_accounts.h"
#include "windows/frmSetup.h"
#include "windows/setup_controls.h"

#include <iterator>

/// How the window is filled when it opens.

namespace {

constexpr int kLastTaxRow = windows::kTaxFieldRows - 1;

/// Rates of the store by tax row; the last row shows `TaxRate6`.
constexpr float db::CommonRecord::*kRates[] = {
    &db::CommonRecord::TaxRate1,
    &db::CommonRecord::TaxRate1,
    &db::CommonRecord::TaxRate2,
    &db::CommonRecord::TaxRate3,
    &db::CommonRecord::TaxRate4,
    &db::CommonRecord::TaxRate5,
};

std::string taxRateText(int row) {
    if (row == kLastTaxRow) {
        return util::trim(util::textOf(gCommon.TaxRate6));
    }
    return util::format(gCommon.*kRates[row], "0.000");
}

/// Reads `QBLINK.NUV`; without one, the values that a new store starts with.
void readSetup() {
    gpBRV_Trace_writing("gfbAccounts_Setup_reading");
    if (gfbAccounts_Setup_reading() != kNo) {
        return;
    }
    gbUseAR = kYes;
    gbUseAP = kYes;
    gsNetTerms = "30";
    gaNuvTax.at(kLastTaxRow).salesAccount.clear();
    for (std::string* text :
         {&gsLastInvoice, &gsLastPODate, &gsVendorsAccountPayable, &gsTaxPayee}) {
        text->clear();
    }
}

}  // namespace

void frmSetup::mpNuvAccount_populate() {
    windows::buildAccountTable();
    gpBRV_Trace_writing(
        "mpNuvAccount_populate=" + util::textOf(static_cast<std::int64_t>(gnTenderUpper))
    );
}

void frmSetup::mpDefaults_QuickBooks_set() {
    using Step = void (frmSetup::*)();
    static constexpr Step kSteps[] = {
        &frmSetup::perform<mpNuvAccount_populate>,
        &frmSetup::perform<readSetup>,
        &frmSetup::fillGrid,
        &frmSetup::fillTaxRows,
        &frmSetup::showPurchaseMark,
        &frmSetup::fillFields,
        &frmSetup::showSalesMarks,
        &frmSetup::hidePickList,
    };
    std::int64_t number = 0;
    for (const Step step : kSteps) {
        ++number;
        qb::onLanguageError(
            [&] { (this->*step)(); },
            [&](std::int32_t, const std::string& description) {
                gpBRV_Trace_writing(
                    "mpDefaults_QuickBooks_set Err at " + util::textOf(number) + " =" + description
                );
            }
        );
    }
}

void frmSetup::fillGrid() {
    for (const NuvAccountRow& row : goNuvAcct) {
        gpBRV_Trace_writing("goNuvAcct(iCounter).AcctDesc = " + row.AcctDesc);
    }
    windows::fillAccountGrid(*this);
}

void frmSetup::fillTaxRows() {
    for (int row = 0; row < windows::kTaxFieldRows; ++row) {
        const NuvTaxRow& tax = gaNuvTax.at(static_cast<std::size_t>(row));
        gpBRV_Trace_writing("set txtAR_SalesAccount(iCounter).Text = " + tax.salesAccount);
        setText("txtAR_SalesAccount", tax.salesAccount, row);
        gpBRV_Trace_writing("set txtAR_Sales_TaxID(iCounter).Text");
        setText("txtAR_Sales_TaxID", tax.taxId, row);
        setText("txtTaxRate", taxRateText(row), row);
    }
}

void frmSetup::showPurchaseMark() {
    setText("txtLastPostedPO", gfsDate_display(gsLastPODate, gCommon.USEurope.str()));
}

void frmSetup::fillFields() {
    setText("txtAccount", gsVendorsAccountPayable, 1);
    setText("txtAccount", gsTaxPayee, 2);
    setText("TxtPath", gsQBFilePath);
    setText("txtNet", gsNetTerms);
    gpBRV_Trace_writing("set chkUseAR");
    setOn("chkUseAR", gbUseAR != kNo);
    gpBRV_Trace_writing("set CkUseAP");
    setOn("CkUseAP", gbUseAP != kNo);
}

void frmSetup::showSalesMarks() {
    setText("txtLastPostedInvoice", gsLastInvoice);
    setText("txtLastPostedDate", gfsDate_display(gsLastInvoiceDate, gCommon.USEurope.str()));
}

void frmSetup::hidePickList() {
    setVisible("cboAcct", false);
}
