#include "util/money.h"

#include "util/basic_error.h"
#include "util/conversions.h"
#include "util/decimal_digits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace util {

namespace {

constexpr std::size_t kDecimals = 4;
constexpr std::uint64_t kPowersOfTen[] = {1, 10, 100, 1000, 10000};

/// The value without its sign, which for the smallest amount has no place in 63 bits.
std::uint64_t magnitude(std::int64_t raw) {
    const auto bits = static_cast<std::uint64_t>(raw);
    return raw < 0 ? std::uint64_t{0} - bits : bits;
}

/// Ten-thousandths without sign, cut to `digits` decimals: half goes up.
std::uint64_t unitsOf(std::uint64_t tenThousandths, int digits) {
    const auto kept = std::min(static_cast<std::size_t>(std::max(digits, 0)), kDecimals);
    const std::uint64_t unit = kPowersOfTen[kDecimals - kept];
    return tenThousandths / unit + (tenThousandths % unit * 2 >= unit && unit > 1 ? 1 : 0);
}

/// "12" and "345678" of "12.345678"; false when there is anything but digits and one point.
bool splitDecimal(std::string_view text, std::string& whole, std::string& decimals) {
    const std::size_t point = std::min(text.find('.'), text.size());
    whole = text.substr(0, point);
    decimals = text.substr(std::min(point + 1, text.size()));
    return !(whole.empty() && decimals.empty()) &&
           std::all_of(whole.begin(), whole.end(), isDigit) &&
           std::all_of(decimals.begin(), decimals.end(), isDigit);
}

/// Does what stands behind the fourth decimal raise the amount? Half goes to the even neighbour.
bool roundsUp(std::string_view surplus, bool isOdd) {
    if (surplus.empty() || surplus.front() != '5') {
        return !surplus.empty() && surplus.front() > '5';
    }
    return isOdd || surplus.find_first_not_of('0', 1) != std::string_view::npos;
}

}  // namespace

void Money::overflow() {
    throw BasicError::of(6);
}

Money Money::fromDouble(double value) {
    const long double scaled = std::nearbyint(static_cast<long double>(value) * kScale);
    constexpr long double kLimit = 9223372036854775808.0L;  // 2 to the power of 63
    if (!(scaled >= -kLimit && scaled < kLimit)) {
        overflow();
    }
    return fromRaw(static_cast<std::int64_t>(scaled));
}

Money Money::fromDecimal(std::string_view text) {
    const std::string trimmed = trim(text);
    if (trimmed.empty()) {
        return {};
    }
    const bool negative = trimmed.front() == '-';
    const std::string_view unsignedText =
        std::string_view(trimmed).substr(negative || trimmed.front() == '+' ? 1 : 0);
    std::string digits;
    std::string decimals;
    if (!splitDecimal(unsignedText, digits, decimals)) {
        throw BasicError::of(13);
    }
    digits += decimals.substr(0, kDecimals);
    digits.append(kDecimals - std::min(decimals.size(), kDecimals), '0');
    std::uint64_t raw = 0;
    const auto outcome = std::from_chars(digits.data(), digits.data() + digits.size(), raw);
    const auto limit = static_cast<std::uint64_t>(kMax) + (negative ? 1 : 0);
    const std::string_view surplus =
        std::string_view(decimals).substr(std::min(decimals.size(), kDecimals));
    if (outcome.ec != std::errc() || raw > limit) {
        overflow();
    }
    raw += roundsUp(surplus, raw % 2 != 0) ? 1 : 0;
    if (raw > limit) {
        overflow();
    }
    // The complement of the magnitude is the negative number, the smallest one included.
    return fromRaw(static_cast<std::int64_t>(negative ? std::uint64_t{0} - raw : raw));
}

double Money::toDouble() const {
    return static_cast<double>(static_cast<long double>(raw_) / kScale);
}

Money Money::rounded(int digits) const {
    const auto kept = std::min(static_cast<std::size_t>(std::max(digits, 0)), kDecimals);
    const std::uint64_t units = unitsOf(magnitude(raw_), digits) * kPowersOfTen[kDecimals - kept];
    if (units > static_cast<std::uint64_t>(kMax) + (raw_ < 0 ? 1 : 0)) {
        overflow();
    }
    return fromRaw(static_cast<std::int64_t>(raw_ < 0 ? std::uint64_t{0} - units : units));
}

std::string Money::text(int digits) const {
    const auto kept = std::min(static_cast<std::size_t>(std::max(digits, 0)), kDecimals);
    const std::uint64_t units = unitsOf(magnitude(raw_), digits);
    std::string result = std::to_string(units);
    if (result.size() <= kept) {
        result.insert(0, kept + 1 - result.size(), '0');
    }
    if (kept > 0) {
        result.insert(result.size() - kept, 1, '.');
    }
    return raw_ < 0 && units != 0 ? "-" + result : result;
}

Money times(Money amount, double quantity) {
    return Money::fromDouble(amount.toDouble() * quantity);
}

}  // namespace util
