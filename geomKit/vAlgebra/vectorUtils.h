/// @file
/// Free functions on vectors: distances, blends, feet of perpendiculars, frames, angles,
/// curvatures, text. All are pure functions, safe from any number of threads.
#pragma once

#include <cmath>
#include <iosfwd>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Squared distance between two points, summed in the order x, y, z.
[[nodiscard]] inline double distSq(const Vector3& a, const Vector3& b) noexcept {
    return (b - a).lengthSq();
}

/// Distance between two points.
[[nodiscard]] inline double dist(const Vector3& a, const Vector3& b) noexcept {
    return std::sqrt(distSq(a, b));
}

/// The linear blend (1 - t) a + t b, as it is for any `t`: `a` for 0 and `b` for 1.
[[nodiscard]] constexpr Vector3 lerp(const Vector3& a, const Vector3& b, double t) noexcept {
    return (1.0 - t) * a + t * b;
}

/// Foot of `p` on the plane through `o` with unit normal `n`.
[[nodiscard]] inline Vector3 projectOnPlane(const Vector3& p, const Vector3& o,
                                            const UVector3& n) noexcept {
    return p + n * ((o - p) * n);
}

/// Foot of `p` on the line through `o` with unit direction `u`.
[[nodiscard]] inline Vector3 projectOnLine(const Vector3& p, const Vector3& o,
                                           const UVector3& u) noexcept {
    return o + u * ((p - o) * u);
}

/// Squared distance from `p` to the segment ab; `t`, if not null, receives the parameter of the
/// nearest point in [0, 1].
///
/// The end tests compare unnormalised dot products with 1e-13 (inclusive), so a segment with a = b
/// always answers the distance to a with t = 0. Between the ends the result is |d|^2 - h^2/|e|^2
/// with d = p - a, e = b - a, h = d . e, never below 0. NaN in a point gives 0 with t = NaN.
inline double distSqToLineSegment(const Vector3& p, const Vector3& a, const Vector3& b,
                                  double* t) noexcept {
    const Vector3 d = p - a;
    const Vector3 e = b - a;
    const double h = d * e;
    if (h <= kNullComponentTol) {
        if (t != nullptr) *t = 0.0;
        return d.lengthSq();
    }
    const Vector3 pb = p - b;
    if (pb * e >= -kNullComponentTol) {
        if (t != nullptr) *t = 1.0;
        return pb.lengthSq();
    }
    const double lenSq = e.lengthSq();
    if (t != nullptr) *t = h / lenSq;
    const double perpSq = d.lengthSq() - h * h / lenSq;
    return perpSq > 0.0 ? perpSq : 0.0;
}

/// Completes the unit vector `v` to a right-handed orthonormal frame (e1, e2, v).
///
/// e1 is the coordinate axis of v's smallest component (ties take z before y before x), made
/// perpendicular to v and normalised; e2 is v x e1, normalised. `v` is not normalised here: the
/// result is perpendicular to it only when it has unit length. v = 0 gives (0, 0, 1) twice. The
/// outputs may be the same object as `v`.
GEOMKIT_API void getBasis(const Vector3& v, Vector3& e1, Vector3& e2) noexcept;

/// Angle in radians from `a` to `b`, counted counter-clockwise about `n`: atan2 of the unsigned
/// cross product, turned into 2 pi minus that when (a x b) . n < 0. In [0, 2 pi) but for the
/// rounding of that difference: an angle below about 4e-16 the other way round gives 2 pi itself.
[[nodiscard]] GEOMKIT_API double getAngleBetween(const Vector3& a, const Vector3& b,
                                                 const Vector3& n) noexcept;

/// True when two planes coincide: normals parallel within 0.03 degrees (either orientation), and
/// either the points coincide (each component closer than 1e-13) or the second point is seen from
/// the first within 0.03 degrees of the plane. The second test is an angle, not a distance.
[[nodiscard]] GEOMKIT_API bool samePlane(const Vector3& pA, const UVector3& nA, const Vector3& pB,
                                         const UVector3& nB) noexcept;

/// Curvature |d1 x d2| / |d1|^3 of a curve with first and second derivatives `d1` and `d2`;
/// 0 when |d1|^2 < 1e-13.
[[nodiscard]] GEOMKIT_API double calcCurvature(const Vector3& d1, const Vector3& d2) noexcept;

/// Principal curvatures of a parametric surface from its derivatives: `d1` holds Su, Sv and `d2`
/// holds Suu, Suv, Svv. Signs follow the normal Su x Sv: a sphere whose normal points outwards has
/// negative curvatures. kMin <= kMax; either may be null.
///
/// Returns false and writes nothing when Su x Sv is null or E G - F^2 < 1e-13. Curvatures whose
/// difference is below 2e-8 are reported as equal. Source: the first and second fundamental forms;
/// K and H from do Carmo, Differential Geometry of Curves and Surfaces, section 3-3.
GEOMKIT_API bool principalCurvatures(const Vector3* d1, const Vector3* d2, double* kMin,
                                     double* kMax) noexcept;

/// Writes "(x, y, z)" in the stream's own number format.
GEOMKIT_API std::ostream& operator<<(std::ostream& os, const Vector3& v);

}  // namespace geomKit
