#include "security/clsSHA256.h"

#include "security/secret.h"

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <string_view>

namespace {

using security::WipedAtEnd;
using State = std::array<std::uint32_t, 8>;

constexpr std::size_t kBlock = 64;
constexpr std::size_t kLengthField = 8;
constexpr std::size_t kRounds = 64;
constexpr std::size_t kHashDigits = 64;

/// The first 32 bits of the fractional parts of the square roots of the first eight primes.
constexpr State kStart = {
    0x6a09e667,
    0xbb67ae85,
    0x3c6ef372,
    0xa54ff53a,
    0x510e527f,
    0x9b05688c,
    0x1f83d9ab,
    0x5be0cd19,
};

// clang-format off
/// The same of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, kRounds> kConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2,
};
// clang-format on

/// The message, a byte 80h, zeros up to whole blocks, and the message's length in bits.
security::Bytes padded(const std::string& message) {
    security::Bytes bytes;
    const std::size_t used = message.size() + 1 + kLengthField;
    const std::size_t size = (used + kBlock - 1) / kBlock * kBlock;
    bytes.reserve(size);
    bytes.assign(message.begin(), message.end());
    bytes.push_back(0x80);
    bytes.resize(size);
    std::uint64_t bits = std::uint64_t{message.size()} * 8;
    for (std::size_t at = 1; at <= kLengthField; ++at) {
        bytes[size - at] = static_cast<std::uint8_t>(bits);
        bits >>= 8;
    }
    return bytes;
}

std::uint32_t wordAt(std::span<const std::uint8_t> bytes, std::size_t at) {
    return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
           std::uint32_t{bytes[at + 2]} << 8 | std::uint32_t{bytes[at + 3]};
}

std::array<std::uint32_t, kRounds> schedule(std::span<const std::uint8_t> block) {
    std::array<std::uint32_t, kRounds> words = {};
    for (std::size_t at = 0; at < 16; ++at) {
        words.at(at) = wordAt(block, at * 4);
    }
    for (std::size_t at = 16; at < kRounds; ++at) {
        const std::uint32_t early = words.at(at - 15);
        const std::uint32_t late = words.at(at - 2);
        const std::uint32_t small0 = std::rotr(early, 7) ^ std::rotr(early, 18) ^ (early >> 3);
        const std::uint32_t small1 = std::rotr(late, 17) ^ std::rotr(late, 19) ^ (late >> 10);
        words.at(at) = words.at(at - 16) + small0 + words.at(at - 7) + small1;
    }
    return words;
}

void addBlock(State& state, std::span<const std::uint8_t> block) {
    auto words = schedule(block);
    const WipedAtEnd wipedWords(words);
    State next = state;
    const WipedAtEnd wipedNext(next);
    auto& [a, b, c, d, e, f, g, h] = next;
    for (std::size_t round = 0; round < kRounds; ++round) {
        const std::uint32_t big1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
        const std::uint32_t choice = (e & f) ^ (~e & g);
        const std::uint32_t first = h + big1 + choice + kConstants.at(round) + words.at(round);
        const std::uint32_t big0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
        const std::uint32_t majority = (a & b) ^ (a & c) ^ (b & c);
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + big0 + majority;
    }
    for (std::size_t at = 0; at < state.size(); ++at) {
        state.at(at) += next.at(at);
    }
}

/// Appends eight hexadecimal digits in small letters.
void appendDigits(std::string& text, std::uint32_t word) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += kDigits[word >> shift & 0xF];
    }
}

}  // namespace

std::string clsSHA256::SHA256(const std::string& message) {
    security::Bytes bytes = padded(message);
    const WipedAtEnd wipedBytes(bytes);
    State state = kStart;
    const WipedAtEnd wipedState(state);
    for (std::size_t at = 0; at < bytes.size(); at += kBlock) {
        addBlock(state, std::span(bytes).subspan(at, kBlock));
    }
    std::string text;
    text.reserve(kHashDigits);  // a growing text would leave its beginnings behind
    for (const std::uint32_t word : state) {
        appendDigits(text, word);
    }
    return text;
}
