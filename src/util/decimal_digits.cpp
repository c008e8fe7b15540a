#include "util/decimal_digits.h"

#include "util/basic_error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace util {

namespace {

constexpr int kExponentLimit = 100000;  // beyond any number; keeps sums of exponents small

/// Adds one to the last digit of a text of digits.
void increment(std::string& digits) {
    const std::size_t last = digits.find_last_not_of('9');
    const std::size_t firstNine = last == std::string::npos ? 0 : last + 1;
    std::fill(digits.begin() + static_cast<std::ptrdiff_t>(firstNine), digits.end(), '0');
    if (firstNine == 0) {
        digits.insert(digits.begin(), '1');
    } else {
        ++digits[last];
    }
}

/// Number of digits in front of the point; not positive for a number below 1.
int wholeDigits(const DecimalDigits& number) {
    return static_cast<int>(number.digits.size()) + number.exponent;
}

template <class Number>
DecimalDigits digitsOfFloating(Number value, int significant) {
    if (!std::isfinite(value)) {
        throw BasicError::of(6);
    }
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(
        buffer.data(),
        buffer.data() + buffer.size(),
        std::fabs(value),
        std::chars_format::scientific,
        significant - 1
    );
    // "d.ddde+xx"
    std::string_view text(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
    std::string digits(1, text.front());
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
    }
    const std::size_t mantissa = text.find('e');
    digits.append(text.substr(0, mantissa));
    text.remove_prefix(mantissa);
    const int exponent = takeExponent(text);
    return decimalDigits(digits, exponent - significant + 1, value < 0);
}

}  // namespace

DecimalDigits DecimalDigits::rounded(int decimals) const {
    const int surplus = -decimals - exponent;
    if (surplus <= 0) {
        return *this;
    }
    const auto cut = static_cast<std::size_t>(surplus);
    if (cut > digits.size()) {
        return {negative, "", -decimals};
    }
    DecimalDigits result{negative, digits.substr(0, digits.size() - cut), -decimals};
    if (digits[digits.size() - cut] >= '5') {
        increment(result.digits);
    }
    return result;
}

std::string DecimalDigits::text(std::size_t whole, int decimals) const {
    DecimalDigits number = rounded(decimals);
    const auto places = static_cast<std::size_t>(decimals);
    std::string all = number.digits;
    if (!number.isZero()) {
        const int zeros = number.exponent + decimals;
        all.append(static_cast<std::size_t>(zeros), '0');
    }
    if (all.size() < whole + places) {
        all.insert(0, whole + places - all.size(), '0');
    }
    std::string result = negative ? "-" : "";
    result.append(all, 0, all.size() - places);
    if (places > 0) {
        result.append(".").append(all, all.size() - places, places);
    }
    return result;
}

double DecimalDigits::toDouble() const {
    if (isZero()) {
        return 0;
    }
    const std::string text = (negative ? "-" : "") + digits + "e" + std::to_string(exponent);
    double value = 0;
    const auto outcome = std::from_chars(text.data(), text.data() + text.size(), value);
    if (outcome.ec == std::errc::result_out_of_range) {
        if (wholeDigits(*this) > 0) {
            throw BasicError::of(6);
        }
        return 0;
    }
    return value;
}

DecimalDigits decimalDigits(std::string_view digits, int exponent, bool negative) {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return {negative, std::string(digits), digits.empty() ? 0 : exponent};
}

DecimalDigits digitsOf(double value) {
    return digitsOfFloating(value, 15);
}

DecimalDigits digitsOf(float value) {
    return digitsOfFloating(value, 7);
}

int takeExponent(std::string_view& text) {
    constexpr std::string_view kLetters = "eEdD";
    std::size_t position = 0;
    if (text.empty() || kLetters.find(text[position++]) == std::string_view::npos) {
        return 0;
    }
    const bool negative = position < text.size() && text[position] == '-';
    if (position < text.size() && (text[position] == '-' || text[position] == '+')) {
        ++position;
    }
    const std::size_t first = position;
    int exponent = 0;
    while (position < text.size() && isDigit(text[position])) {
        exponent = std::min(exponent * 10 + (text[position++] - '0'), kExponentLimit);
    }
    if (position == first) {
        return 0;
    }
    text.remove_prefix(position);
    return negative ? -exponent : exponent;
}

std::optional<double> takeBasedNumber(std::string_view& text) {
    struct Base {
        char capital;
        char small;
        int base;
    };
    constexpr Base kBases[] = {{'H', 'h', 16}, {'O', 'o', 8}};
    if (text.size() < 3 || text[0] != '&') {
        return std::nullopt;
    }
    for (const auto& [capital, small, base] : kBases) {
        if (text[1] != capital && text[1] != small) {
            continue;
        }
        unsigned long long value = 0;
        const char* const begin = text.data() + 2;
        const auto outcome = std::from_chars(begin, text.data() + text.size(), value, base);
        if (outcome.ptr == begin) {
            return std::nullopt;
        }
        if (outcome.ec == std::errc::result_out_of_range) {
            throw BasicError::of(6);
        }
        text.remove_prefix(static_cast<std::size_t>(outcome.ptr - text.data()));
        return static_cast<double>(value);
    }
    return std::nullopt;
}

}  // namespace util
