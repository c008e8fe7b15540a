#pragma once

#include "platform/ports/management.h"

#include <functional>
#include <string>
#include <vector>

namespace platform {

/// The management session of the embedded store: catalogs are the files `*.mdf` of a folder. There
/// is no server and no login; connect() always succeeds.
class SqliteManagement : public ManagementSession {
public:
    /// @param folder  gives the data folder (a name of the suite) at each call.
    explicit SqliteManagement(std::function<std::string()> folder);

    void connect(
        const std::string& server,
        const std::string& login,
        const std::string& password,
        bool integrated
    ) override;
    void setLoginTimeout(int seconds) override;
    /// 0: there is no host of its own whose clock could be taken.
    [[nodiscard]] int status() const override;
    [[nodiscard]] std::vector<CatalogInfo> catalogs() const override;
    /// Makes the data file, readable for its owner and group only; one that is there is looked at
    /// and left as it stands. There is no log file. @throws PlatformError 5123, 5171.
    void addCatalog(const CatalogFiles& files) override;
    /// @throws PlatformError 4060 when there is no such catalog.
    [[nodiscard]] std::vector<TableInfo> tables(const std::string& catalog) const override;

private:
    std::function<std::string()> folder_;
    int timeoutSeconds_ = 25;
};

}  // namespace platform
