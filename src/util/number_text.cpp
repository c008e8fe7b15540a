#include "util/conversions.h"
#include "util/decimal_digits.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace util {

namespace {

/// What may stand once around the digits of a number.
struct Surroundings {
    bool sign = false;
    bool negative = false;
    bool currency = false;
    bool open = false;    ///< "("
    bool closed = false;  ///< ")"

    bool takeSign(char character) {
        if (sign || open || (character != '-' && character != '+')) {
            return false;
        }
        sign = true;
        negative = character == '-';
        return true;
    }
    bool takeCurrency(char character) {
        if (currency || character != '$') {
            return false;
        }
        currency = true;
        return true;
    }
    bool takeOpen(char character) {
        if (open || sign || character != '(') {
            return false;
        }
        open = true;
        return true;
    }
    bool takeClosed(char character) {
        if (!open || closed || character != ')') {
            return false;
        }
        closed = true;
        negative = true;
        return true;
    }
};

constexpr bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

void skipPrefix(std::string_view& text, Surroundings& found) {
    while (!text.empty() && (isSpace(text.front()) || found.takeSign(text.front()) ||
                             found.takeCurrency(text.front()) || found.takeOpen(text.front()))) {
        text.remove_prefix(1);
    }
}

void skipSuffix(std::string_view& text, Surroundings& found) {
    while (!text.empty() && (isSpace(text.front()) || found.takeSign(text.front()) ||
                             found.takeCurrency(text.front()) || found.takeClosed(text.front()))) {
        text.remove_prefix(1);
    }
}

/// Digits of a number and how many of them stand behind the point.
struct Mantissa {
    std::string digits;
    int decimals = 0;
};

/// Takes digits with one point off the start of `text`; a comma may stand behind a digit in front
/// of the point when `commas`.
Mantissa takeMantissa(std::string_view& text, bool commas) {
    Mantissa found;
    bool point = false;
    for (; !text.empty(); text.remove_prefix(1)) {
        const char character = text.front();
        if (isDigit(character)) {
            found.digits += character;
            found.decimals += point ? 1 : 0;
        } else if (character == '.' && !point) {
            point = true;
        } else if (!commas || character != ',' || point || found.digits.empty()) {
            break;
        }
    }
    return found;
}

template <class Whole>
Whole wholeNumber(double value) {
    const double rounded = std::nearbyint(value);  // half to even
    if (!(rounded >= std::numeric_limits<Whole>::min() &&
          rounded <= std::numeric_limits<Whole>::max())) {
        throw BasicError::of(6);
    }
    return static_cast<Whole>(rounded);
}

template <class Number>
std::string generalText(Number value, int digits) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(
        buffer.data(),
        buffer.data() + buffer.size(),
        value == 0 ? Number{0} : value,
        std::chars_format::general,
        digits
    );
    return upper({buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data())});
}

DecimalDigits requiredNumber(std::string_view text) {
    const auto number = numberFromText(text);
    if (!number) {
        throw BasicError::of(13);
    }
    return *number;
}

}  // namespace

std::optional<DecimalDigits> numberFromText(std::string_view text) {
    Surroundings found;
    skipPrefix(text, found);
    DecimalDigits number;
    if (const auto based = takeBasedNumber(text)) {
        number = digitsOf(*based);
    } else {
        const Mantissa mantissa = takeMantissa(text, true);
        if (mantissa.digits.empty()) {
            return std::nullopt;
        }
        const int exponent = takeExponent(text);
        number = decimalDigits(mantissa.digits, exponent - mantissa.decimals, false);
    }
    skipSuffix(text, found);
    if (!text.empty() || found.open != found.closed) {
        return std::nullopt;
    }
    number.negative = found.negative;
    return number;
}

double val(std::string_view text) {
    std::string dense;
    for (const char character : text) {
        if (character != ' ' && character != '\t' && character != '\n') {
            dense += character;
        }
    }
    std::string_view rest = dense;
    if (const auto based = takeBasedNumber(rest)) {
        return *based;
    }
    const bool negative = !rest.empty() && rest.front() == '-';
    if (negative || (!rest.empty() && rest.front() == '+')) {
        rest.remove_prefix(1);
    }
    const Mantissa mantissa = takeMantissa(rest, false);
    if (mantissa.digits.empty()) {
        return 0;
    }
    const int exponent = takeExponent(rest);
    return decimalDigits(mantissa.digits, exponent - mantissa.decimals, negative).toDouble();
}

bool isNumeric(std::string_view text) {
    try {
        const auto number = numberFromText(text);
        if (number) {
            static_cast<void>(number->toDouble());
        }
        return number.has_value();
    } catch (const BasicError&) {
        return false;  // beyond the range of a double
    }
}

double toDouble(std::string_view text) {
    return requiredNumber(text).toDouble();
}

std::int16_t toInteger(double value) {
    return wholeNumber<std::int16_t>(value);
}

std::int16_t toInteger(std::string_view text) {
    return toInteger(toDouble(text));
}

std::int32_t toLong(double value) {
    return wholeNumber<std::int32_t>(value);
}

std::int32_t toLong(std::string_view text) {
    return toLong(toDouble(text));
}

Money toCurrency(std::string_view text) {
    const DecimalDigits number = requiredNumber(text);
    constexpr int kMostWholeDigits = 15;
    if (static_cast<int>(number.digits.size()) + number.exponent > kMostWholeDigits) {
        throw BasicError::of(6);
    }
    return Money::fromDecimal(number.text(1, 4));
}

Money toCurrency(double value) {
    return Money::fromDouble(value);
}

bool toBoolean(std::string_view text) {
    for (const bool value : {true, false}) {
        if (sameName(text, booleanWord(value))) {
            return value;
        }
    }
    return toDouble(text) != 0;
}

std::string booleanWord(bool value) {
    return value ? "True" : "False";
}

std::string textOf(double value) {
    return generalText(value, 15);
}

std::string textOf(float value) {
    return generalText(value, 7);
}

std::string textOf(Money value) {
    std::string text = value.text(4);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string textOf(std::int64_t value) {
    return std::to_string(value);
}

}  // namespace util
