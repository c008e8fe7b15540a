#include "platform/sql_dialect/packed_rows.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t kUsualSize = 500;

}  // namespace

void PackedRow::grow(std::size_t count) {
    room_ = size_ + std::max(count, size_);
    std::unique_ptr<char[]> bytes(new char[room_]);
    std::copy_n(bytes_.get(), size_, bytes.get());
    bytes_ = std::move(bytes);
}

void PackedRows::pack(const std::vector<Stored>& row, RowPacker packer) {
    for (const auto& value : row) {
        std::visit([&](const auto& held) { packer(held); }, value);
    }
}

RowPacker PackedRows::add() {
    // Rows of one table differ little.
    const std::size_t before = rows_.empty() ? kUsualSize : rows_.back().size();
    return RowPacker(rows_.emplace_back(before));
}

std::vector<Stored> PackedRows::row(std::size_t at) const {
    std::vector<Stored> values;
    for (RowReader reader = read(at); !reader.atEnd();) {
        values.push_back(ownStored(reader.next()));
    }
    return values;
}

}  // namespace platform
