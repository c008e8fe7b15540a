#pragma once

#include "security/secret.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// The block cipher Rijndael (AES when the block has 128 bits). Blocks and keys have 4 to 8 words
/// of 32 bits. Stored passwords use 4 and 4, each block by itself: equal blocks look equal.
class clsEncryption {
public:
    // NOLINTBEGIN(readability-identifier-naming): fixed names

    clsEncryption() { Class_Initialize(); }
    ~clsEncryption();
    clsEncryption(const clsEncryption&) = delete;
    clsEncryption& operator=(const clsEncryption&) = delete;
    clsEncryption(clsEncryption&&) = delete;
    clsEncryption& operator=(clsEncryption&&) = delete;

    /// Builds the tables once, at the start of the object.
    void Class_Initialize() { gentables(); }
    /// Substitution, its inverse and products of the field; all objects share one set.
    void gentables();
    /// Prepares the round keys.
    /// @param blockWords,keyWords  length of a block and of the key, 4 to 8 words. @throws
    /// util::BasicError 9 for others.
    /// @param key  bytes beyond `keyWords` are not used; a shorter key is filled with zeros.
    void gkey(std::size_t blockWords, std::size_t keyWords, std::span<const std::uint8_t> key);
    /// Enciphers / deciphers one block of `blockWords` in place, with the key that was prepared.
    /// @throws util::BasicError 9 when the block has another length.
    void Encrypt(std::span<std::uint8_t> block) const;
    void Decrypt(std::span<std::uint8_t> block) const;

    /// The data's length as 32 bits (lowest byte first), the data and zeros up to whole blocks of
    /// 16 bytes, enciphered with the first 16 bytes of the key.
    security::Bytes
    EncryptData(std::span<const std::uint8_t> data, std::span<const std::uint8_t> key);
    /// Undoes EncryptData. Empty when the data are no whole blocks, and when the length inside is
    /// negative or longer than what follows it.
    security::Bytes
    DecryptData(std::span<const std::uint8_t> data, std::span<const std::uint8_t> key);

    // NOLINTEND(readability-identifier-naming)

private:
    struct Tables;
    using Block = std::span<std::uint8_t>;
    using Row = std::array<std::uint8_t, 4>;

    void requireBlock(Block block) const;
    void substitute(Row& word) const;
    void addRoundKey(Block block, std::size_t round) const;
    void shiftRows(Block block, bool back) const;

    const Tables* tables_ = nullptr;
    std::array<std::uint8_t, std::size_t{4}* 8 * 15> roundKeys_ = {};
    std::size_t columns_ = 4;
    std::size_t rounds_ = 10;
};
