#include "companyfile/decimal.h"

#include "companyfile/status.h"
#include "util/basic_error.h"

#include <limits>

namespace companyfile {

namespace {

__extension__ using Wide = __int128;

constexpr std::int64_t kCent = util::Money::kScale / 100;
constexpr std::int64_t kLargestCents = 999'999'999'999'999;  // thirteen digits before the point
constexpr std::int64_t kLargestDecimal = 999'999'999'999'999'999;  // thirteen as well

/// `dividend` / `divisor`, half away from zero.
Wide divided(Wide dividend, Wide divisor) {
    const bool negative = (dividend < 0) != (divisor < 0);
    const Wide top = dividend < 0 ? -dividend : dividend;
    const Wide bottom = divisor < 0 ? -divisor : divisor;
    const Wide result = (top * 2 + bottom) / (bottom * 2);
    return negative ? -result : result;
}

std::int64_t within(Wide value, std::int64_t largest) {
    if (value > largest || value < -largest) {
        throw tooLarge();
    }
    return static_cast<std::int64_t>(value);
}

util::Money moneyFromCents(Wide value) {
    return fromCents(within(value, kLargestCents));
}

/// A 64-bit number that a computation gives.
std::int64_t fitting(Wide value) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (value > Limits::max() || value < -Limits::max()) {
        throw util::BasicError::of(6);
    }
    return static_cast<std::int64_t>(value);
}

/// Digits of "12.5" as a whole number with `decimals` places; the text has the wire's form.
std::int64_t scaled(std::string_view text, std::size_t decimals) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::int64_t value = 0;
    std::size_t behindPoint = 0;
    bool point = false;
    for (const char digit : text) {
        if (digit == '.') {
            point = true;
        } else if (!point || behindPoint < decimals) {
            value = fitting(Wide{value} * 10 + (digit - '0'));
            behindPoint += point ? 1U : 0U;
        }
    }
    for (; behindPoint < decimals; ++behindPoint) {
        value = fitting(Wide{value} * 10);
    }
    return negative ? -value : value;
}

}  // namespace

Decimal Decimal::fromText(std::string_view text) {
    return {scaled(text, 5)};
}

Decimal Decimal::operator-() const {
    return {fitting(-Wide{raw})};
}

Decimal operator+(Decimal left, Decimal right) {
    return {fitting(Wide{left.raw} + right.raw)};
}

std::string Decimal::text(int decimals) const {
    const auto bits = static_cast<std::uint64_t>(raw);
    const std::uint64_t magnitude = raw < 0 ? 0 - bits : bits;
    std::string fraction = std::to_string(kScale + magnitude % kScale).substr(1);
    while (fraction.size() > static_cast<std::size_t>(decimals) && fraction.back() == '0') {
        fraction.pop_back();
    }
    return (raw < 0 ? "-" : "") + std::to_string(magnitude / kScale) +
           (fraction.empty() ? "" : "." + fraction);
}

util::Money amountFrom(std::string_view text) {
    return fromCents(scaled(text, 2));
}

std::string amountText(util::Money amount) {
    return amount.text(2);
}

std::int64_t cents(util::Money amount) {
    return amount.raw() / kCent;
}

util::Money fromCents(std::int64_t cents) {
    return util::Money::fromRaw(fitting(Wide{cents} * kCent));
}

util::Money product(Decimal price, Decimal quantity) {
    constexpr Wide kToCents = Wide{Decimal::kScale} * Decimal::kScale / 100;
    return moneyFromCents(divided(Wide{price.raw} * quantity.raw, kToCents));
}

Decimal quotient(util::Money amount, Decimal quantity) {
    const Wide scaledAmount =
        Wide{amount.raw()} * Decimal::kScale * (Decimal::kScale / util::Money::kScale);
    return {within(divided(scaledAmount, quantity.raw), kLargestDecimal)};
}

util::Money percentOf(util::Money amount, Decimal percent) {
    return moneyFromCents(
        divided(Wide{amount.raw()} * percent.raw, Wide{100} * Decimal::kScale * kCent)
    );
}

}  // namespace companyfile
