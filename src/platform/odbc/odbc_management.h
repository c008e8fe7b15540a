#pragma once

#include "platform/odbc/odbc_store.h"
#include "platform/ports/management.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// The management session with the store's own server, by statements over a connection of its own.
class OdbcManagement : public ManagementSession {
public:
    /// @param options  gives the settings of the connection at each connect.
    explicit OdbcManagement(std::function<OdbcOptions()> options);

    void connect(
        const std::string& server,
        const std::string& login,
        const std::string& password,
        bool integrated
    ) override;
    void setLoginTimeout(int seconds) override;
    [[nodiscard]] int status() const override;
    [[nodiscard]] std::vector<CatalogInfo> catalogs() const override;
    void addCatalog(const CatalogFiles& files) override;
    /// Looks into the catalog by a connection of its own.
    [[nodiscard]] std::vector<TableInfo> tables(const std::string& catalog) const override;

private:
    [[nodiscard]] std::unique_ptr<OdbcSession> sessionIn(const std::string& catalog) const;
    [[nodiscard]] OdbcSession& session() const;

    std::function<OdbcOptions()> options_;
    ConnectionSettings settings_;
    OdbcOptions connectedWith_;
    std::unique_ptr<OdbcSession> session_;
};

}  // namespace platform
