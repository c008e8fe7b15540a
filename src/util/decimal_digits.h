#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace util {

/// A decimal number of any length: `digits` times ten to the power of `exponent`. No digits: zero.
struct DecimalDigits {
    bool negative = false;
    std::string digits;  ///< '0' to '9', the first one not '0'
    int exponent = 0;    ///< place of the last digit

    [[nodiscard]] bool isZero() const { return digits.empty(); }
    /// Rounded to `decimals` decimals, half away from zero; the sign stays when nothing is left.
    [[nodiscard]] DecimalDigits rounded(int decimals) const;
    /// Plain decimal text: at least `whole` digits in front of the point, exactly `decimals` behind
    /// it (rounded half away from zero). A negative number keeps its sign, as "-0.00".
    [[nodiscard]] std::string text(std::size_t whole, int decimals) const;
    /// The nearest double. @throws BasicError 6 when it is beyond the range.
    [[nodiscard]] double toDouble() const;
};

/// The number that `text` is as a whole: blanks around it, a sign in front or behind, a dollar
/// sign, commas between digits, parentheses for a negative amount, an exponent, "&H1F" and "&O17".
/// Nothing when it is none.
std::optional<DecimalDigits> numberFromText(std::string_view text);

/// `digits` characters that are all '0' to '9', times ten to the power of `exponent`.
DecimalDigits decimalDigits(std::string_view digits, int exponent, bool negative);

/// The decimal form of a number with 15 (a 32-bit float: 7) digits. @throws BasicError 6 when it is
/// no finite number.
DecimalDigits digitsOf(double value);
DecimalDigits digitsOf(float value);

/// The exponent that stands at the start of `text` (a letter out of "eEdD", a sign, digits); takes
/// it off `text`. Zero, and `text` as it was, when there is none.
int takeExponent(std::string_view& text);
/// The value of an integer of base 16 ("&H...") or 8 ("&O...") at the start of `text`, taken off;
/// nothing when there is none.
std::optional<double> takeBasedNumber(std::string_view& text);

/// True for '0' to '9'.
constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

}  // namespace util
