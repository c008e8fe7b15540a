#pragma once

namespace windows {

/// Builds `goNuvAcct` and the tax identifiers from the rows of the tender table. Sends one
/// statement and blocks.
void buildAccountTable();

}  // namespace windows
