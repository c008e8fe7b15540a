#pragma once

/// Hands the address of the suite's guides to the system's viewer; does not wait, and passes over
/// errors.
void gpHelp_guides_open();
