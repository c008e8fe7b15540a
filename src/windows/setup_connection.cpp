#include "core/brv_op.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_POHistory.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/nuvDBSM_SalesItem.h"
#include "platform/ports/platform.h"
#include "ui/status.h"
#include "util/conversions.h"
#include "windows/company_accounts.h"
#include "windows/frmSMFILE_PATH.h"
#include "windows/frmSetup.h"

#include <algorithm>

/// The company file: finding it, opening it, reading its accounts.

namespace {

constexpr char kExtension[] = ".QBW";

bool endsInCompanyExtension(const std::string& file) {
    return util::upper(file).ends_with(kExtension);
}

/// The folder of a file; "C:\" for no file.
std::string startFolder(const std::string& file) {
    const std::size_t slash = file.find_last_of("\\/");
    if (!util::aboveBlank(file) || slash == std::string::npos) {
        return "C:\\";
    }
    return file.substr(0, std::max<std::size_t>(slash, 1));  // the root has no name but its slash
}

}  // namespace

void frmSetup::connect() {
    windows::connectAccounts(*this);
}

void frmSetup::mpQBFile_reconnect() {
    ui::showStatus(name(), "Please wait while opening QuickBooks file...");
    windows::reconnectAccounts(*this);
    ui::showStatus(name(), "Ready");
}

void frmSetup::onCmdFind() {
    const auto file =
        windows::chooseCompanyFile(control("lblPath").caption, startFolder(gsQBFilePath));
    if (!file) {
        return;
    }
    gsQBFilePath = *file;
    setText("TxtPath", *file);
    mpQBFile_reconnect();
}

void frmSetup::onLeavePath() {
    const std::string file = text("TxtPath");
    if (endsInCompanyExtension(file) && file != gsQBFilePath &&
        platform::files().fileExists(file)) {
        gsQBFilePath = file;
        mpQBFile_reconnect();
    }
}

void frmSetup::onCboStore() {
    gbPOExportArmed = kYes;
    gbSalesExportArmed = kYes;
    gsStoreNumber = util::trim(text("cboStore"));
    db::bindInventory();
    db::bindSalesHead();
    db::bindSalesItem();
    db::bindPOHistory();
    mpQBFile_reconnect();  // ends the session of the store before
}
