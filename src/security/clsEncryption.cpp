#include "security/clsEncryption.h"

#include "util/basic_error.h"

#include <algorithm>
#include <bit>

namespace {

using ByteTable = std::array<std::uint8_t, 256>;
using MixedColumns = std::array<std::uint32_t, 256>;

constexpr std::size_t kWord = 4;
constexpr std::size_t kFewestWords = 4;
constexpr std::size_t kMostWords = 8;
/// Keys of more words get a further substitution in the middle of each stretch.
constexpr std::size_t kPlainKeyWords = 6;
constexpr std::size_t kDataBlock = 16;
constexpr std::size_t kLengthField = 4;

/// The field's polynomial without its highest term, and what the substitution adds.
constexpr std::uint8_t kPolynomial = 0x1B;
constexpr std::uint8_t kAdded = 0x63;

/// Columns of the mixing matrix and of its inverse.
constexpr std::array<std::uint8_t, 4> kMix = {2, 1, 1, 3};
constexpr std::array<std::uint8_t, 4> kUnmix = {14, 9, 13, 11};

/// By how many columns the rows of a block move, for blocks of 4 to 8 words.
constexpr std::array<std::array<std::size_t, 4>, 5> kShifts = {
    {{0, 1, 2, 3}, {0, 1, 2, 3}, {0, 1, 2, 3}, {0, 1, 2, 4}, {0, 1, 3, 4}}};

std::uint8_t doubled(std::uint8_t value) {
    const unsigned shifted = static_cast<unsigned>(value) << 1;
    return static_cast<std::uint8_t>((value & 0x80) != 0 ? shifted ^ kPolynomial : shifted);
}

std::uint8_t product(std::uint8_t left, std::uint8_t right) {
    std::uint8_t sum = 0;
    for (; left != 0; left = static_cast<std::uint8_t>(left >> 1)) {
        sum = static_cast<std::uint8_t>((left & 1) != 0 ? sum ^ right : sum);
        right = doubled(right);
    }
    return sum;
}

/// What a byte at the top of a column adds to the mixed column; lowest byte at the top.
std::uint32_t column(std::uint8_t value, const std::array<std::uint8_t, 4>& factors) {
    std::uint32_t word = 0;
    for (std::size_t row = 0; row < kWord; ++row) {
        word |= std::uint32_t{product(factors.at(row), value)} << (8 * row);
    }
    return word;
}

[[noreturn]] void refuseSize() {
    constexpr int kOutOfRange = 9;
    throw util::BasicError::of(kOutOfRange);
}

bool isSize(std::size_t words) {
    return words >= kFewestWords && words <= kMostWords;
}

void writeLength(std::span<std::uint8_t> bytes, std::size_t length) {
    for (std::size_t at = 0; at < kLengthField; ++at) {
        bytes[at] = static_cast<std::uint8_t>(length >> (8 * at));
    }
}

std::int32_t readLength(std::span<const std::uint8_t> bytes) {
    std::uint32_t length = 0;
    for (std::size_t at = 0; at < kLengthField; ++at) {
        length |= std::uint32_t{bytes[at]} << (8 * at);
    }
    return static_cast<std::int32_t>(length);
}

void replaceBytes(std::span<std::uint8_t> block, const ByteTable& table) {
    for (std::uint8_t& byte : block) {
        byte = table.at(byte);
    }
}

void mixColumns(std::span<std::uint8_t> block, const MixedColumns& columns) {
    for (std::size_t first = 0; first < block.size(); first += kWord) {
        std::uint32_t word = 0;
        for (std::size_t at = 0; at < kWord; ++at) {
            word ^= std::rotl(columns.at(block[first + at]), static_cast<int>(8 * at));
        }
        for (std::size_t row = 0; row < kWord; ++row) {
            block[first + row] = static_cast<std::uint8_t>(word >> (8 * row));
        }
    }
}

}  // namespace

struct clsEncryption::Tables {
    ByteTable substitute = {};
    ByteTable restore = {};
    MixedColumns mix = {};
    MixedColumns unmix = {};

    Tables() {
        for (std::size_t value = 0; value < 256; ++value) {
            mix.at(value) = column(static_cast<std::uint8_t>(value), kMix);
            unmix.at(value) = column(static_cast<std::uint8_t>(value), kUnmix);
        }
        // 3 meets every value but 0 when it is raised; its counterpart 0xF6 meets the inverses.
        constexpr std::uint8_t kThird = 0xF6;
        std::uint8_t value = 1;
        std::uint8_t inverse = 1;
        add(0, 0);
        for (int power = 0; power < 255; ++power) {
            add(value, inverse);
            value = product(3, value);
            inverse = product(kThird, inverse);
        }
    }

private:
    void add(std::uint8_t value, std::uint8_t inverse) {
        std::uint8_t mixed = inverse;
        for (int turn = 1; turn <= 4; ++turn) {
            mixed = static_cast<std::uint8_t>(mixed ^ std::rotl(inverse, turn));
        }
        substitute.at(value) = static_cast<std::uint8_t>(mixed ^ kAdded);
        restore.at(substitute.at(value)) = value;
    }
};

