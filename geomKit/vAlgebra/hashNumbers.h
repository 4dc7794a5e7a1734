/// @file
/// The hash of the value types whose equality is exact.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace geomKit::detail {

/// The hash of `count` numbers, in order. Numbers that compare equal hash alike: both zeros do. Not
/// the same on every machine: it is no digest. `seed` is the hash of the numbers before, if any.
[[nodiscard]] inline std::size_t hashNumbers(const double* numbers, std::size_t count,
                                             std::size_t seed = 0) noexcept {
    std::uint64_t hash = seed + 0x9e3779b97f4a7c15U;
    for (std::size_t i = 0; i < count; ++i) {
        const double number = numbers[i] + 0.0;  // turns -0 into 0
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        hash = (hash ^ bits) * 0xbf58476d1ce4e5b9U;
        hash ^= hash >> 31U;
    }
    return static_cast<std::size_t>(hash);
}

}  // namespace geomKit::detail
