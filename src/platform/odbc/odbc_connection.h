#pragma once

#include "platform/odbc/odbc_store.h"
#include "platform/ports/data.h"

#include <functional>
#include <memory>
#include <string_view>

namespace platform {

/// A connection to the store's own server through the ODBC driver manager: SQL Server, by FreeTDS
/// or the vendor's driver. A statement that finds the server gone closes the connection.
class OdbcConnection : public DataConnection {
public:
    /// @param options  gives the settings of the connection at each open.
    explicit OdbcConnection(std::function<OdbcOptions()> options);

    void open(const ConnectionSettings& settings) override;
    [[nodiscard]] bool isOpen() const override;
    void close() override;
    void execute(std::string_view statement) override;
    std::unique_ptr<RowSet> openRowSet(std::string_view statement) override;

private:
    StoreRows run(std::string_view statement);

    std::function<OdbcOptions()> options_;
    std::shared_ptr<OdbcStore> store_;
};

}  // namespace platform
