#include "core/brv_op.h"

#include "platform/ports/platform.h"

std::string gsDataPath;
std::string gsStoreNumber;
LegacyBool gbMultiStore = kNo;
LegacyBool gbPOExportArmed = kNo;
LegacyBool gbSalesExportArmed = kNo;
LegacyBool gbStopRequested = kNo;
LegacyBool gbExportInProgress = kNo;
LegacyBool gbSalesSummaryMode = kNo;
std::string gsQBFilePath;
std::string gsFromDate;
std::string gsToDate;
std::string gsSummaryFile;
std::string gsPOSummaryFile;
LegacyBool gbPostDailyTotals = kYes;
LegacyBool gbPostPOTotals = kYes;
std::string gsSaleTaxItem;
std::string gsHelpFile;

std::string& gsQBFileName = gsQBFilePath;
std::string& gsQBSaleTaxItem = gsSaleTaxItem;

namespace core {

void showMessage(const std::string& text, const std::string& title) {
    platform::desktop().messageBox(text, title, platform::BoxButtons::ok, platform::BoxIcon::none);
}

void resetOp() {
    for (LegacyBool* flag :
         {&gbMultiStore,
          &gbPOExportArmed,
          &gbSalesExportArmed,
          &gbStopRequested,
          &gbExportInProgress,
          &gbSalesSummaryMode}) {
        *flag = kNo;
    }
    gbPostDailyTotals = kYes;
    gbPostPOTotals = kYes;
    for (std::string* text :
         {&gsDataPath,
          &gsStoreNumber,
          &gsQBFilePath,
          &gsFromDate,
          &gsToDate,
          &gsSummaryFile,
          &gsPOSummaryFile,
          &gsSaleTaxItem,
          &gsHelpFile}) {
        text->clear();
    }
}

}  // namespace core
