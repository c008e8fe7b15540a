#include "platform/sql_dialect/packed_rows.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace platform {

namespace {

constexpr char kNone = 'n';
constexpr char kWhole = 'i';
constexpr char kNumber = 'd';
constexpr char kText = 't';

template <class Number>
void append(std::string& bytes, char kind, Number number) {
    std::array<char, 1 + sizeof number> piece{kind};
    std::memcpy(piece.data() + 1, &number, sizeof number);
    bytes.append(piece.data(), piece.size());
}

template <class Number>
Number get(const std::string& bytes, std::size_t& at) {
    Number number = 0;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    at += sizeof number;
    return number;
}

struct Packer {
    std::string& bytes;

    void operator()(std::monostate) const { bytes += kNone; }
    void operator()(std::int64_t number) const { append(bytes, kWhole, number); }
    void operator()(double number) const { append(bytes, kNumber, number); }
    void operator()(std::string_view text) const {
        append(bytes, kText, static_cast<std::uint32_t>(text.size()));
        bytes += text;
    }
};

}  // namespace

std::string PackedRows::pack(const std::vector<Stored>& row) {
    std::string bytes;
    for (const auto& value : row) {
        std::visit(Packer{bytes}, value);
    }
    return bytes;
}

void PackedRows::put(std::monostate none) {
    Packer{rows_.back()}(none);
}

void PackedRows::put(std::int64_t number) {
    Packer{rows_.back()}(number);
}

void PackedRows::put(double number) {
    Packer{rows_.back()}(number);
}

void PackedRows::put(std::string_view text) {
    Packer{rows_.back()}(text);
}

std::vector<Stored> PackedRows::row(std::size_t at) const {
    std::vector<Stored> values;
    read(at, values);
    return values;
}

void PackedRows::read(std::size_t at, std::vector<Stored>& values) const {
    const std::string& bytes = rows_[at];
    values.clear();
    std::size_t place = 0;
    while (place < bytes.size()) {
        const char kind = bytes[place++];
        if (kind == kWhole) {
            values.emplace_back(get<std::int64_t>(bytes, place));
        } else if (kind == kNumber) {
            values.emplace_back(get<double>(bytes, place));
        } else if (kind == kText) {
            const auto size = get<std::uint32_t>(bytes, place);
            values.emplace_back(std::in_place_type<std::string>, bytes, place, size);
            place += size;
        } else {
            values.emplace_back();
        }
    }
}

}  // namespace platform
