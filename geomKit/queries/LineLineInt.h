/// @file
/// `LineLineInt`: where two lines meet, or come closest.
#pragma once

#include <cmath>
#include <cstdint>

#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Closest approach of the lines p1 + s d1 and p2 + t d2.
///
/// The constructor does the work; read `status` first. `tol` is a distance, compared strictly
/// through its square: a gap of exactly `tol` is too far, a negative `tol` acts as its absolute
/// value, and with `tol` = 0 no lines ever meet or coincide. Pass a small positive distance.
///
/// The form for unit directions calls lines parallel when 1 - |d1 . d2| < 5e-17, which in double
/// precision means that |d1 . d2| rounds to 1 or more. Normalised directions often fall one bit
/// short of that, for a third of all directions. Then coincident lines are solved as if they
/// crossed: status 0 when p1 = p2, else 3 with meaningless parameters; parallel lines apart give 3.
/// The form for free directions calls directions parallel within 0.03 degrees; a caller who must
/// recognise parallel lines uses that one (`Vector3(d1)`, `Vector3(d2)` for unit directions).
///
/// A zero direction passed to the free form gives non-finite parameters and status 3. NaN or
/// infinite coordinates give status 3 or a parallel status, never 0. Mixing a `UVector3` and a
/// `Vector3` direction in one call is ambiguous and does not compile.
///
/// Source: the normal equations of the squared distance between two points of the lines.
class LineLineInt {
public:
    /// Values of `status`.
    static constexpr std::int32_t kMeet = 0;        ///< the lines meet within `tol`
    static constexpr std::int32_t kParallel = 1;    ///< parallel, `tol` or more apart
    static constexpr std::int32_t kCoincident = 2;  ///< parallel, closer than `tol`
    static constexpr std::int32_t kSkew = 3;        ///< closest approach `tol` or more

    std::int32_t status = kSkew;
    /// Meeting lines: the closest point on the first line. Parallel lines: p1. Skew: (0, 0, 0).
    Vector3 point;
    /// Parameter of the closest point on the first line, in units of |d1|; 0 for parallel lines.
    double param1 = 0.0;
    /// Parameter of the closest point on the second line, in units of |d2|; for parallel lines that
    /// of the foot of p1.
    double param2 = 0.0;

    /// Lines with unit directions.
    LineLineInt(const Vector3& p1, const UVector3& d1, const Vector3& p2, const UVector3& d2,
                double tol) noexcept;
    /// Lines with directions of any length.
    LineLineInt(const Vector3& p1, Vector3 d1, const Vector3& p2, const Vector3& d2,
                double tol) noexcept;

private:
    /// Sets `status` and `point` from the parameters; w = p2 - p1.
    void iSetByGap(const Vector3& p1, const Vector3& d1, const Vector3& w, const Vector3& d2,
                   double tol) noexcept;
};

inline LineLineInt::LineLineInt(const Vector3& p1, const UVector3& d1, const Vector3& p2,
                                const UVector3& d2, double tol) noexcept {
    const double c = d1 * d2;
    const Vector3 w = p2 - p1;
    if (1.0 - std::abs(c) < 0.5 * kCrossSqTol) {
        const Vector3 back = p1 - p2;
        point = p1;
        param2 = back * d2;
        const Vector3 offset = back + d1 * (w * d1);
        status = offset.lengthSq() < tol * tol ? kCoincident : kParallel;
        return;
    }
    const double den = 1.0 - c * c;
    const double w1 = w * d1;
    const double w2 = w * d2;
    param1 = (w1 - c * w2) / den;
    param2 = (c * w1 - w2) / den;
    iSetByGap(p1, d1, w, d2, tol);
}

inline LineLineInt::LineLineInt(const Vector3& p1, Vector3 d1, const Vector3& p2, const Vector3& d2,
                                double tol) noexcept {
    const double a = d1 * d1;
    const double e = d2 * d2;
    const double b = d1 * d2;
    const Vector3 w = p2 - p1;
    if (d1.isParallel(d2, -1.0)) {
        const Vector3 back = p1 - p2;
        point = p1;
        param2 = (back * d2) / e;
        const Vector3 offset = back + d1 * ((w * d1) / a);
        status = tol * tol <= offset.lengthSq() ? kParallel : kCoincident;
        return;
    }
    const double den = a * e - b * b;
    const double w1 = w * d1;
    const double w2 = w * d2;
    param1 = (e * w1 - b * w2) / den;
    param2 = (b * w1 - a * w2) / den;
    iSetByGap(p1, d1, w, d2, tol);
}

inline void LineLineInt::iSetByGap(const Vector3& p1, const Vector3& d1, const Vector3& w,
                                   const Vector3& d2, double tol) noexcept {
    const Vector3 gap = (w + d2 * param2) - d1 * param1;
    if (gap.lengthSq() < tol * tol) {
        status = kMeet;
        point = p1 + d1 * param1;
    }
}

}  // namespace geomKit
