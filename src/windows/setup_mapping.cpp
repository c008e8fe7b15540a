#include "core/brv_op.h"
#include "core/link_setup.h"
#include "platform/ports/platform.h"
#include "util/conversions.h"
#include "windows/company_accounts.h"
#include "windows/frmSetup.h"

/// The pick of an account for a row of the grid or a field.

namespace {

constexpr char kGrid[] = "fgrdList";
constexpr char kSalesAccount[] = "txtAR_SalesAccount";
constexpr char kAccount[] = "txtAccount";
constexpr char kList[] = "cboAcct";
constexpr int kAccountColumn = 1;

}  // namespace

void frmSetup::mpCboQBAccount_populate() {
    windows::fillAccountList(*this);
}

void frmSetup::onGridClick() {
    if (raisedRow() >= 1 && raisedColumn() >= kAccountColumn) {
        mpAccountPick_show(kGrid, ui::kNoIndex, raisedRow());
    }
}

void frmSetup::onSalesAccount() {
    mpAccountPick_show(kSalesAccount, raisedIndex(), 0);
}

void frmSetup::onAccount() {
    mpAccountPick_show(kAccount, raisedIndex(), 0);
}

void frmSetup::mpAccountPick_show(const std::string& name, int index, int row) {
    const ui::ControlState& list = control(kList);
    if (list.items.empty()) {
        core::showMessage("Please go to QuickBook  to setup List of Accounts for Cash, Account "
                          "Receivable, Cost Of Goods... ");
        return;
    }
    if (list.visible) {
        mpAccountPick_commit();
        platform::desktop().pendingEvents();
        return;
    }
    pickControl_ = name;
    pickIndex_ = index;
    pickRow_ = row;
    setText(kList, accountAt(name, index, row));  // leaving the list without a pick changes nothing
    setVisible(kList, true);
    setFocus(kList);
}

/// What stands where a pick begins.
std::string frmSetup::accountAt(const std::string& name, int index, int row) {
    return name == kGrid ? control(kGrid).rows.at(static_cast<std::size_t>(row)).at(kAccountColumn)
                         : text(name, index);
}

void frmSetup::mpAccountPick_commit() {
    const ui::ControlState& list = control(kList);
    if (!list.visible) {
        return;
    }
    const std::string picked = list.text;
    if (pickControl_ == kGrid) {
        windows::setRowAccount(*this, pickRow_, picked, util::trim(picked));
    } else if (pickControl_ == kSalesAccount) {
        setText(kSalesAccount, util::trim(picked), pickIndex_);
        gaNuvTax.at(static_cast<std::size_t>(pickIndex_)).salesAccount = util::trim(picked);
    } else if (pickControl_ == kAccount) {
        setText(kAccount, picked, pickIndex_);
    }
    hidePickList();
}
