#include "platform/sql_dialect/server_order.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace platform {

namespace {

struct Accented {
    char base;
    unsigned char small;
    unsigned char capital;  ///< the same as `small` for a letter that has no capital form
};

constexpr Accented kAccented[] = {
    {'A', 0xE0, 0xC0}, {'A', 0xE1, 0xC1}, {'A', 0xE2, 0xC2}, {'A', 0xE3, 0xC3}, {'A', 0xE4, 0xC4},
    {'A', 0xE5, 0xC5}, {'A', 0xE6, 0xC6}, {'C', 0xE7, 0xC7}, {'D', 0xF0, 0xD0}, {'E', 0xE8, 0xC8},
    {'E', 0xE9, 0xC9}, {'E', 0xEA, 0xCA}, {'E', 0xEB, 0xCB}, {'F', 0x83, 0x83}, {'I', 0xEC, 0xCC},
    {'I', 0xED, 0xCD}, {'I', 0xEE, 0xCE}, {'I', 0xEF, 0xCF}, {'N', 0xF1, 0xD1}, {'O', 0xF2, 0xD2},
    {'O', 0xF3, 0xD3}, {'O', 0xF4, 0xD4}, {'O', 0xF5, 0xD5}, {'O', 0xF6, 0xD6}, {'O', 0xF8, 0xD8},
    {'O', 0x9C, 0x8C}, {'S', 0x9A, 0x8A}, {'S', 0xDF, 0xDF}, {'T', 0xFE, 0xDE}, {'U', 0xF9, 0xD9},
    {'U', 0xFA, 0xDA}, {'U', 0xFB, 0xDB}, {'U', 0xFC, 0xDC}, {'Y', 0xFD, 0xDD}, {'Y', 0xFF, 0x9F},
    {'Z', 0x9E, 0x8E},
};

using Weights = std::array<std::uint16_t, 256>;

constexpr bool isLetter(int code) {
    return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
}

constexpr bool isLowPunctuation(int code) {
    return code >= ' ' && code <= '/';
}

constexpr Weights makeWeights() {
    Weights weights{};
    std::uint16_t next = 0;
    for (int code = ' '; code <= '/'; ++code) {
        weights[static_cast<std::size_t>(code)] = ++next;
    }
    for (int code = 0; code < 256; ++code) {
        const bool isSign =
            !isLetter(code) && !isLowPunctuation(code) && !(code >= '0' && code <= '9');
        if (isSign) {
            weights[static_cast<std::size_t>(code)] = ++next;
        }
    }
    for (int code = '0'; code <= '9'; ++code) {
        weights[static_cast<std::size_t>(code)] = ++next;
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        ++next;
        weights[static_cast<std::size_t>(letter)] = next;
        weights[static_cast<unsigned char>(letter + ('a' - 'A'))] = next;
        for (const auto& row : kAccented) {
            if (row.base == letter) {
                ++next;
                weights[row.small] = next;
                weights[row.capital] = next;
            }
        }
    }
    return weights;
}

constexpr Weights kWeights = makeWeights();

std::uint16_t weightAt(std::string_view text, std::size_t at) {
    return kWeights[static_cast<unsigned char>(at < text.size() ? text[at] : ' ')];
}

bool isSimple(char c) {
    return (c >= ' ' && c <= '9') || isLetter(static_cast<unsigned char>(c));
}

char capital(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

int compareServerOrder(std::string_view left, std::string_view right) {
    const std::size_t length = std::max(left.size(), right.size());
    for (std::size_t at = 0; at < length; ++at) {
        const int difference = weightAt(left, at) - weightAt(right, at);
        if (difference != 0) {
            return difference;
        }
    }
    return 0;
}

std::string serverOrderKey(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    const std::string_view trimmed = text.substr(0, last == std::string_view::npos ? 0 : last + 1);
    std::string key;
    for (const char c : trimmed) {
        if (isSimple(c)) {
            key += capital(c);
            continue;
        }
        const std::size_t accented = accentedLetters().letters.find(c);
        key += accented == std::string::npos ? '/' : accentedLetters().bases[accented];
        return key + '{';
    }
    return key;
}

const AccentedLetters& accentedLetters() {
    static const AccentedLetters kLetters = [] {
        AccentedLetters all;
        for (const auto& row : kAccented) {
            for (const unsigned char letter : {row.small, row.capital}) {
                all.letters += static_cast<char>(letter);
                all.bases += row.base;
            }
        }
        return all;
    }();
    return kLetters;
}

const std::string& simpleCharacters() {
    static const std::string kSimple = [] {
        std::string all;
        for (int code = ' '; code < 0x7F; ++code) {
            if (isSimple(static_cast<char>(code))) {
                all += static_cast<char>(code);
            }
        }
        return all;
    }();
    return kSimple;
}

}  // namespace platform
