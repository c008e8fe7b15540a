#pragma once

#include "platform/ports/data.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

/// A connection that notes every statement on its way to another one, and can fail on demand.
class CountingConnection : public platform::DataConnection {
public:
    explicit CountingConnection(std::unique_ptr<platform::DataConnection> inner)
        : inner_(std::move(inner)) {}

    void open(const platform::ConnectionSettings& settings) override { inner_->open(settings); }
    [[nodiscard]] bool isOpen() const override { return inner_->isOpen(); }
    void close() override { inner_->close(); }
    void execute(std::string_view statement) override {
        note(statement);
        inner_->execute(statement);
    }
    std::unique_ptr<platform::RowSet> openRowSet(std::string_view statement) override {
        note(statement);
        return inner_->openRowSet(statement);
    }

    /// Statements so far, failed ones included.
    [[nodiscard]] const std::vector<std::string>& statements() const { return statements_; }
    void forget() { statements_.clear(); }
    /// The statement that comes after `count` others fails with `error`, once.
    void failAfter(int count, platform::PlatformError error) {
        untilFailure_ = count;
        error_ = std::move(error);
    }

private:
    void note(std::string_view statement) {
        statements_.emplace_back(statement);
        if (untilFailure_ >= 0 && untilFailure_-- == 0) {
            throw platform::PlatformError(error_);
        }
    }

    std::unique_ptr<platform::DataConnection> inner_;
    std::vector<std::string> statements_;
    int untilFailure_ = -1;
    platform::PlatformError error_{0, ""};
};

}  // namespace testing_support
