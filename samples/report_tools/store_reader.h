#pragma once

#include "util/conversions.h"
#include "util/money.h"

#include <functional>
#include <string>
#include <vector>

#include <sqlite3.h>

/// What the report tools share: the store that the settings name, read without the link.
namespace report_tools {

/// A row of a result as the statement gave it.
class Row {
public:
    explicit Row(sqlite3_stmt* statement) : statement_(statement) {}
    /// Text without the blanks around it, UTF-8.
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] util::Money money(int column) const;
    [[nodiscard]] double number(int column) const;

private:
    sqlite3_stmt* statement_;
};

/// The store of the per-user settings, for reading.
class StoreReader {
public:
    /// @throws std::runtime_error when the settings name no store, or it cannot be opened.
    StoreReader();
    ~StoreReader();
    StoreReader(const StoreReader&) = delete;
    StoreReader& operator=(const StoreReader&) = delete;
    StoreReader(StoreReader&&) = delete;
    StoreReader& operator=(StoreReader&&) = delete;

    /// Calls `take` for each row. @throws std::runtime_error with the store's text.
    void each(
        const std::string& statement,
        const std::vector<std::string>& values,
        const std::function<void(const Row&)>& take
    );
    /// The order of day and month in the store's dates.
    [[nodiscard]] util::DateOrder dateOrder() const { return order_; }
    /// Eight digits of a date text. @throws std::runtime_error when it is no date.
    [[nodiscard]] std::string day(const std::string& text) const;
    /// Short date text of eight digits.
    [[nodiscard]] std::string shortText(const std::string& day) const;

    /// Writes the lines to `export/<name>` of the data folder, as a whole; without lines a file of
    /// that name is taken away.
    void writeExport(const std::string& name, const std::vector<std::string>& lines) const;

private:
    std::string folder_;
    sqlite3* database_ = nullptr;
    util::DateOrder order_ = util::DateOrder::monthFirst;
};

/// The values between fixed texts of a command line ("|START=", " |END=", ...), in order; empty
/// when the line has another shape. An empty last text stands for the line's end.
std::vector<std::string>
valuesBetween(const std::string& line, const std::vector<std::string>& fixedTexts);

/// Runs a tool: arguments joined by blanks, taken apart, given to `work`. @return status of the
/// process: 0, 1 for a failure, 64 for a wrong call.
int runTool(
    const std::vector<std::string>& arguments,
    const std::vector<std::string>& fixedTexts,
    const char* usage,
    const std::function<void(StoreReader&, const std::vector<std::string>&)>& work
);

}  // namespace report_tools
