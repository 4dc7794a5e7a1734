#include "geomKit/implicits/ImplEllipsoid.h"

#include <array>
#include <cmath>

#include "geomKit/vAlgebra/centroid.h"

namespace geomKit {

namespace {

/// Smallest second moment, and smallest reciprocal of one, that the shape is made from.
constexpr double kMinEigenvalue = 1e-6;

/// Smallest value of the quadratic form that the shape is scaled by.
constexpr double kMinScale = 1e-8;

/// Below this value of the quadratic form the gradient is zero.
constexpr double kCentreTol = 1e-8;

constexpr int kDimension = 3;

/// q^T M q. The rows of M q are summed in the order z, x, y.
double _quadraticForm(const Matrix3& M, const Vector3& q) {
    const Vector3 Mq(M(0, 2) * q.z + M(0, 0) * q.x + M(0, 1) * q.y,
                     M(1, 2) * q.z + M(1, 0) * q.x + M(1, 1) * q.y,
                     M(2, 2) * q.z + M(2, 0) * q.x + M(2, 1) * q.y);
    return q * Mq;
}

}  // namespace

ImplEllipsoid::ImplEllipsoid(const std::vector<Vector3>& points) noexcept {
    computeMatrix(points, centroid(points));
}

ImplEllipsoid::ImplEllipsoid(const std::vector<Vector3>& points, const Vector3& center_) noexcept {
    computeMatrix(points, center_);
}

void ImplEllipsoid::computeMatrix(const std::vector<Vector3>& points,
                                  const Vector3& center_) noexcept {
    center = center_;
    matrix.zero();
    for (const Vector3& p : points) {
        const Vector3 q = p - center;
        matrix = Matrix3::tensor(q, q) + matrix;
    }
    matrix = matrix * (1.0 / static_cast<double>(points.size()));

    std::array<double, kDimension> eigs{};
    std::array<UVector3, kDimension> vecs;
    if (matrix.getEigensystem(eigs.data(), vecs.data()) == kDimension) {
        for (double& eig : eigs) {
            const double inverse = 1.0 / (eig > kMinEigenvalue ? eig : kMinEigenvalue);
            eig = inverse > kMinEigenvalue ? inverse : kMinEigenvalue;
        }
        matrix = Matrix3::getMatrixFromEigs(eigs.data(), vecs.data());
    } else {
        matrix.identity();
    }

    double scale = 0.0;
    for (const Vector3& p : points) {
        const double v = _quadraticForm(matrix, p - center);
        if (!(v < scale)) scale = v;
    }
    if (!(scale >= kMinScale)) scale = kMinScale;
    matrix /= scale;
}

bool ImplEllipsoid::evaluate(const Vector3& p, double* value, Vector3* gradient,
                             Matrix3* hessian) const noexcept {
    const Vector3 d = p - center;
    const Vector3 Md = matrix * d;
    const double x = d * Md;
    if (value != nullptr) *value = std::sqrt(x);
    if (gradient != nullptr) *gradient = x < kCentreTol ? Vector3() : Md * (1.0 / x);
    if (hessian != nullptr) *hessian = matrix;
    return true;
}

ImplEllipsoid ImplEllipsoid::thickened(double distance) const noexcept {
    ImplEllipsoid result = *this;
    std::array<double, kDimension> eigs{};
    std::array<UVector3, kDimension> vecs;
    if (matrix.getEigensystem(eigs.data(), vecs.data()) != kDimension) return result;
    for (double& eig : eigs) {
        const double semiAxis = std::sqrt(1.0 / (eig < kMinEigenvalue ? kMinEigenvalue : eig));
        const double root = 1.0 / (semiAxis + distance);
        eig = root * root;
    }
    result.matrix = Matrix3::getMatrixFromEigs(eigs.data(), vecs.data());
    return result;
}

// NOLINTNEXTLINE(readability-make-member-function-const): hosts hold pointers to it as it is
ImplEllipsoid* ImplEllipsoid::thicken(double distance) {
    return new ImplEllipsoid(thickened(distance));
}

}  // namespace geomKit
