#pragma once

#include "platform/sql_dialect/columns.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>
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

/// The bytes of one row.
class PackedRow {
public:
    /// @param room  bytes that the row will probably take.
    explicit PackedRow(std::size_t room) : bytes_(new char[room]), room_(room) {}

    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] std::string_view bytes() const { return {bytes_.get(), size_}; }
    /// Lengthens the row. @return the `count` new bytes, which hold anything.
    char* add(std::size_t count) {
        if (count > room_ - size_) {
            grow(count);
        }
        char* added = bytes_.get() + size_;
        size_ += count;
        return added;
    }

private:
    void grow(std::size_t count);

    std::unique_ptr<char[]> bytes_;
    std::size_t room_;
    std::size_t size_ = 0;
};

/// Puts values behind each other into the bytes of one row.
class RowPacker {
public:
    explicit RowPacker(PackedRow& row) : row_(row) {}

    void operator()(std::monostate) { put(row_.add(1), PackedValue::kNone); }
    void operator()(std::int64_t number) {
        if (number >= 0 && number < PackedValue::kShortText - PackedValue::kSmallWhole) {
            put(row_.add(1), static_cast<PackedValue::Byte>(PackedValue::kSmallWhole + number));
        } else {
            putNumber(PackedValue::kWhole, number);
        }
    }
    void operator()(double number) { putNumber(PackedValue::kNumber, number); }
    void operator()(std::string_view text) {
        if (text.size() < PackedValue::kShortText) {
            char* place = row_.add(1 + text.size());
            put(place, static_cast<PackedValue::Byte>(PackedValue::kShortText + text.size()));
            if (!text.empty()) {
                std::memcpy(place + 1, text.data(), text.size());
            }
        } else {
            putNumber(PackedValue::kText, static_cast<PackedValue::TextSize>(text.size()));
            std::memcpy(row_.add(text.size()), text.data(), text.size());
        }
    }

private:
    static void put(char* place, PackedValue::Byte kind) { *place = static_cast<char>(kind); }
    template <class Number>
    void putNumber(PackedValue::Byte kind, Number number) {
        char* place = row_.add(1 + sizeof number);
        put(place, kind);
        std::memcpy(place + 1, &number, sizeof number);
    }

    PackedRow& row_;
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
    void add(const std::vector<Stored>& row) { pack(row, add()); }
    void replace(std::size_t at, const std::vector<Stored>& row) {
        PackedRow packed(rows_[at].size());
        pack(row, RowPacker(packed));
        rows_[at] = std::move(packed);
    }
    void erase(std::size_t at) { rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(at)); }
    [[nodiscard]] std::size_t size() const { return rows_.size(); }
    [[nodiscard]] std::vector<Stored> row(std::size_t at) const;
    /// The values of a row, the texts among them without a copy: they are valid until a row is
    /// added, replaced or erased.
    [[nodiscard]] RowReader read(std::size_t at) const { return RowReader(rows_[at].bytes()); }

private:
    static void pack(const std::vector<Stored>& row, RowPacker packer);

    std::vector<PackedRow> rows_;
};

}  // namespace platform
