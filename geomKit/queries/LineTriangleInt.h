/// @file
/// `LineTriangleInt`: where a line passes through a triangle.
#pragma once

#include <cstdint>

#include "geomKit/queries/LinePlaneInt.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

/// Intersection of the line p + t d with the triangle a, b, c, from either side.
///
/// The constructor does the work; read `status` first. The steps, the first that decides ends it:
/// a line that passes the sphere about the centroid misses; a triangle without a normal is
/// degenerate (each component of the cross product of its edges below 1e-13); then the line meets
/// the triangle's plane by `LinePlaneInt`; then the point must lie on the inner side of all three
/// edges. Edges and vertices belong to the triangle.
///
/// `tol` is used in three units: added to the squared radius of the sphere, as the distance of
/// `LinePlaneInt`, and as the doubled area that the point may lie outside an edge. So the width
/// that it grants at an edge is `tol` divided by the edge's length, and the sphere may reject
/// before an edge accepts. With `tol` = 0 a line in the triangle's plane has status 3, not 2.
/// The sphere comes first: a degenerate triangle away from the line has status 1, and so has a
/// parallel line far from the triangle.
///
/// NaN in p gives status 1 with NaN fields, or 2 when the line is parallel; NaN in d or in a vertex
/// gives status 2.
class LineTriangleInt {
public:
    /// Values of `status`.
    static constexpr std::int32_t kHit = 0;         ///< the line passes through the triangle
    static constexpr std::int32_t kMiss = 1;        ///< it passes beside it
    static constexpr std::int32_t kInPlane = 2;     ///< it lies in the triangle's plane
    static constexpr std::int32_t kParallel = 3;    ///< parallel to that plane and off it
    static constexpr std::int32_t kDegenerate = 4;  ///< the triangle has no area

    std::int32_t status = kMiss;
    /// The line's point in the triangle's plane, for a hit and for a miss that only the edges
    /// found; otherwise (0, 0, 0).
    Vector3 point;
    /// Line parameter of `point`; 0 where `point` was not computed.
    double param = 0.0;

    LineTriangleInt(const Vector3& p, const UVector3& d, const Vector3& a, const Vector3& b,
                    const Vector3& c, double tol);
};

inline LineTriangleInt::LineTriangleInt(const Vector3& p, const UVector3& d, const Vector3& a,
                                        const Vector3& b, const Vector3& c, double tol) {
    const Vector3 g = ((a + b) + c) / 3.0;
    const double ga = (g - a).lengthSq();
    const double gb = (g - b).lengthSq();
    const double gc = (g - c).lengthSq();
    const double gab = ga < gb ? gb : ga;
    const double radiusSq = gab < gc ? gc : gab;
    const Vector3 v = p - g;
    const double h = v * d;
    if (v.lengthSq() - h * h > radiusSq + tol) return;

    // Assigned through the base, so that the normal is normalised once and its failure is seen.
    UVector3 n;
    const Vector3 ab = b - a;
    const Vector3 ac = c - a;
    static_cast<Vector3&>(n) = ab % ac;
    if (!n.autoNormalize()) {
        status = kDegenerate;
        return;
    }

    const LinePlaneInt hit(p, d, a, n, tol);
    if (hit.status != LinePlaneInt::kHit) {
        status = hit.status == LinePlaneInt::kInPlane ? kInPlane : kParallel;
        return;
    }
    point = hit.point;
    param = hit.param;

    // All three sides without a branch: which edge a line passes cannot be predicted.
    const Vector3 ax = point - a;
    const bool inB = (ax % ac) * n >= -tol;
    const bool inC = (ab % ax) * n >= -tol;
    const bool inA = ((point - c) % (b - c)) * n >= -tol;
    status = static_cast<std::int32_t>(!(inA & inB & inC));
}
