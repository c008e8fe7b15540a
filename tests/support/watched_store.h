#pragma once

#include "platform/ports/data.h"
#include "platform/ports/management.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace testing_support {

/// What passes the data ports, and the faults that a test puts in their way.
struct StoreWatch {
    std::vector<std::string> statements;
    /// Errors by the beginning of the statement that meets them.
    std::map<std::string, platform::PlatformError> failures;
    /// What happens in the moment before a statement goes on.
    std::function<void(std::string_view statement)> onStatement;
    bool refusesToOpen = false;
    std::optional<platform::PlatformError> connectFailure;
    std::optional<int> serverStatus;
    std::vector<platform::CatalogInfo> moreCatalogs;

    void pass(std::string_view statement) {
        statements.emplace_back(statement);
        if (const auto step = onStatement) {  // a step may take itself away
            step(statement);
        }
        for (const auto& [beginning, error] : failures) {
            if (statement.starts_with(beginning)) {
                throw error;
            }
        }
    }
    /// The last statement; empty when there was none.
    [[nodiscard]] std::string last() const { return statements.empty() ? "" : statements.back(); }
    /// Statements that begin with one of `words`.
    [[nodiscard]] std::vector<std::string> beginningWith(const std::vector<std::string_view>& words
    ) const {
        std::vector<std::string> found;
        for (const std::string& statement : statements) {
            for (const std::string_view word : words) {
                if (statement.starts_with(word)) {
                    found.push_back(statement);
                }
            }
        }
        return found;
    }
};

/// A real connection, watched.
class WatchedConnection : public platform::DataConnection {
public:
    WatchedConnection(std::unique_ptr<platform::DataConnection> inner, StoreWatch& watch)
        : inner_(std::move(inner)),
          watch_(watch) {}

    void open(const platform::ConnectionSettings& settings) override {
        if (watch_.refusesToOpen) {
            throw platform::PlatformError(17, "SQL Server does not exist or access denied.");
        }
        inner_->open(settings);
    }
    [[nodiscard]] bool isOpen() const override { return inner_->isOpen(); }
    void close() override { inner_->close(); }
    void execute(std::string_view statement) override {
        watch_.pass(statement);
        inner_->execute(statement);
    }
    std::unique_ptr<platform::RowSet> openRowSet(std::string_view statement) override {
        watch_.pass(statement);
        return inner_->openRowSet(statement);
    }

private:
    std::unique_ptr<platform::DataConnection> inner_;
    StoreWatch& watch_;
};

/// A real management session that can pose as a server of its own.
class WatchedManagement : public platform::ManagementSession {
public:
    WatchedManagement(std::unique_ptr<platform::ManagementSession> inner, StoreWatch& watch)
        : inner_(std::move(inner)),
          watch_(watch) {}

    void connect(
        const std::string& server,
        const std::string& login,
        const std::string& password,
        bool integrated
    ) override {
        if (watch_.connectFailure) {
            throw *watch_.connectFailure;
        }
        inner_->connect(server, login, password, integrated);
    }
    void setLoginTimeout(int seconds) override { inner_->setLoginTimeout(seconds); }
    [[nodiscard]] int status() const override {
        return watch_.serverStatus.value_or(inner_->status());
    }
    [[nodiscard]] std::vector<platform::CatalogInfo> catalogs() const override {
        std::vector<platform::CatalogInfo> all = inner_->catalogs();
        all.insert(all.end(), watch_.moreCatalogs.begin(), watch_.moreCatalogs.end());
        return all;
    }
    void addCatalog(const platform::CatalogFiles& files) override { inner_->addCatalog(files); }
    [[nodiscard]] std::vector<platform::TableInfo> tables(const std::string& catalog
    ) const override {
        return inner_->tables(catalog);
    }

private:
    std::unique_ptr<platform::ManagementSession> inner_;
    StoreWatch& watch_;
};

}  // namespace testing_support
