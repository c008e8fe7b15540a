#pragma once

#include <cstdint>

/// A 16-bit truth value as every program of the suite passes it: 0 is false, -1 is true.
/// Used at the boundary (routines and members with fixed names); inside, code uses `bool`.
using LegacyBool = std::int16_t;

inline constexpr LegacyBool kYes = -1;
inline constexpr LegacyBool kNo = 0;

/// The 16-bit form of `value`: -1 or 0.
constexpr LegacyBool legacyBool(bool value) {
    return value ? kYes : kNo;
}
