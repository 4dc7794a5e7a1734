/// @file
/// `LineTriangleInt`: where a line passes through a triangle.
#pragma once

#include <cmath>
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

private:
    /// Where a line that is near the triangle passes it, when that is beyond rounding.
    enum class Side { Inside, Outside, Unknown };
    static Side iGetSide(const Vector3& p, const UVector3& d, const Vector3& a, const Vector3& ab,
                         const Vector3& ac, double tol);
    void iSetPoint(const Vector3& p, const UVector3& d, const Vector3& a, const Vector3& n);
    /// All steps after the sphere.
    GEOMKIT_API void iSolve(const Vector3& p, const UVector3& d, const Vector3& a, const Vector3& b,
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

    // The status of most lines is known long before the square root and the two divisions that
    // `point` takes, so that a caller's branch on it need not wait for them.
    const Vector3 ab = b - a;
    const Vector3 ac = c - a;
    const Side side = iGetSide(p, d, a, ab, ac, tol);
    if (side == Side::Unknown) {
        iSolve(p, d, a, b, c, tol);
    } else if (side == Side::Inside) {
        status = kHit;
        iSetPoint(p, d, a, ab % ac);
    } else {
        iSetPoint(p, d, a, ab % ac);
    }
}

// Moeller and Trumbore's weights u, v, w times their determinant. An edge's area is its weight
// times length(ab % ac) / |det|, so the signs decide unless the areas that `iSolve` forms could
// round across -tol. With det >= edges^2 / 1024 the computed normal is off by less than 4000
// epsilon, the line meets the plane at a sine of at least 1/256, and the error of an area, in the
// unit of u, stays below 2 * 256 * 4000 epsilon * size * edges, which is less than half of the
// margin. The other bounds keep the normal from being null, products from underflowing and
// directions unit.
inline LineTriangleInt::Side LineTriangleInt::iGetSide(const Vector3& p, const UVector3& d,
                                                       const Vector3& a, const Vector3& ab,
                                                       const Vector3& ac, double tol) {
    const auto sumAbs = [](const Vector3& x) {
        return std::abs(x.x) + std::abs(x.y) + std::abs(x.z);
    };
    const Vector3 ap = p - a;
    const Vector3 dc = d % ac;
    const double det = ab * dc;
    const double u = ap * dc;
    const double v = d * (ap % ab);
    const double w = det - u - v;
    const double edges = sumAbs(ab) + sumAbs(ac);
    const double size = sumAbs(ap) + sumAbs(p) + edges;
    const double margin = 1e-9 * size * edges + 2.0 * std::abs(tol);
    const bool known = std::abs(u) > margin && std::abs(v) > margin && std::abs(w) > margin &&
                       std::abs(det) > edges * edges * 0x1p-10 && std::abs(det) > 1e-12 &&
                       edges < 0x1p200 && sumAbs(d) < 2.0;
    if (!known) return Side::Unknown;
    // Without a branch for each edge: which one a line passes cannot be predicted.
    const bool isInside = (u * det > 0.0) & (v * det > 0.0) & (w * det > 0.0);
    return isInside ? Side::Inside : Side::Outside;
}

inline void LineTriangleInt::iSetPoint(const Vector3& p, const UVector3& d, const Vector3& a,
                                       const Vector3& n) {
    const Vector3 unit = n * (1.0 / n.length());
    param = ((a - p) * unit) / (d * unit);
    point = p + d * param;
}
