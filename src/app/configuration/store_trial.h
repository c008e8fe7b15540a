#pragma once

#include "app/configuration/store_choice.h"

#include <string>
#include <vector>

namespace app {

/// Outcome of a trial, in the operator's words; lines are parted by "\r\n".
struct Finding {
    bool good = false;
    std::string text;
};

/// Opens the store of `choice` on the installed adapters, as the program's start does, and reads
/// its first record. Nothing is kept: settings and data path are afterwards as before. Blocks, on a
/// server that does not answer as long as the connection's time limit.
Finding tryStore(const StoreChoice& choice);

/// Names of the catalogs in a data folder, sorted; none when there is no such folder.
std::vector<std::string> catalogsIn(const std::string& folder);

/// How large a sample store is made.
struct SampleSize {
    int sales = 720;
    int days = 7;
};

/// Makes a sample store in `folder`: catalog, mapping, company file. The settings stay.
/// @return good with what was made, or what is wrong. What a failure leaves in the folder stays.
Finding makeSample(const std::string& folder, const SampleSize& size);

}  // namespace app
