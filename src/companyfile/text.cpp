#include "companyfile/text.h"

#include "util/text_codec.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace companyfile {

namespace {

/// Letters of the western code page outside Latin-1, capital and small.
constexpr std::array<std::pair<char32_t, char32_t>, 4> kCapitals = {
    {{0x0152, 0x0153}, {0x0160, 0x0161}, {0x017D, 0x017E}, {0x0178, 0x00FF}}};
char32_t small(char32_t character) {
    const bool latinCapital = character >= 0xC0 && character <= 0xDE && character != 0xD7;
    if ((character >= U'A' && character <= U'Z') || latinCapital) {
        return character + 0x20;
    }
    for (const auto& [capital, lower] : kCapitals) {
        if (character == capital) {
            return lower;
        }
    }
    return character;
}

}  // namespace

void appendUtf8(std::string& out, char32_t codePoint) {
    const auto byte = [&](char32_t value) { out += static_cast<char>(value); };
    if (codePoint < 0x80) {
        byte(codePoint);
    } else if (codePoint < 0x800) {
        byte(0xC0 | (codePoint >> 6U));
        byte(0x80 | (codePoint & 0x3FU));
    } else if (codePoint < 0x10000) {
        byte(0xE0 | (codePoint >> 12U));
        byte(0x80 | ((codePoint >> 6U) & 0x3FU));
        byte(0x80 | (codePoint & 0x3FU));
    } else {
        byte(0xF0 | (codePoint >> 18U));
        byte(0x80 | ((codePoint >> 12U) & 0x3FU));
        byte(0x80 | ((codePoint >> 6U) & 0x3FU));
        byte(0x80 | (codePoint & 0x3FU));
    }
}

char32_t nextCharacter(std::string_view& utf8) {
    const auto first = static_cast<unsigned char>(utf8.front());
    std::size_t length = 1;
    char32_t value = first;
    if (first >= 0xF0) {
        length = 4;
        value = first & 0x07U;
    } else if (first >= 0xE0) {
        length = 3;
        value = first & 0x0FU;
    } else if (first >= 0xC0) {
        length = 2;
        value = first & 0x1FU;
    }
    if (length > utf8.size()) {
        length = 1;
        value = first;
    }
    for (std::size_t i = 1; i < length; ++i) {
        value = (value << 6U) | (static_cast<unsigned char>(utf8[i]) & 0x3FU);
    }
    utf8.remove_prefix(length);
    return value;
}

std::string folded(std::string_view utf8) {
    std::string result;
    result.reserve(utf8.size());
    while (!utf8.empty()) {
        appendUtf8(result, small(nextCharacter(utf8)));
    }
    return result;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::size_t characterCount(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

std::string westernOnly(std::string_view utf8) {
    return util::toUtf8(util::fromUtf8(utf8));
}

bool matches(std::string_view criterion, std::string_view text, std::string_view part) {
    if (criterion == "Equals") {
        return text == part;
    }
    if (criterion == "StartsWith") {
        return text.starts_with(part);
    }
    return criterion == "EndsWith" ? text.ends_with(part)
                                   : text.find(part) != std::string_view::npos;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const auto end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(end + 1);
    }
}

bool removeSuffix(std::string_view& text, std::string_view suffix) {
    if (!text.ends_with(suffix)) {
        return false;
    }
    text.remove_suffix(suffix.size());
    return true;
}

std::string idText(std::int64_t number, std::int64_t now) {
    std::string text(40, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(
        text.data(),
        text.size(),
        "%llX-%lld",
        static_cast<unsigned long long>(number),
        static_cast<long long>(now)
    )));
    return text;
}

}  // namespace companyfile
