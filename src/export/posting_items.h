#pragma once

/// Makes the vendors, sales tax codes, sales tax items and special items of the company file that
/// the exports refer to, and the walk-in customer. Reads the tax rows and the tax payee from the
/// setup window. A payee that the company file lacks raises Stop and is told; what is there already
/// is passed over; other refusals are logged.
void gpPostingItems_setup();
