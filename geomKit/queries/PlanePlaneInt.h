/// @file
/// `PlanePlaneInt`: where two planes meet.
#pragma once

#include <cmath>
#include <cstdint>

#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Intersection line of the planes through p1 with unit normal nA and through p2 with nB.
///
/// The constructor does the work; read `status` first. Planes count as parallel, whichever way
/// their normals point, when |nA x nB| is below 1e-8 (strict, compared through the square): an
/// angle of 1e-8 radians. Only then is `tol` used: a distance, strict, measured along nA between
/// the two given points. With `tol` = 0 identical planes have status 1; pass a small positive
/// distance. NaN in a normal gives status 0 and NaN fields.
class PlanePlaneInt {
public:
    /// Values of `status`.
    static constexpr std::int32_t kMeet = 0;        ///< the planes meet in a line
    static constexpr std::int32_t kParallel = 1;    ///< parallel, `tol` or more apart
    static constexpr std::int32_t kCoincident = 2;  ///< parallel, closer than `tol`

    std::int32_t status = kMeet;
    /// A point of the line: the one that p1 reaches inside the first plane, square to the line.
    /// (0, 0, 0) when parallel.
    Vector3 point;
    /// Unit direction nA x nB of the line. When parallel, the cross product as it is, nearly zero.
    Vector3 dir;

    PlanePlaneInt(const Vector3& p1, const UVector3& nA, const Vector3& p2, const UVector3& nB,
                  double tol) noexcept;
};

inline PlanePlaneInt::PlanePlaneInt(const Vector3& p1, const UVector3& nA, const Vector3& p2,
                                    const UVector3& nB, double tol) noexcept
    : dir(nA % nB) {
    if (dir.lengthSq() < kCrossSqTol) {
        status = std::abs((p1 - p2) * nA) < tol ? kCoincident : kParallel;
        return;
    }
    dir = dir.normalize();
    const Vector3 m = nA % dir;
    const double s = ((p2 - p1) * nB) / (m * nB);
    point = p1 + m * s;
}

}  // namespace geomKit
