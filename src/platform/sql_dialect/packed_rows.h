#pragma once

#include "platform/sql_dialect/columns.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// How a value stands in a packed row. Its first byte tells the kind, and the value itself when
/// that is a small one: most columns of a row hold 0, nothing or a short text.
struct PackedValue {
    using Byte = std::uint8_t;
    using TextSize = std::uint32_t;

    static constexpr Byte kNone = 0;
    static constexpr Byte kWhole = 1;        ///< 8 bytes follow
    static constexpr Byte kNumber = 2;       ///< 8 bytes follow
    static constexpr Byte kText = 3;         ///< 4 bytes of size and the text follow
    static constexpr Byte kSmallWhole = 64;  ///< 64 to 127 are 0 to 63
    static constexpr Byte kShortText = 128;  ///< 128 to 255 are sizes 0 to 127; the text follows
};

/// Puts values behind each other into the bytes of one row.
class RowPacker {
public:
    explicit RowPacker(std::string& bytes) : bytes_(bytes) {}

    void operator()(std::monostate) { put(PackedValue::kNone); }
    void operator()(std::int64_t number) {
        if (number >= 0 && number < PackedValue::kShortText - PackedValue::kSmallWhole) {
            put(static_cast<PackedValue::Byte>(PackedValue::kSmallWhole + number));
        } else {
            put(PackedValue::kWhole, number);
        }
    }
    void operator()(double number) { put(PackedValue::kNumber, number); }
    void operator()(std::string_view text) {
        if (text.size() < PackedValue::kShortText) {
            put(static_cast<PackedValue::Byte>(PackedValue::kShortText + text.size()));
        } else {
            put(PackedValue::kText, static_cast<PackedValue::TextSize>(text.size()));
        }
        if (!text.empty()) {
            bytes_.append(text);
        }
    }

private:
    void put(PackedValue::Byte kind) { bytes_.push_back(static_cast<char>(kind)); }
    template <class Number>
    void put(PackedValue::Byte kind, Number number) {
        std::array<char, 1 + sizeof number> piece{static_cast<char>(kind)};
        std::memcpy(piece.data() + 1, &number, sizeof number);
        bytes_.append(piece.data(), piece.size());
    }

    std::string& bytes_;
};

/// Takes the values off the bytes of one row, front to back.
class RowReader {
public:
    explicit RowReader(std::string_view bytes) : rest_(bytes) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    /// Calls `take` with the next value. @return what it returns.
    template <class Take>
    auto next(const Take& take) {
        const auto kind = static_cast<PackedValue::Byte>(rest_.front());
        rest_.remove_prefix(1);
        if (kind >= PackedValue::kShortText) {
            return take(text(kind - PackedValue::kShortText));
        }
        if (kind >= PackedValue::kSmallWhole) {
            return take(std::int64_t{kind - PackedValue::kSmallWhole});
        }
        switch (kind) {
        case PackedValue::kWhole:
            return take(number<std::int64_t>());
        case PackedValue::kNumber:
            return take(number<double>());
        case PackedValue::kText:
            return take(text(number<PackedValue::TextSize>()));
        default:
            return take(std::monostate{});
        }
    }
    StoredView next() {
        return next([](auto value) { return StoredView(value); });
    }

private:
    template <class Number>
    Number number() {
        Number number = 0;
        std::memcpy(&number, rest_.data(), sizeof number);
        rest_.remove_prefix(sizeof number);
        return number;
    }
    std::string_view text(std::size_t size) {
        const std::string_view text = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return text;
    }

    std::string_view rest_;
};

/// The rows of one answer, each packed into one piece of memory: a big table is held at about the
/// size of its file.
class PackedRows {
public:
    /// Adds a row that is still empty. @return its filler, valid until the next call.
    RowPacker add();
    void add(const std::vector<Stored>& row) { rows_.push_back(pack(row)); }
    void replace(std::size_t at, const std::vector<Stored>& row) { rows_[at] = pack(row); }
    void erase(std::size_t at) { rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(at)); }
    [[nodiscard]] std::size_t size() const { return rows_.size(); }
    [[nodiscard]] std::vector<Stored> row(std::size_t at) const;
    /// The values of a row, the texts among them without a copy: they are valid until a row is
    /// added, replaced or erased.
    [[nodiscard]] RowReader read(std::size_t at) const { return RowReader(rows_[at]); }

private:
    static std::string pack(const std::vector<Stored>& row);

    std::vector<std::string> rows_;
};

}  // namespace platform
