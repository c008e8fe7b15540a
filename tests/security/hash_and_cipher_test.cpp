#include "security/clsEncryption.h"
#include "security/clsSHA256.h"
#include "support/table_file.h"
#include "util/basic_error.h"

#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using security::Bytes;

namespace {

Bytes bytesOfHex(const std::string& text) {
    Bytes bytes;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(at, 2), nullptr, 16)));
    }
    return bytes;
}

std::string hexOf(const Bytes& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        constexpr char kDigits[] = "0123456789abcdef";
        text += kDigits[byte / 16U];
        text += kDigits[byte % 16U];
    }
    return text;
}

std::string repeated(std::size_t times, const std::string& text) {
    std::string result;
    for (std::size_t turn = 0; turn < times; ++turn) {
        result += text;
    }
    return result;
}

/// A table of vectors, behind its heading.
std::ifstream vectors(const std::string& name) {
    std::ifstream table(BREVANE_TEST_DATA "/security/" + name);
    table.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    return table;
}

/// Enciphers and deciphers one block each way.
void expectBlock(
    std::size_t blockWords,
    const std::string& key,
    const std::string& plain,
    const std::string& enciphered
) {
    clsEncryption cipher;
    cipher.gkey(blockWords, key.size() / 8, bytesOfHex(key));
    Bytes block = bytesOfHex(plain);
    cipher.Encrypt(block);
    EXPECT_EQ(hexOf(block), enciphered);
    cipher.Decrypt(block);
    EXPECT_EQ(hexOf(block), plain);
}

}  // namespace

TEST(Hash, givesThePublishedValues) {
    std::ifstream table = vectors("hashes.txt");
    std::size_t times = 0;
    std::string message;
    std::string hash;
    std::string given;
    int count = 0;
    for (; table >> times >> message >> hash && std::getline(table, given); ++count) {
        SCOPED_TRACE(given);
        const Bytes bytes = bytesOfHex(message);
        EXPECT_EQ(clsSHA256().SHA256(repeated(times, {bytes.begin(), bytes.end()})), hash);
    }
    EXPECT_EQ(count, 13);
}

TEST(Cipher, givesThePublishedBlocksAndThoseOfEverySize) {
    std::ifstream table = vectors("blocks.txt");
    std::size_t blockWords = 0;
    std::string key;
    std::string plain;
    std::string enciphered;
    int count = 0;
    for (; table >> blockWords >> key >> plain >> enciphered; ++count) {
        SCOPED_TRACE(std::to_string(blockWords) + " words, key " + key);
        expectBlock(blockWords, key, plain, enciphered);
    }
    EXPECT_EQ(count, 46);
}

TEST(Cipher, refusesOtherSizes) {
    clsEncryption cipher;
    for (const auto& [blockWords, keyWords] :
         {std::pair<std::size_t, std::size_t>{3, 4}, {9, 4}, {4, 3}, {4, 9}, {0, 0}}) {
        SCOPED_TRACE(std::to_string(blockWords) + " and " + std::to_string(keyWords) + " words");
        EXPECT_THROW(cipher.gkey(blockWords, keyWords, Bytes(64)), util::BasicError);
    }
    cipher.gkey(6, 4, Bytes(16));
    for (const std::size_t size : {0, 16, 23, 25, 32}) {
        SCOPED_TRACE("a block of " + std::to_string(size) + " bytes");
        Bytes block(size);
        EXPECT_THROW(cipher.Encrypt(block), util::BasicError);
        EXPECT_THROW(cipher.Decrypt(block), util::BasicError);
    }
}

TEST(CipherData, holdsLengthDataAndZerosInWholeBlocks) {
    const Bytes key = bytesOfHex("000102030405060708090a0b0c0d0e0f");
    struct Case {
        std::size_t length;
        std::size_t size;
    };
    for (const auto& [length, size] :
         {Case{0, 16},
          Case{1, 16},
          Case{12, 16},
          Case{13, 32},
          Case{28, 32},
          Case{29, 48},
          Case{1000, 1008}}) {
        SCOPED_TRACE(std::to_string(length) + " bytes");
        const Bytes data(length, 0xA5);
        clsEncryption cipher;
        const Bytes stored = cipher.EncryptData(data, key);
        EXPECT_EQ(stored.size(), size);
        EXPECT_EQ(cipher.DecryptData(stored, key), data);
        Bytes first(stored.begin(), stored.begin() + 16);
        cipher.Decrypt(first);
        EXPECT_EQ(first[0] + first[1] * 256U, length);
        EXPECT_EQ(first[2] + first[3], 0);
        EXPECT_EQ(first[15], length >= 12 ? 0xA5 : 0);
    }
}

TEST(CipherData, usesSixteenBytesOfTheKeyAndFillsAShortOne) {
    clsEncryption cipher;
    const Bytes data = bytesOfHex("616263");
    const auto stored = [&](const std::string& key) {
        return hexOf(cipher.EncryptData(data, security::bytesOf(key)));
    };
    EXPECT_EQ(stored("0123456789abcdef"), stored("0123456789abcdefghi"));
    EXPECT_NE(stored("0123456789abcdef"), stored("0123456789abcdeF"));
    EXPECT_EQ(stored("ab"), stored("ab" + std::string(14, '\0')));
    // Equal blocks look equal: no block depends on the one before it.
    const Bytes same(44, 7);
    const std::string text = hexOf(cipher.EncryptData(same, security::bytesOf("k")));
    EXPECT_EQ(text.substr(32, 32), text.substr(64, 32));
}

TEST(CipherData, refusesALyingLength) {
    const Bytes key(16, 1);
    // The block before it is enciphered, and how much it gives.
    for (const auto& [given, block, length] :
         testing_support::tableRows<3>("security/lying_lengths.json")) {
        SCOPED_TRACE(given);
        clsEncryption cipher;
        cipher.gkey(4, 4, key);
        Bytes stored = bytesOfHex(block);
        cipher.Encrypt(stored);
        EXPECT_EQ(std::to_string(cipher.DecryptData(stored, key).size()), length);
    }
    for (const std::size_t size : {0, 1, 15, 17, 31}) {
        SCOPED_TRACE(std::to_string(size) + " bytes are no whole blocks");
        EXPECT_TRUE(clsEncryption().DecryptData(Bytes(size), key).empty());
    }
}

TEST(Secret, isOverwrittenAfterUse) {
    std::string text = repeated(4, "secret word ");
    const char* const place = text.data();
    const std::size_t size = text.size();
    text.resize(3);  // the room behind the text still holds the rest
    security::wipe(text);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(std::string(place, size), std::string(size, '\0'));
    for (const char* const given :
         {"short", "a text that is too long for the string object itself"}) {
        std::string source = given;
        const security::Secret secret(std::move(source));
        EXPECT_EQ(secret.text(), given);
        EXPECT_TRUE(source.empty());  // NOLINT(bugprone-use-after-move): wiped on purpose
    }
}

TEST(Secret, comparesByteByByte) {
    EXPECT_TRUE(security::sameSecret("", ""));
    EXPECT_TRUE(security::sameSecret("abc", "abc"));
    for (const char* const other : {"abd", "Abc", "ab", "abcd", ""}) {
        EXPECT_FALSE(security::sameSecret("abc", other)) << other;
    }
    EXPECT_FALSE(security::sameSecret(std::string("a\0b", 3), std::string("a\0c", 3)));
}
