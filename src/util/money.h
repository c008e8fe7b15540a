#pragma once

#include <compare>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace util {

/// An amount of money (also a price, a cost, any DECIMAL column): fixed point with four decimals in
/// 64 bits, so from -922337203685477.5808 to 922337203685477.5807. Exact; compared exactly. Every
/// operation whose result does not fit throws BasicError 6.
class Money {
public:
    constexpr Money() = default;

    /// The amount of `tenThousandths` / 10000.
    static constexpr Money fromRaw(std::int64_t tenThousandths) {
        Money money;
        money.raw_ = tenThousandths;
        return money;
    }
    /// A whole amount.
    static constexpr Money fromWhole(std::int64_t whole) {
        if (whole > kMax / kScale || whole < kMin / kScale) {
            overflow();
        }
        return fromRaw(whole * kScale);
    }
    /// The amount nearest to `value`, half to even on the fourth decimal (the product with 10000 is
    /// taken in extended precision). @throws BasicError 6 when it does not fit.
    static Money fromDouble(double value);
    /// Reads plain decimal text such as "-12.5" exactly (digits behind the fourth round half to
    /// even); blank text is 0. @throws BasicError 13 for anything else, 6 when it does not fit.
    static Money fromDecimal(std::string_view text);

    /// Ten-thousandths.
    [[nodiscard]] constexpr std::int64_t raw() const { return raw_; }
    [[nodiscard]] constexpr bool isZero() const { return raw_ == 0; }
    /// The nearest double; only for values that leave the system (a request, a ratio), never for a
    /// comparison.
    [[nodiscard]] double toDouble() const;
    [[nodiscard]] constexpr Money abs() const { return raw_ < 0 ? -*this : *this; }
    /// Rounded to `digits` (0 to 4) decimals, half away from zero.
    [[nodiscard]] Money rounded(int digits) const;
    /// Decimal text with exactly `digits` (0 to 4) decimals, half away from zero, as "-1.50"; never
    /// "-0.00".
    [[nodiscard]] std::string text(int digits) const;

    // NOLINTNEXTLINE(modernize-use-nullptr): the tool takes the 0 of the comparison for a pointer
    friend constexpr auto operator<=>(const Money&, const Money&) = default;
    constexpr Money operator-() const {
        if (raw_ == kMin) {
            overflow();
        }
        return fromRaw(-raw_);
    }
    friend constexpr Money operator+(Money left, Money right) {
        if (right.raw_ > 0 ? left.raw_ > kMax - right.raw_ : left.raw_ < kMin - right.raw_) {
            overflow();
        }
        return fromRaw(left.raw_ + right.raw_);
    }
    friend constexpr Money operator-(Money left, Money right) {
        if (right.raw_ > 0 ? left.raw_ < kMin + right.raw_ : left.raw_ > kMax + right.raw_) {
            overflow();
        }
        return fromRaw(left.raw_ - right.raw_);
    }
    constexpr Money& operator+=(Money other) { return *this = *this + other; }
    constexpr Money& operator-=(Money other) { return *this = *this - other; }

    static constexpr std::int64_t kScale = 10000;

private:
    static constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    static constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

    /// @throws BasicError 6.
    [[noreturn]] static void overflow();

    std::int64_t raw_ = 0;
};

/// Amount times quantity: formed in double precision and brought back to four decimals.
/// @throws BasicError 6 when the product does not fit.
Money times(Money amount, double quantity);

}  // namespace util
