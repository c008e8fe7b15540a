#pragma once

#include <cstddef>

namespace util {

/// Puts zeros in the place of the units; the compiler does not leave that out.
template <class Unit>
void overwrite(Unit* units, std::size_t count) {
    volatile Unit* const first = units;
    for (std::size_t at = 0; at < count; ++at) {
        first[at] = 0;
    }
}

}  // namespace util
