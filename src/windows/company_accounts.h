#pragma once

#include "ui/form.h"

namespace windows {

/// Opens the company file `gsQBFilePath`, reads its accounts and sales reps, and fills the list
/// `cboAcct` of the window. Sets the busy cursor meanwhile. A refused session has told itself and
/// leaves the list as it is. Blocks. @throws platform::ProgramEnd when no company file can be had.
void connectAccounts(ui::Form& window);
/// Ends the session, forgets what was known of its company file, and connects anew.
void reconnectAccounts(ui::Form& window);
/// Fills the list `cboAcct` of the window with the full names of the accounts, in the order of the
/// company file.
void fillAccountList(ui::Form& window);
/// Fills the grid `fgrdList` of the window with a header and the rows of `goNuvAcct`.
void fillAccountGrid(ui::Form& window);
/// Gives a row of the grid its account, and every other row of the same name with it: names are the
/// keys of the settings, so that rows of one name have one account. Cells take the text as it is.
/// @param row       row of the grid, from 1.
/// @param account   text of the cells.
/// @param kept      what `goNuvAcct` takes.
void setRowAccount(ui::Form& window, int row, const std::string& account, const std::string& kept);

}  // namespace windows
