#pragma once

#include <string>

/// The invoice form of a number: the last seven characters of seven zeros and the whole-number
/// value (half to even) of what stands at the start of `text`. "12a" gives "0000012", "12345678"
/// gives "2345678", no number gives "0000000". @throws BasicError 6 for a number beyond a double.
std::string gfsNumber_pad7(const std::string& text);

/// The `SL` of an item from its display form: the first seven characters and the last one, joined.
/// "1234567.8" gives "12345678".
std::string gfsItem_key(const std::string& displayForm);

/// The display form of an `SL`: unchanged when its trimmed text starts with "~", else the first
/// seven characters, a point and the last character. "12345678" gives "1234567.8".
std::string gfsItem_name(const std::string& sl);

/// `value` rounded to `decimals` decimals, half away from zero. The fraction is compared as a
/// 32-bit float, so that 1.005, which a double holds a little too small, still goes up.
double gfdRound(double value, int decimals);
