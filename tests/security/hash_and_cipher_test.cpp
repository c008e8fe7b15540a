#include "security/clsEncryption.h"
#include "security/clsSHA256.h"
#include "util/basic_error.h"

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

struct HashCase {
    const char* given;
    std::string message;
    const char* hash;
};

const HashCase kHashes[] = {
    {"nothing", "", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
    {"one block", "abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    {"a length that does not fit behind the message",
     "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
     "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
    {"two blocks",
     "abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqrlmnop"
     "qrsmnopqrstnopqrstu",
     "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1"},
    {"a million letters",
     std::string(1000000, 'a'),
     "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    {"a character above 127 is one byte",
     "\xbd",
     "68325720aabd7c82f30f554b313d0570c95accbb7dc4b5aae11204c08ffe732b"},
    {"56 bytes of code 0",
     std::string(56, '\0'),
     "d4817aa5497628e7c77e6b606107042bbba3130888c5f47a375e6179be789fbb"},
    {"64 bytes of code 0",
     std::string(64, '\0'),
     "f5a5fd42d16a20302798ef6ed309979b43003d2320d9f0e8ea9831a92759fb4b"},
};

struct CipherCase {
    const char* key;  ///< its length tells the key size
    const char* plain;
    const char* enciphered;
};

constexpr CipherCase kStandardBlocks[] = {
    {"000102030405060708090a0b0c0d0e0f",
     "00112233445566778899aabbccddeeff",
     "69c4e0d86a7b0430d8cdb78070b4c55a"},
    {"000102030405060708090a0b0c0d0e0f1011121314151617",
     "00112233445566778899aabbccddeeff",
     "dda97ca4864cdfe06eaf70a0ec0d7191"},
    {"000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f",
     "00112233445566778899aabbccddeeff",
     "8ea2b7ca516745bfeafc49904b496089"},
    {"2b7e151628aed2a6abf7158809cf4f3c",
     "6bc1bee22e409f96e93d7e117393172a",
     "3ad77bb40d7a3660a89ecaf32466ef97"},
    {"8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b",
     "6bc1bee22e409f96e93d7e117393172a",
     "bd334f1d6e45f25ff712a214571fa5cc"},
    {"603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4",
     "6bc1bee22e409f96e93d7e117393172a",
     "f3eed1bdb5d2a03c064b5a7e3db181f8"},
};

/// Digits of two constants: all keys and plain blocks below are beginnings of them.
constexpr char kKeyDigits[] = "2b7e151628aed2a6abf7158809cf4f3c762e7160f38b4da56a784d9045190cfe";
constexpr char kPlainDigits[] = "3243f6a8885a308d313198a2e03707344a4093822299f31d0082efa98ec4e6c8";

struct SizeCase {
    std::size_t blockWords;
    std::size_t keyWords;
    const char* enciphered;
};

constexpr SizeCase kAllSizes[] = {
    {4, 4, "3925841d02dc09fbdc118597196a0b32"},
    {4, 5, "231d844639b31b412211cfe93712b880"},
    {4, 6, "f9fb29aefc384a250340d833b87ebc00"},
    {4, 7, "8faa8fe4dee9eb17caa4797502fc9d3f"},
    {4, 8, "1a6e6c2c662e7da6501ffb62bc9e93f3"},
    {5, 4, "16e73aec921314c29df905432bc8968ab64b1f51"},
    {5, 5, "0553eb691670dd8a5a5b5addf1aa7450f7a0e587"},
    {5, 6, "73cd6f3423036790463aa9e19cfcde894ea16623"},
    {5, 7, "601b5dcd1cf4ece954c740445340bf0afdc048df"},
    {5, 8, "579e930b36c1529aa3e86628bacfe146942882cf"},
    {6, 4, "b24d275489e82bb8f7375e0d5fcdb1f481757c538b65148a"},
    {6, 5, "738dae25620d3d3beff4a037a04290d73eb33521a63ea568"},
    {6, 6, "725ae43b5f3161de806a7c93e0bca93c967ec1ae1b71e1cf"},
    {6, 7, "bbfc14180afbf6a36382a061843f0b63e769acdc98769130"},
    {6, 8, "0ebacf199e3315c2e34b24fcc7c46ef4388aa475d66c194c"},
    {7, 4, "b0a8f78f6b3c66213f792ffd2a61631f79331407a5e5c8d3793aceb1"},
    {7, 5, "08b99944edfce33a2acb131183ab0168446b2d15e958480010f545e3"},
    {7, 6, "be4c597d8f7efe22a2f7e5b1938e2564d452a5bfe72399c7af1101e2"},
    {7, 7, "ef529598ecbce297811b49bbed2c33bbe1241d6e1a833dbe119569e8"},
    {7, 8, "02fafc200176ed05deb8edb82a3555b0b10d47a388dfd59cab2f6c11"},
    {8, 4, "7d15479076b69a46ffb3b3beae97ad8313f622f67fedb487de9f06b9ed9c8f19"},
    {8, 5, "514f93fb296b5ad16aa7df8b577abcbd484decacccc7fb1f18dc567309ceeffd"},
    {8, 6, "5d7101727bb25781bf6715b0e6955282b9610e23a43c2eb062699f0ebf5887b2"},
    {8, 7, "d56c5a63627432579e1dd308b2c8f157b40a4bfb56fea1377b25d3ed3d6dbf80"},
    {8, 8, "a49406115dfb30a40418aafa4869b7c6a886ff31602a7dd19c889dc64f7e4e7a"},
};

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
    for (const auto& [given, message, hash] : kHashes) {
        SCOPED_TRACE(given);
        EXPECT_EQ(clsSHA256().SHA256(message), hash);
    }
}

TEST(Cipher, givesThePublishedBlocksOf128Bits) {
    for (const auto& [key, plain, enciphered] : kStandardBlocks) {
        SCOPED_TRACE(key);
        expectBlock(4, key, plain, enciphered);
    }
}

TEST(Cipher, givesTheKnownBlocksOfEverySize) {
    for (const auto& [blockWords, keyWords, enciphered] : kAllSizes) {
        SCOPED_TRACE(std::to_string(blockWords) + " and " + std::to_string(keyWords) + " words");
        expectBlock(
            blockWords,
            std::string(kKeyDigits, keyWords * 8),
            std::string(kPlainDigits, blockWords * 8),
            enciphered
        );
    }
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
    struct Case {
        const char* given;
        const char* block;  ///< before it is enciphered
        std::size_t length;
    };
    constexpr Case kCases[] = {
        {"as long as the data", "0c000000414141414141414141414141", 12},
        {"one more than the data", "0d000000414141414141414141414141", 0},
        {"a length that counts the length field", "10000000414141414141414141414141", 0},
        {"the greatest", "ffffff7f414141414141414141414141", 0},
        {"minus one", "ffffffff414141414141414141414141", 0},
        {"the least", "00000080414141414141414141414141", 0},
        {"nothing", "00000000414141414141414141414141", 0},
    };
    for (const auto& [given, block, length] : kCases) {
        SCOPED_TRACE(given);
        clsEncryption cipher;
        cipher.gkey(4, 4, key);
        Bytes stored = bytesOfHex(block);
        cipher.Encrypt(stored);
        EXPECT_EQ(cipher.DecryptData(stored, key).size(), length);
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
    struct Case {
        const char* left;
        const char* right;
        bool same;
    };
    for (const auto& [left, right, same] :
         {Case{"", "", true},
          Case{"abc", "abc", true},
          Case{"abc", "abd", false},
          Case{"abc", "Abc", false},
          Case{"abc", "ab", false},
          Case{"", "a", false}}) {
        EXPECT_EQ(security::sameSecret(left, right), same) << left << " and " << right;
    }
    EXPECT_FALSE(security::sameSecret(std::string("a\0b", 3), std::string("a\0c", 3)));
}
