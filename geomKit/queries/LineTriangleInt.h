/// @file
/// `LineTriangleInt`: where a line passes through a triangle.
#pragma once

#include <algorithm>
#include <cstdint>

#include "geomKit/export.h"
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
/// NaN in p gives status 1 with NaN fields, or 2 when the line is parallel; NaN in a vertex gives
/// status 2. NaN in d alone counts as parallel: status 3, or 2 when p is in the plane.
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

private:
    LineTriangleInt() = default;
    /// All steps after the sphere. Returned by value: the constructor's record may then stay in
    /// registers.
    GEOMKIT_API static LineTriangleInt iSolve(const Vector3& p, const UVector3& d, const Vector3& a,
                                              const Vector3& b, const Vector3& c, double tol);
};

// After the sphere, Moeller and Trumbore's weights times their determinant settle the status where
// they are beyond any rounding of the documented steps, long before the square root and the
// divisions that `point` takes. `depth` is the least weight in absolute value if all have one sign;
// otherwise it is negative, and some weight of each sign is at least that far from zero.
//
// With e^2 = edgesSq and z^2 = sizeSq, |det| > e^2 / 1024 and |d|^2 < 2 bound the relative error of
// n by 4e-13 and the sine between line and plane from below by 1/730. In the unit of the weights,
// the areas that `iSolve` forms are then off by less than 1e-9 z e, while |depth| exceeds
// 7e-9 z e + 7 |tol|. The first comparison also keeps n from being null and its length from
// overflowing. NaN and overflow fail the comparisons.
inline LineTriangleInt::LineTriangleInt(const Vector3& p, const UVector3& d, const Vector3& a,
                                        const Vector3& b, const Vector3& c, double tol) {
    const Vector3 g = ((a + b) + c) / 3.0;
    const Vector3 v = p - g;
    const double vSq = v.lengthSq();
    const double h = v * d;
    const double distSq = vSq - h * h;
    // Beyond the largest radius is beyond each; the first is enough for most lines that are not.
    if (distSq > (g - a).lengthSq() + tol &&
        distSq > (std::max)((g - b).lengthSq(), (g - c).lengthSq()) + tol) {
        return;
    }

    const Vector3 ab = b - a;
    const Vector3 ac = c - a;
    const Vector3 pa = a - p;
    const Vector3 n = ab % ac;
    const Vector3 moment = d % pa;
    const double det = n * d;
    const double wc = moment * ab;
    const double wb = -(moment * ac);
    const double wa = det - wb - wc;
    // Without a branch for each edge: which one a line passes cannot be predicted.
    const double lowest = (std::min)((std::min)(wb, wc), wa);
    const double highest = (std::max)((std::max)(wb, wc), wa);
    const double depth = (std::max)(lowest, -highest);

    const double edgesSq = ab.lengthSq() + ac.lengthSq();
    const double sizeSq = p.lengthSq() + vSq + edgesSq;
    const bool isKnown = det * det > 0x1p-20 * (edgesSq * edgesSq) + 1e-24 &&
                         depth * depth > 1e-16 * (sizeSq * edgesSq) + 100.0 * (tol * tol) &&
                         d.lengthSq() < 2.0;
    if (isKnown) {
        const Vector3 unit = n * (1.0 / n.length());
        status = depth > 0.0 ? kHit : kMiss;
        param = (pa * unit) / (d * unit);
        point = p + d * param;
    } else {
        *this = iSolve(p, d, a, b, c, tol);
    }
}
