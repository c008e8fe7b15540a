#pragma once

#include "platform/sql_dialect/columns.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The rows of one answer, each packed into one piece of memory: a big table is held at about the
/// size of its file.
class PackedRows {
public:
    void add(const std::vector<Stored>& row) { rows_.push_back(pack(row)); }
    void replace(std::size_t at, const std::vector<Stored>& row) { rows_[at] = pack(row); }
    /// Adds an empty row, which the calls of put() behind it fill value by value.
    void begin() { rows_.emplace_back(); }
    void put(std::monostate none);
    void put(std::int64_t number);
    void put(double number);
    void put(std::string_view text);
    void erase(std::size_t at) { rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(at)); }
    [[nodiscard]] std::size_t size() const { return rows_.size(); }
    [[nodiscard]] std::vector<Stored> row(std::size_t at) const;
    /// The same into a vector that is there already.
    void read(std::size_t at, std::vector<Stored>& values) const;

private:
    static std::string pack(const std::vector<Stored>& row);

    std::vector<std::string> rows_;
};

}  // namespace platform
