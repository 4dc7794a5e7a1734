/// @file
/// `LineSphereInt`: where a line meets a sphere.
#pragma once

#include <cmath>
#include <cstdint>

#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Intersections of the line p + t d with a sphere.
///
/// The constructor does the work; read `numHits` first. `tol` is a margin on squared distances: the
/// line is tangent when its squared distance from the centre is above radius^2 - tol and at most
/// radius^2 + tol. So a margin of length e about the radius r is asked for by tol = 2 r e. With
/// `tol` = 0 a line that touches exactly has two equal hits; with a negative `tol` there is no
/// tangent, and lines with a squared distance above radius^2 + tol miss. The sign of the radius
/// does not matter. NaN in the line or the centre gives one hit with NaN fields, NaN in the radius
/// or in `tol` one hit at the point nearest to the centre.
class LineSphereInt {
public:
    /// 0, 1 (tangent within the margin) or 2.
    std::int32_t numHits = 0;
    /// First hit; (0, 0, 0) when there is none.
    Vector3 point1;
    /// Second hit, `point1` again for a tangent; (0, 0, 0) when there is none.
    Vector3 point2;
    /// Line parameter of `point1`, the smaller one; 0 when there is no hit.
    double param1 = 0.0;
    /// Line parameter of `point2`; 0 when there is no hit.
    double param2 = 0.0;

    LineSphereInt(const Vector3& p, const UVector3& d, const Vector3& centre, double radius,
                  double tol) noexcept;
};

inline LineSphereInt::LineSphereInt(const Vector3& p, const UVector3& d, const Vector3& centre,
                                    double radius, double tol) noexcept {
    const double radiusSq = radius * radius;
    const Vector3 w = centre - p;
    const double h = w * d;
    const double gapSq = w.lengthSq() - h * h;
    if (gapSq > radiusSq + tol) return;
    if (gapSq <= radiusSq - tol) {
        const double s = std::sqrt(radiusSq - gapSq);
        numHits = 2;
        param1 = h - s;
        param2 = h + s;
        point1 = p + d * param1;
        point2 = p + d * param2;
        return;
    }
    numHits = 1;
    param1 = h;
    param2 = h;
    point1 = p + d * h;
    point2 = point1;
}

}  // namespace geomKit
