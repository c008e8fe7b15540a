#pragma once

#include "platform/ports/data.h"
#include "platform/sql_dialect/statement_cache.h"
#include "platform/sqlite/catalog_session.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The embedded store: a catalog is one SQLite file `<folder>\<catalog>.mdf` with the tables and
/// columns exactly as the create-table statements name them, texts in UTF-8 without blanks at the
/// end. Any program that knows SQLite can read and write it beside the link.
class SqliteConnection : public DataConnection {
public:
    /// @param folder  gives the data folder (a name of the suite) at each open.
    explicit SqliteConnection(std::function<std::string()> folder);
    ~SqliteConnection() override = default;

    /// Opens the catalog's file and makes the indexes that the link's walks need. The file must be
    /// there. Login and password are not looked at. @throws PlatformError 4060, 5120, 5171, ...
    void open(const ConnectionSettings& settings) override;
    [[nodiscard]] bool isOpen() const override;
    /// What a BEGIN TRANSACTION began and nothing ended is undone.
    void close() override;
    void execute(std::string_view statement) override;
    std::unique_ptr<RowSet> openRowSet(std::string_view statement) override;

private:
    [[nodiscard]] CatalogSession& session() const;
    [[nodiscard]] FilledTranslation translated(std::string_view statement) const;
    void perform(const Translation& translation, const std::vector<Stored>& values);
    void createIndex(const Translation& translation);
    void alterColumn(const Translation& translation);
    void transaction(const Translation& translation);

    std::function<std::string()> folder_;
    std::shared_ptr<CatalogSession> session_;
};

}  // namespace platform
