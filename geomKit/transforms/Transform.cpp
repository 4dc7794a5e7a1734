#include "geomKit/transforms/Transform.h"

#include <cmath>

#include "geomKit/vAlgebra/vectorUtils.h"

namespace {

constexpr double kPi = 3.141592653589793;
/// Selects the default angle of `Vector3::isParallel`.
constexpr double kDefaultTol = -1.0;

}  // namespace

Transform::Transform(const Vector3& axis, double angle)
    : rotation(Matrix3::rotationMatrix(UVector3(axis), angle)), scale(1.0) {}

Transform Transform::reflection(const Vector3& p, const UVector3& n) {
    const Matrix3 unit;
    const Vector3 twice = n * 2.0;
    const auto halfTurn = [&](int i) { return twice * (n * unit.column(i)) - unit.column(i); };
    Transform mirror(-1.0);
    mirror.rotation = Matrix3(halfTurn(0), halfTurn(1), halfTurn(2));
    mirror.translation = n * (2.0 * (p * n));
    return mirror;
}

Transform Transform::rotate(const UVector3& from, const UVector3& to) {
    if (!from.isParallel(to, kDefaultTol)) {
        const Vector3 axis = from % to;
        return {axis, getAngleBetween(from, to, axis)};
    }
    Vector3 unused;
    Vector3 axis;
    getBasis(from, unused, axis);
    return {axis, from * to > 0.0 ? 0.0 : kPi};
}

Transform Transform::interpolate(const Transform& a, const Transform& b, double t) {
    if (!(t > 0.0)) return a;
    if (t >= 1.0) return b;
    a.assertValid();
    b.assertValid();
    const double magnitude = std::pow(std::abs(a.scale), 1.0 - t) * std::pow(std::abs(b.scale), t);
    const bool mirrored = (t <= 0.5 ? a.scale : b.scale) < 0.0;

    const Matrix3 relative = b.rotation * a.rotation.transpose();
    const UVector3 axis = relative.getRotationAxis();
    const double angle = relative.getRotationAngle(&axis);

    Transform blend(mirrored ? -magnitude : magnitude);
    blend.rotation = Matrix3::rotationMatrix(axis, angle * t) * a.rotation;
    blend.translation = (1.0 - t) * a.translation + t * b.translation;
    return blend;
}
