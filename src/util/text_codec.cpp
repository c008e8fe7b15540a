#include "util/text_codec.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace util {

namespace {

constexpr unsigned kFirstOdd = 0x80;
/// Characters of the bytes 80 to 9F; outside them byte and character have the same number.
constexpr std::array<char32_t, 32> kOddCharacters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char32_t characterOf(unsigned char byte) {
    const std::size_t index = std::size_t{byte} - kFirstOdd;  // wraps for the plain bytes
    return index < kOddCharacters.size() ? kOddCharacters[index] : char32_t{byte};
}

char byteOf(char32_t character) {
    const auto* const odd = std::find(kOddCharacters.begin(), kOddCharacters.end(), character);
    if (odd != kOddCharacters.end()) {
        return static_cast<char>(kFirstOdd + static_cast<unsigned>(odd - kOddCharacters.begin()));
    }
    const bool isPlain = character < kFirstOdd || (character >= 0xA0 && character <= 0xFF);
    return isPlain ? static_cast<char>(character) : '?';
}

/// How a character of `length` bytes begins, and the smallest character that needs that many.
struct Form {
    unsigned char mask;
    unsigned char lead;
    std::size_t length;
    char32_t smallest;
};

constexpr Form kForms[] = {
    {0x80, 0x00, 1, 0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

struct Decoded {
    char32_t character = 0;
    std::size_t length = 0;  ///< 0: not well-formed
};

Decoded decodeAs(const Form& form, std::string_view text) {
    if (text.size() < form.length) {
        return {};
    }
    const auto leadBits = static_cast<unsigned char>(~form.mask);
    char32_t character = static_cast<unsigned char>(text[0]) & leadBits;
    for (std::size_t i = 1; i < form.length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80U) {
            return {};
        }
        character = (character << 6U) | (byte & 0x3FU);
    }
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    const bool isValid = character >= form.smallest && character <= 0x10FFFF && !isSurrogate;
    return isValid ? Decoded{character, form.length} : Decoded{};
}

Decoded decodeFirst(std::string_view text) {
    for (const Form& form : kForms) {
        if ((static_cast<unsigned char>(text[0]) & form.mask) == form.lead) {
            return decodeAs(form, text);
        }
    }
    return {};
}

}  // namespace

std::string toUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    const auto put = [&result](char32_t bits) { result += static_cast<char>(bits); };
    for (const char byte : text) {
        const char32_t character = characterOf(static_cast<unsigned char>(byte));
        if (character < 0x80) {
            put(character);
        } else if (character < 0x800) {
            put(0xC0U | (character >> 6U));
            put(0x80U | (character & 0x3FU));
        } else {
            put(0xE0U | (character >> 12U));
            put(0x80U | ((character >> 6U) & 0x3FU));
            put(0x80U | (character & 0x3FU));
        }
    }
    return result;
}

std::string fromUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Decoded decoded = decodeFirst(text);
        result += decoded.length == 0 ? '?' : byteOf(decoded.character);
        text.remove_prefix(std::max<std::size_t>(decoded.length, 1));
    }
    return result;
}

}  // namespace util
