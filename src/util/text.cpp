#include "util/conversions.h"

#include <algorithm>

namespace util {

namespace {

constexpr unsigned char kCaseStep = 0x20;

struct CasePair {
    unsigned char capital;
    unsigned char small;
};

/// Letters of code page 1252 whose two forms do not lie one step apart.
constexpr CasePair kOddPairs[] = {{0x8A, 0x9A}, {0x8C, 0x9C}, {0x8E, 0x9E}, {0x9F, 0xFF}};

constexpr bool isCapital(unsigned char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7);
}

char upperByte(char character) {
    const auto byte = static_cast<unsigned char>(character);
    const auto candidate = static_cast<unsigned char>(byte - kCaseStep);
    if (byte >= kCaseStep && isCapital(candidate)) {
        return static_cast<char>(candidate);
    }
    for (const CasePair& pair : kOddPairs) {
        if (pair.small == byte) {
            return static_cast<char>(pair.capital);
        }
    }
    return character;
}

char lowerByte(char character) {
    const auto byte = static_cast<unsigned char>(character);
    if (isCapital(byte)) {
        return static_cast<char>(byte + kCaseStep);
    }
    for (const CasePair& pair : kOddPairs) {
        if (pair.capital == byte) {
            return static_cast<char>(pair.small);
        }
    }
    return character;
}

std::string mapped(std::string_view text, char (*mapByte)(char)) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), mapByte);
    return result;
}

}  // namespace

std::string ltrim(std::string_view text) {
    return std::string(text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

std::string rtrim(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string trim(std::string_view text) {
    return ltrim(rtrim(text));
}

std::string upper(std::string_view text) {
    return mapped(text, upperByte);
}

std::string lower(std::string_view text) {
    return mapped(text, lowerByte);
}

bool aboveBlank(std::string_view text) {
    return compareBinary(text, " ") > 0;
}

int compareBinary(std::string_view left, std::string_view right) {
    const int order = left.compare(right);
    return (order > 0 ? 1 : 0) - (order < 0 ? 1 : 0);
}

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && lower(left) == lower(right);
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator, begin)) {
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.emplace_back(text.substr(begin));
    return pieces;
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::size_t found = from.empty() ? std::string_view::npos : text.find(from);
    if (found == std::string_view::npos) {
        return std::string(text);
    }
    std::string result;
    std::size_t begin = 0;
    for (; found != std::string_view::npos; found = text.find(from, begin)) {
        result.append(text.substr(begin, found - begin)).append(to);
        begin = found + from.size();
    }
    return result.append(text.substr(begin));
}

}  // namespace util
