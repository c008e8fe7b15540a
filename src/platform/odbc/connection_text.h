#pragma once

#include "platform/odbc/server_kind.h"
#include "platform/ports/data.h"

#include <string>
#include <vector>

namespace platform {

/// The per-user settings of the connection that the operator can make beside the server's name.
struct OdbcOptions {
    /// A driver's name; keywords of its own may follow, each behind a ";", and stand in for ours.
    /// Empty: the best driver for a SQL Server that is installed.
    std::string driver;
    std::string port;  ///< empty: the driver's own, or the instance's
};

/// A driver's name and its connection text.
struct ConnectionText {
    std::string driver;
    std::string text;  ///< UTF-8
};

/// @param installed  names of the installed drivers. An empty catalog is the login's own.
ConnectionText connectionText(
    const ConnectionSettings& settings,
    const OdbcOptions& options,
    const std::vector<std::string>& installed
);

/// Names of the drivers that the driver manager knows.
std::vector<std::string> installedDrivers();

}  // namespace platform
