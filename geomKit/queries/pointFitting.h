/// @file
/// Least-squares planes and lines through point sets, from the eigenvectors of the covariance.
/// Pure functions, safe from any number of threads; none allocates.
///
/// The eigenvectors come from `Matrix3::getEigensystem`, whose tolerances are absolute: it leaves
/// off-diagonal covariances that sum to 1e-8 as they are. A set whose spread is below about 1e-3 of
/// a unit therefore gets an axis that is off by degrees, and below 1e-7 a coordinate axis. Scale
/// such sets up before the fit: the axis is the same, and the centre scales back.
///
/// Fewer than two points give false and leave the outputs alone. Coincident points have no
/// direction: the plane's normal is (1, 0, 0) and the line's (0, 0, 1). Collinear points fit any
/// plane through them: the normal is one of the perpendiculars. Coordinates that are NaN, infinite
/// or so large that their squares overflow still give true, with a centre and an axis that may be
/// NaN. The sign of an axis is whatever the eigensystem gives; orient it by a direction you know.
///
/// Source: Pearson, On lines and planes of closest fit to systems of points in space, 1901.
#pragma once

#include <cstddef>
#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The centroid of `pts` and the principal axis of greatest spread if `largest`, else of least
/// spread; each output may be null. False, and nothing written, for fewer than two points. Sums run
/// in the order of the points; the covariance is divided by their number n, not by n - 1.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that hosts know.
GEOMKIT_API bool _getCenterAndEigv(std::vector<Vector3> const& pts, Vector3* center, UVector3* axis,
                                   bool largest);

/// The plane that minimises the sum of squared distances: centroid and unit normal.
GEOMKIT_API bool bestFitPlane(std::vector<Vector3> const& pts, Vector3* center, UVector3* normal);
/// The same for an array.
GEOMKIT_API bool bestFitPlane(const Vector3* pts, std::size_t count, Vector3* center,
                              UVector3* normal);

/// The line that minimises the sum of squared distances: centroid and unit direction.
GEOMKIT_API bool bestFitLine(std::vector<Vector3> const& pts, Vector3* center, UVector3* dir);
/// The same for an array.
GEOMKIT_API bool bestFitLine(const Vector3* pts, std::size_t count, Vector3* center, UVector3* dir);

}  // namespace geomKit
