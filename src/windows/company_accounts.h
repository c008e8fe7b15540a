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

}  // namespace windows
