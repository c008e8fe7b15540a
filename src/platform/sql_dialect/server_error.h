#pragma once

#include "platform/ports/platform_error.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace platform {

/// Numbers of the database server's errors, as the link and its operators know them.
enum ServerError : std::int32_t {
    errorNetwork = 11,
    errorNoServer = 17,
    errorSyntax = 102,
    errorUnclosedQuote = 105,
    errorColumnInvalid = 207,
    errorObjectInvalid = 208,
    errorValueCount = 213,
    errorSmallOverflow = 220,
    errorNoPermission = 229,
    errorDate = 241,
    errorTextOverflowsSmall = 244,
    errorTextOverflowsInteger = 248,
    errorTextConversion = 245,
    errorNullRefused = 515,
    errorSourceUnreadable = 823,
    errorCatalogDamaged = 824,
    errorObjectMissing = 1088,
    errorCatalogFull = 1105,
    errorDeadlock = 1205,
    errorLockTimeout = 1222,
    errorDuplicatesFound = 1505,
    errorCatalogExists = 1801,
    errorIndexColumn = 1911,
    errorIndexExists = 1913,
    errorDuplicateKey = 2601,
    errorColumnExists = 2705,
    errorObjectExists = 2714,
    errorTypeUnknown = 2715,
    errorDropMissing = 3701,
    errorNothingToCommit = 3902,
    errorNothingToRollBack = 3903,
    errorReadOnly = 3906,
    errorNoCatalog = 4060,
    errorAlterMissing = 4902,
    errorAlterColumnMissing = 4924,
    errorFileOpen = 5120,
    errorFileCreate = 5123,
    errorNoCatalogFile = 5171,
    errorTypeConversion = 8114,
    errorNumericOverflow = 8115,
    errorTruncated = 8152,
    errorRenameMissing = 15248,
    errorRenameExists = 15335,
    errorLoginFailed = 18456,
    errorUnspecified = static_cast<std::int32_t>(0x80004005)
};

/// The error of `number` in the server's own words, with `parts` in the places of %1 to %3.
/// A number without words of its own shows the first part as it stands.
PlatformError serverError(std::int32_t number, std::initializer_list<std::string_view> parts = {});

}  // namespace platform
