/// @file
/// Four vectors side by side, for arithmetic in wide registers. Internal: not installed.
///
/// GEOMKIT_HAS_VECTOR3X4 is defined where the compiler has vector types. Elsewhere arrays are loops
/// over single calls.
#pragma once

#include <cmath>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Vector3.h"

#if defined(__GNUC__)
#define GEOMKIT_HAS_VECTOR3X4

// Everything here is inlined, so that it does not matter how wide results would be returned.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace geomKit::detail {

/// Four numbers; operators work on each. Comparisons give -1 for true, in integers of the same
/// size.
using Quad = double __attribute__((vector_size(4 * sizeof(double))));

/// The operators of `Vector3`, with the same bits in each of the four.
struct Vector3x4 {
    Quad x;
    Quad y;
    Quad z;

    /// One vector four times.
    static GEOMKIT_ALWAYS_INLINE Vector3x4 all(const Vector3& v) noexcept {
        return {Quad{v.x, v.x, v.x, v.x}, Quad{v.y, v.y, v.y, v.y}, Quad{v.z, v.z, v.z, v.z}};
    }
    static GEOMKIT_ALWAYS_INLINE Vector3x4 of(const Vector3& v0, const Vector3& v1,
                                              const Vector3& v2, const Vector3& v3) noexcept {
        return {Quad{v0.x, v1.x, v2.x, v3.x}, Quad{v0.y, v1.y, v2.y, v3.y},
                Quad{v0.z, v1.z, v2.z, v3.z}};
    }
    [[nodiscard]] GEOMKIT_ALWAYS_INLINE Vector3 get(int i) const noexcept {
        return {x[i], y[i], z[i]};
    }

    GEOMKIT_ALWAYS_INLINE Vector3x4 operator+(const Vector3x4& v) const noexcept {
        return {x + v.x, y + v.y, z + v.z};
    }
    GEOMKIT_ALWAYS_INLINE Vector3x4 operator-(const Vector3x4& v) const noexcept {
        return {x - v.x, y - v.y, z - v.z};
    }
    GEOMKIT_ALWAYS_INLINE Vector3x4 operator*(const Quad& s) const noexcept {
        return {x * s, y * s, z * s};
    }
    GEOMKIT_ALWAYS_INLINE Vector3x4 operator/(double s) const noexcept {
        const double r = 1.0 / s;
        return {x * r, y * r, z * r};
    }
    GEOMKIT_ALWAYS_INLINE Quad operator*(const Vector3x4& v) const noexcept {
        return x * v.x + y * v.y + z * v.z;
    }
    GEOMKIT_ALWAYS_INLINE Vector3x4 operator%(const Vector3x4& v) const noexcept {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    [[nodiscard]] GEOMKIT_ALWAYS_INLINE Quad lengthSq() const noexcept { return *this * *this; }
    [[nodiscard]] GEOMKIT_ALWAYS_INLINE Quad length() const noexcept {
        Quad root = lengthSq();
        for (int i = 0; i < 4; ++i)
            root[i] = std::sqrt(root[i]);
        return root;
    }
};

}  // namespace geomKit::detail
#endif
