#pragma once

#include "util/date_time.h"
#include "util/money.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace util {

/// The value of one column of one row, or of one part of a key. No value (SQL NULL) is
/// `std::monostate`. Text is code page 1252. Integers of every width are `int64_t`, REAL is
/// `float`, DECIMAL and NUMERIC are `Money`.
using Value =
    std::variant<std::monostate, std::string, std::int64_t, float, double, Money, DateTime>;

/// The same with a text that lies elsewhere.
using ValueView =
    std::variant<std::monostate, std::string_view, std::int64_t, float, double, Money, DateTime>;

/// The value with a text of its own.
inline Value ownValue(const ValueView& value) {
    return std::visit(
        [](const auto& held) -> Value {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::string_view>) {
                return std::string(held);
            } else {
                return held;
            }
        },
        value
    );
}

}  // namespace util
