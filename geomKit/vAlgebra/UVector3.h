/// @file
/// `UVector3`, the vector that is normalised when it is constructed.
#pragma once

#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// A unit vector: line directions, plane normals, rotation axes.
///
/// Every constructor normalises by `Vector3::autoNormalize`. A null vector (each component below
/// 1e-13 in absolute value) becomes (x, y, 1) with its tiny x and y kept; so (0, 0, 0) becomes
/// (0, 0, 1). The members stay writable: the type records an intent, it does not guard it.
class UVector3 : public Vector3 {
public:
    /// (0, 0, 1).
    constexpr UVector3() noexcept : Vector3(0.0, 0.0, 1.0) {}
    UVector3(double x_, double y_, double z_) noexcept : UVector3(Vector3(x_, y_, z_)) {}
    /// Implicit, so that a plain `Vector3` may be passed where a unit vector is wanted.
    UVector3(const Vector3& v) noexcept : Vector3(v) {
        if (!autoNormalize()) z = 1.0;
    }
};

static_assert(sizeof(UVector3) == 3 * sizeof(double),
              "arrays of UVector3 read as arrays of Vector3");

inline UVector3 Vector3::normalize() const noexcept {
    return UVector3(*this);
}

inline Vector3 Vector3::reflect(const Vector3& a, const Vector3& b) const noexcept {
    const Vector3 d = *this - a;
    const Vector3 ab = b - a;
    const double t = ab.normalize() * d;
    return (a + ab * t) - d;
}

}  // namespace geomKit
