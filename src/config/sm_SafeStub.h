#pragma once

#include "util/legacy_bool.h"

/// Tests whether the data folder can still be reached; asks "Retry?" until it can, or the operator
/// answers No. In local mode nothing is tested. kNo: not reached (a data path of "C:\nuvsafe" sets
/// local mode then, without a question).
LegacyBool gfbServer_Safe();

namespace config {

/// True when the program works without its server.
bool& localMode();

}  // namespace config
