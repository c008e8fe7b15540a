#pragma once

#include "platform/odbc/odbc_session.h"

#include <functional>

namespace platform {

/// Raises the failure that the driver has noted for the statement.
using RaiseFailure = std::function<void()>;

/// Fetches all results of an executed statement to their end; the first one with columns is kept.
/// @param statement  the driver manager's handle.
OdbcResult fetchResult(void* statement, const RaiseFailure& raise);

}  // namespace platform
