#include "platform/sql_dialect/packed_rows.h"

#include <cstdint>
#include <cstring>

namespace platform {

namespace {

constexpr char kNone = 'n';
constexpr char kWhole = 'i';
constexpr char kNumber = 'd';
constexpr char kText = 't';

template <class Number>
void put(std::string& bytes, char kind, Number number) {
    bytes += kind;
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
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
    void operator()(std::int64_t number) const { put(bytes, kWhole, number); }
    void operator()(double number) const { put(bytes, kNumber, number); }
    void operator()(const std::string& text) const {
        put(bytes, kText, static_cast<std::uint32_t>(text.size()));
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

std::vector<Stored> PackedRows::row(std::size_t at) const {
    const std::string& bytes = rows_[at];
    std::vector<Stored> values;
    std::size_t place = 0;
    while (place < bytes.size()) {
        const char kind = bytes[place++];
        if (kind == kWhole) {
            values.emplace_back(get<std::int64_t>(bytes, place));
        } else if (kind == kNumber) {
            values.emplace_back(get<double>(bytes, place));
        } else if (kind == kText) {
            const auto size = get<std::uint32_t>(bytes, place);
            values.emplace_back(bytes.substr(place, size));
            place += size;
        } else {
            values.emplace_back(std::monostate{});
        }
    }
    return values;
}

}  // namespace platform
