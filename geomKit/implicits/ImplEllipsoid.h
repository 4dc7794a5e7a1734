/// @file
/// `ImplEllipsoid`, an ellipsoid around a cloud of points.
#pragma once

#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The surface f = 1 of the field f(p) = sqrt((p - center)^T matrix (p - center)), fitted to points
/// so that f <= 1 at each of them, to rounding, and f = 1 at the farthest.
///
/// The principal axes and the ratios of their lengths come from the second moments of the points
/// about the centre; it is not the smallest ellipsoid around them, which costs more to find.
///
/// **Units matter.** Second moments below 1e-6 count as 1e-6 and above 1e6 as 1e6: a cloud thinner
/// than about 1e-3 along an axis gets an ellipsoid as if it were that thick, and spreads beyond
/// about 1e3 are all alike. `thickened` treats semi-axes above 1e3 as 1e3. Moments that differ by
/// less than about 1e-8 are not told apart. Choose units in which the cloud measures about 1 to
/// 100, and rescale the answer.
///
/// Functions are pure but for `computeMatrix`; any number of threads may use distinct objects or
/// evaluate one object. Only `thicken` allocates.
class ImplEllipsoid {
public:
    Vector3 center;
    Matrix3 matrix;  ///< Symmetric to rounding and positive definite after a fit to finite points.

    /// Fits about the mean of the points. No points give a centre and a matrix of NaN.
    GEOMKIT_API explicit ImplEllipsoid(const std::vector<Vector3>& points) noexcept;

    /// Fits about a given centre.
    GEOMKIT_API ImplEllipsoid(const std::vector<Vector3>& points, const Vector3& center) noexcept;

    /// Sets `center` and fits `matrix` anew.
    ///
    /// Points that all lie at the centre give the sphere of radius 1e-7, matrix = 1e14 I. No
    /// points, or points that are not finite, give entries that are finite or NaN, without meaning.
    GEOMKIT_API void computeMatrix(const std::vector<Vector3>& points,
                                   const Vector3& center) noexcept;

    /// The field at `p`. Each output may be null. Always returns true.
    ///
    /// With d = p - center and x = d^T matrix d: `value` is sqrt(x); NaN where a `matrix` that is
    /// not positive makes x negative. `gradient` is (matrix d) / x, zero where x < 1e-8 (strict):
    /// it points along the true gradient, (matrix d) / sqrt(x), but is that divided by the value
    /// once more; multiply by the value to have it. `hessian` is `matrix`, half the second
    /// derivative of x, not of the value.
    GEOMKIT_API bool evaluate(const Vector3& p, double* value, Vector3* gradient,
                              Matrix3* hessian) const noexcept;

    /// The ellipsoid whose semi-axes are longer by `distance`.
    ///
    /// Eigenvalues of the matrix below 1e-6, so semi-axes above 1e3, count as 1e-6 first. A
    /// negative distance shrinks. Minus a semi-axis gives an infinite eigenvalue and a matrix of
    /// NaN and infinities; beyond that the axis grows again, to |semi-axis + distance|. The result
    /// is not the surface at that distance, which is no ellipsoid, but touches it on the axes.
    [[nodiscard]] GEOMKIT_API ImplEllipsoid thickened(double distance) const noexcept;
    /// The same as a new object that the caller owns. This object is unchanged.
    [[nodiscard]] GEOMKIT_API ImplEllipsoid* thicken(double distance);
};

}  // namespace geomKit
