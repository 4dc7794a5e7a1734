#include "geomKit/transforms/Transform.h"

#include <cmath>
#include <ostream>

#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

namespace {

constexpr double kPi = 3.141592653589793;
/// Selects the default angle of `Vector3::isParallel`.
constexpr double kDefaultTol = -1.0;

/// The way from one transform to another: what does not depend on how far along it one is.
class Path {
public:
    Path(const Transform& a, const Transform& b) noexcept : a_(a), b_(b) {
        a.assertValid();
        b.assertValid();
        const Matrix3 relative = b.rotation * a.rotation.transpose();
        axis_ = relative.getRotationAxis();
        angle_ = relative.getRotationAngle(&axis_);
    }

    /// For t strictly between 0 and 1.
    [[nodiscard]] Transform between(double t) const noexcept {
        const double magnitude =
            std::pow(std::abs(a_.scale), 1.0 - t) * std::pow(std::abs(b_.scale), t);
        const bool isMirror = (t <= 0.5 ? a_.scale : b_.scale) < 0.0;
        return {Matrix3::rotationMatrix(axis_, angle_ * t) * a_.rotation,
                lerp(a_.translation, b_.translation, t), isMirror ? -magnitude : magnitude};
    }

private:
    const Transform& a_;
    const Transform& b_;
    UVector3 axis_;
    double angle_;
};

}  // namespace

Transform::Transform(const Vector3& axis, double angle) noexcept
    : Transform(Matrix3::rotationMatrix(UVector3(axis), angle), Vector3()) {}

Transform Transform::reflection(const Vector3& p, const UVector3& n) noexcept {
    const Matrix3 unit;
    const Vector3 twice = n * 2.0;
    const auto halfTurn = [&](int i) { return twice * (n * unit.column(i)) - unit.column(i); };
    return {Matrix3(halfTurn(0), halfTurn(1), halfTurn(2)), n * (2.0 * (p * n)), -1.0};
}

Transform Transform::rotate(const UVector3& from, const UVector3& to) noexcept {
    if (!from.isParallel(to, kDefaultTol)) {
        const Vector3 axis = from % to;
        return {axis, getAngleBetween(from, to, axis)};
    }
    Vector3 unused;
    Vector3 axis;
    getBasis(from, unused, axis);
    return {axis, from * to > 0.0 ? 0.0 : kPi};
}

Transform Transform::interpolate(const Transform& a, const Transform& b, double t) noexcept {
    if (!(t > 0.0)) return a;
    if (t >= 1.0) return b;
    return Path(a, b).between(t);
}

void Transform::interpolate(const Transform& a, const Transform& b, const double* t,
                            std::size_t count, Transform* out) noexcept {
    if (out == nullptr) return;
    const Transform start = a;
    const Transform end = b;
    const Path path(start, end);
    for (std::size_t i = 0; i < count; ++i)
        out[i] = !(t[i] > 0.0) ? start : t[i] >= 1.0 ? end : path.between(t[i]);
}

std::ostream& operator<<(std::ostream& os, const Transform& t) {
    return os << "rotation " << t.rotation << ", translation " << t.translation << ", scale "
              << t.scale;
}

}  // namespace geomKit
