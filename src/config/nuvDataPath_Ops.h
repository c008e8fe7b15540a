#pragma once

#include "util/legacy_bool.h"

#include <cstdint>
#include <string>

/// Finds the data folder in the settings, or asks the operator for it.
/// @param ask          kYes: the operator may be asked for a path that is not defined.
/// @param maxStations  highest station number; below 51 it counts as 50.
/// @param defaultPath  offered in the window; may be empty.
/// @return kYes when `gDataPath.DataPath` names the folder.
/// Side effects: fills `gDataPath`, copies `upper.alt` from the program folder into a data folder
/// that lacks it, shows message boxes and the data path window.
LegacyBool
gfbNUV_DataPath_open(LegacyBool ask, std::int32_t maxStations, const std::string& defaultPath);

/// Lets the operator change the data path in its window; kNo when that was cancelled.
LegacyBool gfbNUV_DataPath_change();

/// Takes the values of `gDataPath` from the settings of the suite.
void gpDataPathRead();

/// Name of this computer; empty when it cannot be told.
std::string gfsComputer_name();
