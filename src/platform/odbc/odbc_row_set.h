#pragma once

#include "platform/odbc/odbc_store.h"
#include "platform/sql_dialect/client_row_set.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// The rows of one SELECT on a server. A change is a statement of its own that finds the row by its
/// original values. Changing rows after the connection was closed is error 3704; reading them goes
/// on.
class OdbcRowSet : public ClientRowSet {
public:
    OdbcRowSet(const std::shared_ptr<OdbcStore>& store, StoreRows rows);

protected:
    void sendUpdate(const std::vector<std::size_t>& changed) override;
    void sendRemove() override;

private:
    void send(const std::string& action, const std::vector<std::size_t>& changed);

    std::weak_ptr<OdbcStore> store_;
    std::string table_;
};

}  // namespace platform
