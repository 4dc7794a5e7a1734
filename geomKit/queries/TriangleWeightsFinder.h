/// @file
/// `TriangleWeightsFinder`: the barycentric weights of a point.
#pragma once

#include <cmath>

#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Weights of the vertices a, b, c whose blend is the point p, once p is projected into the
/// triangle's plane along the coordinate axis that is nearest to its normal (not along the normal).
///
/// The weights sum to 1 within rounding; outside the triangle some are negative. Of equal normal
/// components the earlier axis is dropped. All weights are 0 for a degenerate triangle; tell it by
/// their sum.
///
/// Thresholds are absolute. The determinant, twice the projected area, must exceed 1e-20 (strict),
/// and `Matrix3::inverse`, which solves the system, gives zeros below 1e-8: in effect triangles
/// with less than 1e-8 of twice the area count as degenerate, edges of 1e-4 for a regular shape.
/// Scale small models up before asking: the weights do not depend on the unit. The determinant is
/// formed from the coordinates as they are, so far from the origin digits are lost: pass p - a, 0,
/// b - a and c - a there.
///
/// NaN in x or y of a vertex gives zeros, in x or y of p NaN weights. NaN in z of a vertex makes z
/// the dropped axis; a NaN along the dropped axis is not read.
class TriangleWeightsFinder {
public:
    /// The weights of a, b and c in x, y and z.
    Vector3 weights;

    TriangleWeightsFinder(const Vector3& p, const Vector3& a, const Vector3& b,
                          const Vector3& c) noexcept;

private:
    static constexpr double kMinDet = 1e-20;
};

inline TriangleWeightsFinder::TriangleWeightsFinder(const Vector3& p, const Vector3& a,
                                                    const Vector3& b, const Vector3& c) noexcept {
    const Vector3 n = (b - a) % (c - a);
    const double nx = std::abs(n.x);
    const double ny = std::abs(n.y);
    const double nz = std::abs(n.z);
    const bool dropX = nx >= ny && nx >= nz;
    const bool dropY = !dropX && ny >= nx && ny >= nz;
    const auto projected = [dropX, dropY](const Vector3& v) {
        return Vector3(dropX ? v.y : v.x, dropX || dropY ? v.z : v.y, 1.0);
    };
    const Matrix3 m(projected(a), projected(b), projected(c));
    if (std::abs(m.determinant()) > kMinDet) weights = m.inverse() * projected(p);
}

}  // namespace geomKit
