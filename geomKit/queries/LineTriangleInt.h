/// @file
/// `LineTriangleInt`: where a line passes through a triangle.
#pragma once

#include <cstddef>
#include <cstdint>

#include "geomKit/export.h"
#include "geomKit/queries/lineTriangleSteps.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The nearest of many triangles that a line passes through; false when there is none.
struct LineTriangleHit {
    std::ptrdiff_t triangle = -1;
    double param = 0.0;
    Vector3 point;

    [[nodiscard]] explicit operator bool() const noexcept { return triangle >= 0; }
};

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
                    const Vector3& c, double tol) noexcept;

    /// One line and `count` triangles: triangle i has the corners 3i, 3i + 1 and 3i + 2. Writes the
    /// status, the parameter and the point of each, with the bits of single calls, and returns how
    /// many are hit. Each output may be null; `points` may be `corners`.
    ///
    /// Several triangles share the vector registers, which takes 0.7 of the time of a loop over
    /// single calls. Allocates nothing; disjoint ranges may run in several threads.
    GEOMKIT_API static std::size_t intersect(const Vector3& p, const UVector3& d, double tol,
                                             const Vector3* corners, std::size_t count,
                                             std::int32_t* statuses, double* params,
                                             Vector3* points) noexcept;
    /// The same for triangles that share vertices: triangle i has the vertices of the numbers
    /// facets[3i] to facets[3i + 2]. One with a number outside 0..vertexCount-1 is `kDegenerate`.
    GEOMKIT_API static std::size_t intersect(const Vector3& p, const UVector3& d, double tol,
                                             const Vector3* vertices, std::size_t vertexCount,
                                             const int* facets, std::size_t count,
                                             std::int32_t* statuses, double* params,
                                             Vector3* points) noexcept;

    /// The hit of the smallest parameter that is at least `leastParam`, 0 for a ray from `p`; of
    /// equal ones that of the lowest index. As quick as `intersect`.
    [[nodiscard]] GEOMKIT_API static LineTriangleHit nearest(const Vector3& p, const UVector3& d,
                                                             double tol, double leastParam,
                                                             const Vector3* corners,
                                                             std::size_t count) noexcept;
    [[nodiscard]] GEOMKIT_API static LineTriangleHit nearest(
        const Vector3& p, const UVector3& d, double tol, double leastParam, const Vector3* vertices,
        std::size_t vertexCount, const int* facets, std::size_t count) noexcept;

private:
    LineTriangleInt() = default;
    /// All steps after the sphere. Returned by value: the constructor's record may then stay in
    /// registers.
    GEOMKIT_API static LineTriangleInt iSolve(const Vector3& p, const UVector3& d, const Vector3& a,
                                              const Vector3& b, const Vector3& c,
                                              double tol) noexcept;
};

inline LineTriangleInt::LineTriangleInt(const Vector3& p, const UVector3& d, const Vector3& a,
                                        const Vector3& b, const Vector3& c, double tol) noexcept {
    const detail::LineTriangleSphere<Vector3> sphere(p, d, a, b, c);
    // A line beyond the largest radius is beyond all three. Comparing with the first one alone is
    // enough for most lines that are not.
    if (sphere.distSq > sphere.radiusSq(a) + tol && sphere.distSq > sphere.radiusSq(b, c) + tol) {
        return;
    }

    const detail::LineTriangleSides<Vector3> sides(p, d, a, b, c, tol, sphere.offsetSq);
    if (sides.areKnown) {
        status = sides.depth > 0.0 ? kHit : kMiss;
        param = sides.param(d);
        point = p + d * param;
    } else {
        *this = iSolve(p, d, a, b, c, tol);
    }
}

}  // namespace geomKit
