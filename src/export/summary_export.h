#pragma once

#include "util/legacy_bool.h"

/// The posting of the day's totals that the suite's report tools write. Progress goes to the label
/// `LblStatus` of the window `FrmSummaryExport`; without that window only events are served.

/// Posts the totals of `gsSummaryFile` under the date `gsFromDate`: one sales receipt, one journal
/// entry, then the orders of `gsPOSummaryFile` when that file exists. Makes sure of the session.
/// Nothing tests for doubles: posting a day twice books it twice. Writes `gsSaleTaxItem`, `gSale`,
/// `gaSaleLines`, `gaJournalLines`, `gaQBPOLines` and the `Vendors` buffer; shows boxes; blocks.
/// @return kYes when the end was reached, also when there was no file or nothing in it (a box says
/// so) and when the company file refused an entry (that is logged). kNo when the day was given up,
/// and then the orders are not posted either: no session; a file that cannot be posted (not
/// readable, an amount that is none, more negative tenders or returns than a day may have; a box
/// and the log tell which, and nothing has gone out); or no new request set for the journal (the
/// receipt has gone out then).
LegacyBool gfbSummaryFile_post();

/// Posts the orders of `gsPOSummaryFile`: purchases as purchase orders, then returns to vendors as
/// journal entries dated `gsFromDate`, before the first of which the session is closed and opened
/// anew. What fails is told in a box or in the log and the next order follows; an empty line ends
/// a pass. @return kYes when the file could be read; nothing depends on it.
LegacyBool gfbPOSummaryFile_post();
