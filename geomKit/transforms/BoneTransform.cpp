#include "geomKit/transforms/BoneTransform.h"

#include <cmath>
#include <ostream>

#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

BoneTransform::BoneTransform(const Vector3& restStart, const Vector3& restEnd,
                             const Vector3& poseStart, const Vector3& poseEnd,
                             double twist) noexcept {
    const UVector3 restDirection(restEnd - restStart);
    const UVector3 poseDirection(poseEnd - poseStart);
    const Matrix3 swing = Matrix3::rotationMatrix(restDirection, poseDirection);
    const Matrix3 turned = Matrix3::rotationMatrix(poseDirection, twist) * swing;

    const Matrix3 toX = Matrix3::rotationMatrix(poseDirection, UVector3(1.0, 0.0, 0.0));
    const double ratio = dist(poseStart, poseEnd) / dist(restStart, restEnd);
    linear = toX.transpose() * (Matrix3::diagonal(ratio, 1.0, 1.0) * (toX * turned));
    translation = poseStart - linear * restStart;
}

BoneTransform BoneTransform::interpolate(const BoneTransform& x, double t) noexcept {
    if (!(t > 0.0)) return {};
    if (t >= 1.0) return x;

    // M = V R with V = E D E^-1 the left stretch, so N = D^-1 E^-1 M holds R = E N and the right
    // stretch U = N^-1 D N, of which a power is a power of the diagonal.
    const Matrix3& M = x.linear;
    double eigs[3];
    UVector3 axes[3];
    (M * M.transpose()).getEigensystem(eigs, axes);
    const Matrix3 E(axes[0], axes[1], axes[2]);
    double d[3];
    for (int i = 0; i < 3; ++i) {
        d[i] = std::sqrt(std::abs(eigs[i]));  // rounding may leave a tiny negative eigenvalue
    }
    const Matrix3 N = (E * Matrix3::diagonal(d[0], d[1], d[2])).inverse() * M;

    const Matrix3 R = E * N;
    const UVector3 axis = R.getRotationAxis();
    const double angle = R.getRotationAngle(&axis);
    const Matrix3 Q = Matrix3::rotationMatrix(axis, angle * t);
    const Matrix3 Dt = Matrix3::diagonal(std::pow(d[0], t), std::pow(d[1], t), std::pow(d[2], t));

    return {Q * N.inverse() * Dt * N, t * x.translation};
}

BoneTransform BoneTransform::interpolate(const BoneTransform& a, const BoneTransform& b,
                                         double t) noexcept {
    return a * interpolate(a.inverse() * b, t);
}

std::ostream& operator<<(std::ostream& os, const BoneTransform& b) {
    return os << "linear " << b.linear << ", translation " << b.translation;
}

}  // namespace geomKit
