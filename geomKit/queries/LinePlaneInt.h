/// @file
/// `LinePlaneInt`: where a line meets a plane.
#pragma once

#include <cmath>
#include <cstdint>

#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Intersection of the line p + t d with the plane through q with unit normal n.
///
/// The constructor does the work; read `status` first. The line counts as parallel to the plane
/// when |d . n| is below 1e-8 (strict): an angle of 1e-8 radians. Only then is `tol` used: a
/// distance, and a line exactly `tol` away is off the plane. With `tol` = 0 a line that lies in the
/// plane therefore has status 1; pass a small positive distance.
///
/// NaN in n gives status 2 with `point` = p. NaN in d alone counts as parallel: status 1 or 2 by
/// the distance of p. NaN in p or q gives status 0 with NaN fields or, for a parallel line,
/// status 2.
class LinePlaneInt {
public:
    /// Values of `status`.
    static constexpr std::int32_t kHit = 0;       ///< one point
    static constexpr std::int32_t kParallel = 1;  ///< parallel, `tol` or more away
    static constexpr std::int32_t kInPlane = 2;   ///< parallel, closer than `tol`

    std::int32_t status = kHit;
    /// The intersection; p when parallel.
    Vector3 point;
    /// Line parameter of the intersection; 0 when parallel.
    double param = 0.0;

    LinePlaneInt(const Vector3& p, const UVector3& d, const Vector3& q, const UVector3& n,
                 double tol) noexcept;

private:
    static constexpr double kMinSine = 1e-8;
};

inline LinePlaneInt::LinePlaneInt(const Vector3& p, const UVector3& d, const Vector3& q,
                                  const UVector3& n, double tol) noexcept {
    const double rate = d * n;
    if (std::abs(rate) >= kMinSine) {
        param = ((q - p) * n) / rate;
        point = p + d * param;
        return;
    }
    point = p;
    status = tol <= std::abs((p - q) * n) ? kParallel : kInPlane;
}

}  // namespace geomKit
