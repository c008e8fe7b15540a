#pragma once

#include "platform/ports/platform_error.h"

#include <string>
#include <vector>

namespace platform {

struct CatalogInfo {
    std::string name;
    bool isSystem = false;
};

struct TableInfo {
    std::string name;
    bool isSystem = false;
};

/// What a new catalog is made of. A data file that exists is attached as it stands.
struct CatalogFiles {
    std::string name;
    std::string dataFile;     ///< full name of the ".mdf"; empty: where the server keeps its files
    std::string logFile;      ///< full name of the ".ldf"
    std::string logicalLog;   ///< logical name of the log file
    bool attachData = false;  ///< the data file was there
    bool attachLog = false;   ///< the log file was there
};

/// Port: the management session with a database server: finds, inspects and makes catalogs.
/// Every call blocks and throws PlatformError when the server refuses.
class ManagementSession {
public:
    virtual ~ManagementSession() = default;
    /// Connects by login and password, or by the system's own login when `integrated`.
    virtual void connect(
        const std::string& server,
        const std::string& login,
        const std::string& password,
        bool integrated
    ) = 0;
    virtual void setLoginTimeout(int seconds) = 0;
    /// 1: the server runs and has a host of its own; any other value: it has not (the embedded
    /// store).
    [[nodiscard]] virtual int status() const = 0;
    [[nodiscard]] virtual std::vector<CatalogInfo> catalogs() const = 0;
    /// Creates or attaches a catalog.
    virtual void addCatalog(const CatalogFiles& files) = 0;
    [[nodiscard]] virtual std::vector<TableInfo> tables(const std::string& catalog) const = 0;
};

}  // namespace platform
