#pragma once

/// Entry routine of the program: splash, data path, tables, and the run mode that the store's
/// `Accounting` asks for. Returns when an error reached it (told in a box titled "Error Startup
/// Main"); every other way out ends the program through gpApp_end (platform::ProgramEnd).
void gpMain_start();

namespace core {

/// Puts the state of every module of the link back to its start values, so that the program can run
/// again in the same process.
void resetLink();

}  // namespace core
