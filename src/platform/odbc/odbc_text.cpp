#include "platform/odbc/odbc_text.h"

#include "util/text_codec.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace platform {

namespace {

constexpr char32_t kAstral = 0x10000;
constexpr char32_t kReplacement = U'?';

/// One UTF-8 sequence by its first byte: bytes that follow, and the bits that the first one gives.
struct Lead {
    std::uint8_t mask;
    std::uint8_t mark;
    std::size_t following;
};

constexpr Lead kLeads[] = {{0x80, 0x00, 0}, {0xE0, 0xC0, 1}, {0xF0, 0xE0, 2}, {0xF8, 0xF0, 3}};

char32_t takeCharacter(std::string_view utf8, std::size_t& at) {
    const auto first = static_cast<std::uint8_t>(utf8[at++]);
    for (const Lead& lead : kLeads) {
        if ((first & lead.mask) != lead.mark || at + lead.following > utf8.size()) {
            continue;
        }
        auto character = static_cast<char32_t>(first & static_cast<std::uint8_t>(~lead.mask));
        for (std::size_t count = 0; count < lead.following; ++count) {
            character = (character << 6U) | (static_cast<std::uint8_t>(utf8[at++]) & 0x3FU);
        }
        return character;
    }
    return kReplacement;
}

void addUtf8(std::string& utf8, char32_t character) {
    const auto add = [&](char32_t bits) { utf8 += static_cast<char>(bits); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0U | (character >> 6U));
        add(0x80U | (character & 0x3FU));
    } else {
        add(0xE0U | (character >> 12U));
        add(0x80U | ((character >> 6U) & 0x3FU));
        add(0x80U | (character & 0x3FU));
    }
}

}  // namespace

std::u16string utf16FromUtf8(std::string_view utf8) {
    std::u16string utf16;
    utf16.reserve(utf8.size());
    std::size_t at = 0;
    while (at < utf8.size()) {
        const char32_t character = takeCharacter(utf8, at);
        utf16 += static_cast<char16_t>(character < kAstral ? character : kReplacement);
    }
    return utf16;
}

std::string textFromUtf16(std::u16string_view utf16) {
    const bool isAscii =
        std::all_of(utf16.begin(), utf16.end(), [](char16_t c) { return c < 0x80; });
    std::string text;
    text.reserve(utf16.size());
    for (const char16_t c : utf16) {
        addUtf8(text, c);
    }
    return isAscii ? text : util::fromUtf8(text);
}

}  // namespace platform
