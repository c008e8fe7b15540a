#include "platform/sql_dialect/packed_rows.h"

namespace platform {

std::string PackedRows::pack(const std::vector<Stored>& row) {
    std::string bytes;
    RowPacker packer(bytes);
    for (const auto& value : row) {
        std::visit(packer, value);
    }
    return bytes;
}

RowPacker PackedRows::add() {
    constexpr std::size_t kUsualSize = 500;
    const std::size_t before = rows_.empty() ? kUsualSize : rows_.back().size();
    rows_.emplace_back().reserve(before);  // rows of one table differ little
    return RowPacker(rows_.back());
}

std::vector<Stored> PackedRows::row(std::size_t at) const {
    std::vector<Stored> values;
    for (RowReader reader = read(at); !reader.atEnd();) {
        values.push_back(ownStored(reader.next()));
    }
    return values;
}

}  // namespace platform
