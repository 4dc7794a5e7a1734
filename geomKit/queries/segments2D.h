/// @file
/// Segments in the xy plane: do they cross, do they meet a rectangle, what is left of them inside.
///
/// Points are `Vector3` with z expected to be 0. Side tests against a segment and rectangle tests
/// read x and y only. Lengths along a segment, and distances from the boundary of a half-plane, are
/// dot products of all three components; clip points have an interpolated z. Pure functions, safe
/// from any number of threads.
#pragma once

#include "geomKit/export.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// True when the segment b0 b1 crosses the segment a0 a1.
///
/// `tol` is a distance from the line of A and along it; it widens every test when `inclusive` and
/// narrows it when not, so that without `inclusive` touching ends do not count. The ends of B on
/// both sides of A's line decide: ends exactly `tol` off on the same side do not cross, and B's own
/// ends are not widened along B.
///
/// Overlapping segments on one line are found only by `inclusive` with `tol` > 0; with `tol` = 0,
/// or without `inclusive`, they do not cross. The same holds for a B of no length on A. An A of no
/// length has the direction (0, 0, 1), against which nothing has a side: answers are true within
/// `tol` in z, wherever B lies in x and y, if `inclusive` with `tol` > 0, else false. Test its
/// length first. NaN passes every rejection: true.
[[nodiscard]] GEOMKIT_API bool segsIntersect(const Vector3& a0, const Vector3& a1,
                                             const Vector3& b0, const Vector3& b1, double tol,
                                             bool inclusive) noexcept;

/// True when the segment ab meets the rectangle from `rmin` to `rmax`.
///
/// Exact comparisons, no tolerance. A segment that lies in the closure of the outside of one edge
/// does not meet the rectangle, even if it runs along that edge or ends on it; one that passes
/// through a corner aslant does, and so does one with an end in the rectangle. The side products
/// underflow for differences below about 1e-80, which then counts as meeting. NaN coordinates of
/// the segment give false unless the other end lies in the rectangle.
[[nodiscard]] GEOMKIT_API bool segIntersectRect2D(const Vector3& a, const Vector3& b,
                                                  const Vector3& rmin,
                                                  const Vector3& rmax) noexcept;

/// Clips ab in place to the half-plane through `q` on the side that `n` points to; false when
/// nothing remains, with a and b unchanged.
///
/// Distances are compared with 0 exactly: a segment on the boundary is removed, one that touches it
/// with an end from inside stays whole. The clip point is interpolated, so it may lie off the
/// boundary by rounding. A NaN distance does not end the clip: the result is true and the end that
/// is replaced holds NaN.
GEOMKIT_API bool segClipHalfPlane2D(Vector3& a, Vector3& b, const Vector3& q,
                                    const UVector3& n) noexcept;

/// Clips a copy of ab to the rectangle from `rmin` to `rmax`, edge by edge: left, bottom, right,
/// top. False when nothing remains; `outA` and `outB` then hold what the edges before left. A
/// segment along an edge is removed. The outputs may be the same objects as `a` and `b`.
GEOMKIT_API bool segClipRect2D(const Vector3& a, const Vector3& b, const Vector3& rmin,
                               const Vector3& rmax, Vector3& outA, Vector3& outB) noexcept;

}  // namespace geomKit
