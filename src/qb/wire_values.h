#pragma once

#include "util/conversions.h"
#include "util/date_time.h"
#include "util/money.h"

#include <string>
#include <string_view>

/// The forms that values take in a request.
namespace qb {

/// Order of dates in texts: day first when `gCommon.USEurope` is "E".
util::DateOrder dateOrder();
/// The date that a text is in the store's order. @throws BasicError 13 when it is none.
util::DateTime dateOf(std::string_view text);

/// "YYYY-MM-DD".
std::string wireDate(util::DateTime date);
/// An amount: two decimals, half away from zero.
std::string wireAmount(util::Money amount);
/// A price or cost: up to four decimals, without zeros at the end.
std::string wirePrice(util::Money price);
/// A quantity or per cent: up to five decimals, half away from zero, without zeros at the end.
std::string wireNumber(double value);
/// "true" or "false".
std::string wireBoolean(bool value);
/// The word at `number` (decimal text, from 0) of an enumerated field of a request.
/// @throws BasicError 13 when the text is no number, 9 when there is no such word.
std::string wireWord(std::string_view request, std::string_view field, std::string_view number);

}  // namespace qb
