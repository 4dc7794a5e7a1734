#include "geomKit/queries/pointFitting.h"

#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/centroid.h"

namespace geomKit {

namespace {

/// The mean outer product of the offsets from `center`. Both sums of a pair of opposite elements
/// have the same bits, so that six sums make all nine elements.
Matrix3 _covariance(const Vector3* pts, std::size_t count, const Vector3& center) {
    Vector3 squares;  // xx, yy, zz
    Vector3 mixed;    // yz, zx, xy
    for (const Vector3* p = pts; p != pts + count; ++p) {
        const Vector3 q = *p - center;
        squares += Vector3(q.x * q.x, q.y * q.y, q.z * q.z);
        mixed += Vector3(q.y * q.z, q.z * q.x, q.x * q.y);
    }
    const double inv = 1.0 / static_cast<double>(count);
    squares *= inv;
    mixed *= inv;
    return {Vector3(squares.x, mixed.z, mixed.y), Vector3(mixed.z, squares.y, mixed.x),
            Vector3(mixed.y, mixed.x, squares.z)};
}

bool _fit(const Vector3* pts, std::size_t count, Vector3* center, UVector3* axis, bool largest) {
    if (count < 2) return false;
    const Vector3 mean = centroid(pts, count);
    UVector3 axes[3];
    _covariance(pts, count, mean).getEigensystem(nullptr, axes);
    if (center != nullptr) *center = mean;
    if (axis != nullptr) *axis = axes[largest ? 2 : 0];
    return true;
}

}  // namespace

bool _getCenterAndEigv(std::vector<Vector3> const& pts, Vector3* center, UVector3* axis,
                       bool largest) {
    return _fit(pts.data(), pts.size(), center, axis, largest);
}

bool bestFitPlane(std::vector<Vector3> const& pts, Vector3* center, UVector3* normal) {
    return _getCenterAndEigv(pts, center, normal, false);
}

bool bestFitPlane(const Vector3* pts, std::size_t count, Vector3* center, UVector3* normal) {
    return _fit(pts, count, center, normal, false);
}

bool bestFitLine(std::vector<Vector3> const& pts, Vector3* center, UVector3* dir) {
    return _getCenterAndEigv(pts, center, dir, true);
}

bool bestFitLine(const Vector3* pts, std::size_t count, Vector3* center, UVector3* dir) {
    return _fit(pts, count, center, dir, true);
}

}  // namespace geomKit
