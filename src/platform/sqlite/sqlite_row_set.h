#pragma once

#include "platform/sql_dialect/client_row_set.h"
#include "platform/sql_dialect/statement_cache.h"
#include "platform/sqlite/catalog_session.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// The rows of one SELECT on the embedded store. Changing them after the connection was closed is
/// error 3704; reading them goes on.
class SqliteRowSet : public ClientRowSet {
public:
    /// Fetches all rows of a translated SELECT.
    SqliteRowSet(const std::shared_ptr<CatalogSession>& session, const FilledTranslation& select);
    /// The empty set of a statement that gives no rows.
    SqliteRowSet() = default;

protected:
    void sendUpdate(const std::vector<std::size_t>& changed) override;
    void sendRemove() override;

private:
    [[nodiscard]] std::shared_ptr<CatalogSession> session() const;
    [[nodiscard]] const TableSchema& table(CatalogSession& session) const;
    void send(
        const std::string& action,
        std::vector<Stored> values,
        const std::vector<std::size_t>& changed
    ) const;

    std::weak_ptr<CatalogSession> session_;
    std::string table_;
    bool hasRowNumbers_ = false;  ///< the first value of each packed row is the row's number
};

}  // namespace platform