clsEncryption::~clsEncryption() {
    security::wipe(roundKeys_);
}

void clsEncryption::gentables() {
    static const Tables kTables;
    tables_ = &kTables;
}

void clsEncryption::substitute(Row& word) const {
    for (std::uint8_t& byte : word) {
        byte = tables_->substitute.at(byte);
    }
}

void clsEncryption::gkey(
    std::size_t blockWords, std::size_t keyWords, std::span<const std::uint8_t> key
) {
    if (!isSize(blockWords) || !isSize(keyWords)) {
        refuseSize();
    }
    columns_ = blockWords;
    rounds_ = std::max(blockWords, keyWords) + 6;
    roundKeys_.fill(0);
    const std::size_t given = std::min(key.size(), keyWords * kWord);
    std::copy_n(key.begin(), given, roundKeys_.begin());
    std::uint8_t constant = 1;
    for (std::size_t at = keyWords; at < blockWords * (rounds_ + 1); ++at) {
        Row word = {};
        std::copy_n(
            roundKeys_.begin() + static_cast<std::ptrdiff_t>((at - 1) * kWord), kWord, word.begin()
        );
        if (at % keyWords == 0) {
            std::rotate(word.begin(), word.begin() + 1, word.end());
            substitute(word);
            word[0] = static_cast<std::uint8_t>(word[0] ^ constant);
            constant = doubled(constant);
        } else if (keyWords > kPlainKeyWords && at % keyWords == 4) {
            substitute(word);
        }
        for (std::size_t byte = 0; byte < kWord; ++byte) {
            const std::uint8_t before = roundKeys_.at((at - keyWords) * kWord + byte);
            roundKeys_.at(at * kWord + byte) = static_cast<std::uint8_t>(before ^ word.at(byte));
        }
    }
}

void clsEncryption::requireBlock(Block block) const {
    if (block.size() != columns_ * kWord) {
        refuseSize();
    }
}

void clsEncryption::addRoundKey(Block block, std::size_t round) const {
    const std::size_t first = round * block.size();
    for (std::size_t at = 0; at < block.size(); ++at) {
        block[at] = static_cast<std::uint8_t>(block[at] ^ roundKeys_.at(first + at));
    }
}

void clsEncryption::shiftRows(Block block, bool back) const {
    const auto& shifts = kShifts.at(columns_ - kFewestWords);
    std::array<std::uint8_t, kMostWords* kWord> moved = {};
    for (std::size_t column = 0; column < columns_; ++column) {
        for (std::size_t row = 0; row < kWord; ++row) {
            const std::size_t other = (column + shifts.at(row)) % columns_;
            const std::size_t from = (back ? column : other) * kWord + row;
            const std::size_t to = (back ? other : column) * kWord + row;
            moved.at(to) = block[from];
        }
    }
    std::copy_n(moved.begin(), block.size(), block.begin());
}

void clsEncryption::Encrypt(std::span<std::uint8_t> block) const {
    requireBlock(block);
    addRoundKey(block, 0);
    for (std::size_t round = 1; round <= rounds_; ++round) {
        replaceBytes(block, tables_->substitute);
        shiftRows(block, false);
        if (round < rounds_) {
            mixColumns(block, tables_->mix);
        }
        addRoundKey(block, round);
    }
}

void clsEncryption::Decrypt(std::span<std::uint8_t> block) const {
    requireBlock(block);
    for (std::size_t round = rounds_; round >= 1; --round) {
        addRoundKey(block, round);
        if (round < rounds_) {
            mixColumns(block, tables_->unmix);
        }
        shiftRows(block, true);
        replaceBytes(block, tables_->restore);
    }
    addRoundKey(block, 0);
}

security::Bytes
clsEncryption::EncryptData(std::span<const std::uint8_t> data, std::span<const std::uint8_t> key) {
    gentables();
    gkey(4, 4, key);
    const std::size_t used = data.size() + kLengthField;
    security::Bytes bytes((used + kDataBlock - 1) / kDataBlock * kDataBlock);
    writeLength(bytes, data.size());
    std::copy(data.begin(), data.end(), bytes.begin() + kLengthField);
    for (std::size_t at = 0; at < bytes.size(); at += kDataBlock) {
        Encrypt(Block(bytes).subspan(at, kDataBlock));
    }
    return bytes;
}

security::Bytes
clsEncryption::DecryptData(std::span<const std::uint8_t> data, std::span<const std::uint8_t> key) {
    if (data.empty() || data.size() % kDataBlock != 0) {
        return {};
    }
    gentables();
    gkey(4, 4, key);
    security::Bytes bytes(data.begin(), data.end());
    const security::WipedAtEnd wipedBytes(bytes);
    for (std::size_t at = 0; at < bytes.size(); at += kDataBlock) {
        Decrypt(Block(bytes).subspan(at, kDataBlock));
    }
    const std::int32_t length = readLength(bytes);
    const bool fits =
        length >= 0 && static_cast<std::size_t>(length) <= bytes.size() - kLengthField;
    security::Bytes plain;
    if (fits) {
        plain.assign(bytes.begin() + kLengthField, bytes.begin() + kLengthField + length);
    }
    return plain;
}
