#pragma once

#include "companyfile/document.h"
#include "companyfile/status.h"

namespace companyfile {

/// Checks the values of a request against their types and lengths and brings them to the form in
/// which they are kept (amounts with two decimals, booleans as words, western characters only).
/// Elements of another edition are dropped. Empty elements are dropped as not sent, but kept where
/// `keepEmpty`: in a modify they clear a field.
/// @return 0, or 530 when an element of another edition held something.
/// @throws StatusError 3010 to 3110 for a value that cannot be taken.
Status checkValues(Request& request, bool keepEmpty);

/// The form of an id: hexadecimal digits, a hyphen, decimal digits.
bool isIdForm(std::string_view id);
/// A date that the file can keep: YYYY-MM-DD from 1970-01-02 to 2037-12-31.
bool isStorableDate(std::string_view date);

}  // namespace companyfile
