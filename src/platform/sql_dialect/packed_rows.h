#pragma once

#include "platform/sql_dialect/columns.h"

#include <cstddef>
#include <string>
#include <vector>

namespace platform {

/// The rows of one answer, each packed into one piece of memory: a big table is held at about the
/// size of its file.
class PackedRows {
public:
    void add(const std::vector<Stored>& row) { rows_.push_back(pack(row)); }
    void replace(std::size_t at, const std::vector<Stored>& row) { rows_[at] = pack(row); }
    void erase(std::size_t at) { rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(at)); }
    [[nodiscard]] std::size_t size() const { return rows_.size(); }
    [[nodiscard]] std::vector<Stored> row(std::size_t at) const;

private:
    static std::string pack(const std::vector<Stored>& row);

    std::vector<std::string> rows_;
};

}  // namespace platform
