#include "geomKit/implicits/ImplEllipsoid.h"

#include <array>
#include <cmath>
#include <memory>

namespace {

/// Smallest second moment, and smallest reciprocal of one, that the shape is made from.
constexpr double kMinEigenvalue = 1e-6;

/// Smallest value of the quadratic form that the shape is scaled by.
constexpr double kMinScale = 1e-8;

/// Below this value of the quadratic form the gradient is zero.
constexpr double kCentreTol = 1e-8;

constexpr int kDimension = 3;

Vector3 _mean(const std::vector<Vector3>& points) {
    Vector3 sum;
    for (const Vector3& p : points)
        sum += p;
    return sum * (1.0 / static_cast<double>(points.size()));
}

/// q^T M q. The rows of M q are summed in the order z, x, y.
double _quadraticForm(const Matrix3& M, const Vector3& q) {
    const Vector3 Mq(M(0, 2) * q.z + M(0, 0) * q.x + M(0, 1) * q.y,
                     M(1, 2) * q.z + M(1, 0) * q.x + M(1, 1) * q.y,
                     M(2, 2) * q.z + M(2, 0) * q.x + M(2, 1) * q.y);
    return q * Mq;
}

}  // namespace

ImplEllipsoid::ImplEllipsoid(const std::vector<Vector3>& points) {
    computeMatrix(points, _mean(points));
}

ImplEllipsoid::ImplEllipsoid(const std::vector<Vector3>& points, const Vector3& center_) {
    computeMatrix(points, center_);
}

void ImplEllipsoid::computeMatrix(const std::vector<Vector3>& points, const Vector3& center_) {
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
    for (int r = 0; r < kDimension; ++r) {
        for (int c = 0; c < kDimension; ++c)
            matrix(r, c) /= scale;
    }
}

bool ImplEllipsoid::evaluate(const Vector3& p, double* value, Vector3* gradient,
                             Matrix3* hessian) const {
    const Vector3 d = p - center;
    const Vector3 Md = matrix * d;
    const double x = d * Md;
    if (value != nullptr) *value = std::sqrt(x);
    if (gradient != nullptr) *gradient = x < kCentreTol ? Vector3() : Md * (1.0 / x);
    if (hessian != nullptr) *hessian = matrix;
    return true;
}

// NOLINTNEXTLINE(readability-make-member-function-const): callers hold pointers to it as it is
ImplEllipsoid* ImplEllipsoid::thicken(double distance) {
    auto thickened = std::make_unique<ImplEllipsoid>(*this);
    std::array<double, kDimension> eigs{};
    std::array<UVector3, kDimension> vecs;
    if (matrix.getEigensystem(eigs.data(), vecs.data()) != kDimension) return thickened.release();
    for (double& eig : eigs) {
        const double semiAxis = std::sqrt(1.0 / (eig < kMinEigenvalue ? kMinEigenvalue : eig));
        const double root = 1.0 / (semiAxis + distance);
        eig = root * root;
    }
    thickened->matrix = Matrix3::getMatrixFromEigs(eigs.data(), vecs.data());
    return thickened.release();
}
