#pragma once

#include "util/money.h"

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace companyfile {

/// A price, quantity or per cent: exact, five decimals (raw: hundred-thousandths).
struct Decimal {
    std::int64_t raw = 0;

    static constexpr std::int64_t kScale = 100000;
    static constexpr Decimal fromWhole(std::int64_t whole) { return {whole * kScale}; }
    /// The number of a text that has the wire's form ("-12.5"); empty gives 0. Every operation
    /// whose result does not fit throws BasicError 6.
    static Decimal fromText(std::string_view text);

    [[nodiscard]] bool isZero() const { return raw == 0; }
    Decimal operator-() const;
    friend constexpr auto operator<=>(const Decimal&, const Decimal&) = default;
    friend Decimal operator+(Decimal left, Decimal right);

    /// Without trailing zeros, but with at least `decimals` of them.
    [[nodiscard]] std::string text(int decimals = 0) const;
};

/// The amount of a wire text ("97" or "97.50"); empty gives 0.
util::Money amountFrom(std::string_view text);
/// The amount as the wire shows it, with two decimals.
std::string amountText(util::Money amount);
/// Whole cents of an amount that has no more than two decimals, and back.
/// @throws BasicError 6 for cents that are no amount, which only a damaged file holds.
std::int64_t cents(util::Money amount);
util::Money fromCents(std::int64_t cents);

/// Price times quantity, rounded to cents, half away from zero.
/// @throws StatusError 3101 when the result has more than 13 digits before the point.
util::Money product(Decimal price, Decimal quantity);
/// Amount divided by quantity (not 0), rounded to five decimals. @throws StatusError 3101 likewise.
Decimal quotient(util::Money amount, Decimal quantity);
/// `percent` per cent of `amount`, rounded to cents.
util::Money percentOf(util::Money amount, Decimal percent);

}  // namespace companyfile
