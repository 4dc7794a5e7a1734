#include "geomKit/queries/pointFitting.h"

#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/centroid.h"

namespace geomKit {

namespace {

/// The mean outer product of the offsets from `center`. Both sums of a pair of opposite elements
/// have the same bits, so that six sums make all nine elements.
Matrix3 _covariance(std::vector<Vector3> const& pts, const Vector3& center) {
    Vector3 squares;  // xx, yy, zz
    Vector3 mixed;    // yz, zx, xy
    for (const Vector3& p : pts) {
        const Vector3 q = p - center;
        squares += Vector3(q.x * q.x, q.y * q.y, q.z * q.z);
        mixed += Vector3(q.y * q.z, q.z * q.x, q.x * q.y);
    }
    const double inv = 1.0 / static_cast<double>(pts.size());
    squares *= inv;
    mixed *= inv;
    return {Vector3(squares.x, mixed.z, mixed.y), Vector3(mixed.z, squares.y, mixed.x),
            Vector3(mixed.y, mixed.x, squares.z)};
}

}  // namespace

bool _getCenterAndEigv(std::vector<Vector3> const& pts, Vector3* center, UVector3* axis,
                       bool largest) {
    if (pts.size() < 2) return false;
    const Vector3 mean = centroid(pts);
    UVector3 axes[3];
    _covariance(pts, mean).getEigensystem(nullptr, axes);
    if (center != nullptr) *center = mean;
    if (axis != nullptr) *axis = axes[largest ? 2 : 0];
    return true;
}

bool bestFitPlane(std::vector<Vector3> const& pts, Vector3* center, UVector3* normal) {
    return _getCenterAndEigv(pts, center, normal, false);
}

bool bestFitLine(std::vector<Vector3> const& pts, Vector3* center, UVector3* dir) {
    return _getCenterAndEigv(pts, center, dir, true);
}

}  // namespace geomKit
