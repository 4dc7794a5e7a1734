/// @file
/// `Transform`, the similarity transform: rotation, translation and uniform scale.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <type_traits>
#include <typeindex>

#include "geomKit/export.h"
#include "geomKit/transforms/Matrix.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The map x -> scale (rotation x) + translation.
///
/// The three are kept apart, so that the inverse is a transposition and a blend treats each in its
/// own way. `rotation` is a proper rotation as long as the inputs are: nothing checks or repairs
/// it, and `inverse` and `interpolate` rely on it. A mirror is a proper rotation with a negative
/// scale. No operation reports an error; all are pure, safe from any number of threads.
class Transform {
public:
    Matrix3 rotation;
    Vector3 translation;
    double scale;

    /// Uniform scale about the origin; by default the identity. Implicit, so that a factor may be
    /// written where a transform is wanted.
    constexpr Transform(double s = 1.0) noexcept : scale(s) {}
    constexpr Transform(const Matrix3& rotation, const Vector3& translation,
                        double scale = 1.0) noexcept;
    /// Rotation by `angle` radians about `axis`, of any length, through the origin. A null axis is
    /// `UVector3`'s (0, 0, 1).
    GEOMKIT_API Transform(const Vector3& axis, double angle) noexcept;
    /// The frame at `t` whose z axis is `u` and whose x axis is `v`; y is u x v. Right-handed for
    /// perpendicular `u` and `v`, which is not checked.
    constexpr Transform(const UVector3& u, const UVector3& v, const Vector3& t) noexcept;

    /// The mirror in the plane through `p` with normal `n`: a half turn about n with scale -1.
    [[nodiscard]] GEOMKIT_API static Transform reflection(const Vector3& p,
                                                          const UVector3& n) noexcept;

    /// The rotation about their common normal that takes `from` to `to`. Directions within 0.03
    /// degrees of parallel (`Vector3::isParallel`) give the identity, not the tiny turn between
    /// them; within 0.03 degrees of opposite, a half turn about the second `getBasis` vector of
    /// `from`. `Matrix3::rotationMatrix(from, to)` keeps the tiny turns.
    [[nodiscard]] GEOMKIT_API static Transform rotate(const UVector3& from,
                                                      const UVector3& to) noexcept;

    /// Blend from `a` (t <= 0 or NaN) to `b` (t >= 1), both returned as they are at the ends: the
    /// translation linearly, the scale's magnitude geometrically, the rotation about the single
    /// axis of the relative rotation. Between scales of opposite sign the sign flips abruptly just
    /// after t = 0.5, and a scale of 0 at either end makes all of the inside 0.
    ///
    /// Relative rotations under about 1e-4 rad are given a coordinate axis by
    /// `Matrix3::getRotationAxis`: only the part of the turn about that axis is blended, and the
    /// rest comes at t = 1. A caller who blends finely builds `Matrix3::rotationMatrix` from
    /// (R32 - R23, R13 - R31, R21 - R12) of the relative rotation R instead.
    [[nodiscard]] GEOMKIT_API static Transform interpolate(const Transform& a, const Transform& b,
                                                           double t) noexcept;

    /// `interpolate` at each of `count` parameters into `out`, which may be null, with the same
    /// bits. Allocates nothing; disjoint ranges may run in several threads. `a` and `b` may lie in
    /// `out`. The axis and the angle are found once, so that a blend takes 0.4 of the time of a
    /// single call.
    GEOMKIT_API static void interpolate(const Transform& a, const Transform& b, const double* t,
                                        std::size_t count, Transform* out) noexcept;

    /// Equal in every number, without tolerance. Both zeros are equal, NaN equals nothing.
    [[nodiscard]] constexpr bool operator==(const Transform& b) const noexcept;
    [[nodiscard]] constexpr bool operator!=(const Transform& b) const noexcept;

    /// `a * b` applies b first.
    [[nodiscard]] constexpr Transform operator*(const Transform& b) const noexcept;
    /// The image of a point, as `transformPoint`.
    [[nodiscard]] constexpr Vector3 operator*(const Vector3& p) const noexcept;
    /// this * b.
    constexpr Transform& operator*=(const Transform& b) noexcept;
    /// The rotation is inverted by transposition; a scale of 0 gives infinities and NaN.
    [[nodiscard]] constexpr Transform inverse() const noexcept;
    /// This without the translation.
    [[nodiscard]] constexpr Transform linearComponent() const noexcept;

    /// The image of a point.
    [[nodiscard]] constexpr Vector3 transformPoint(const Vector3& p) const noexcept;
    /// The image of a direction or displacement, which the translation leaves alone.
    [[nodiscard]] constexpr Vector3 transformDirection(const Vector3& d) const noexcept;

    /// scale * rotation.
    [[nodiscard]] constexpr Matrix3 getLinear() const noexcept { return rotation * scale; }
    /// The same map as a 4x4 matrix.
    [[nodiscard]] constexpr Matrix getMatrix() const noexcept { return {getLinear(), translation}; }

    /// Does nothing: the place for a host's breakpoint. `interpolate` calls it on both ends.
    void assertValid() const noexcept {}
};

static_assert(sizeof(Transform) == 13 * sizeof(double) && std::is_standard_layout_v<Transform> &&
                  std::is_trivially_copyable_v<Transform>,
              "a Transform is thirteen numbers: rotation, translation, scale");

/// Writes "rotation [(a, b, c), ...], translation (x, y, z), scale s" in the stream's own number
/// format.
GEOMKIT_API std::ostream& operator<<(std::ostream& os, const Transform& t);

constexpr Transform::Transform(const Matrix3& rotation_, const Vector3& translation_,
                               double scale_) noexcept
    : rotation(rotation_), translation(translation_), scale(scale_) {}

constexpr Transform::Transform(const UVector3& u, const UVector3& v, const Vector3& t) noexcept
    : Transform(Matrix3(v, u % v, u), t) {}

constexpr bool Transform::operator==(const Transform& b) const noexcept {
    return rotation == b.rotation && translation.equalsExactly(b.translation) && scale == b.scale;
}

constexpr bool Transform::operator!=(const Transform& b) const noexcept {
    return !(*this == b);
}

constexpr Transform Transform::operator*(const Transform& b) const noexcept {
    return {rotation * b.rotation, translation + rotation * (b.translation * scale),
            scale * b.scale};
}

constexpr Vector3 Transform::operator*(const Vector3& p) const noexcept {
    return transformPoint(p);
}

constexpr Transform& Transform::operator*=(const Transform& b) noexcept {
    return *this = *this * b;
}

constexpr Transform Transform::inverse() const noexcept {
    const double s = 1.0 / scale;
    const Matrix3 back = rotation.transpose();
    return {back, -(back * (translation * s)), s};
}

constexpr Transform Transform::linearComponent() const noexcept {
    return {rotation, Vector3(), scale};
}

constexpr Vector3 Transform::transformPoint(const Vector3& p) const noexcept {
    return transformDirection(p) + translation;
}

constexpr Vector3 Transform::transformDirection(const Vector3& d) const noexcept {
    return (rotation * d) * scale;
}

}  // namespace geomKit

namespace std {

/// Goes with `==`.
template <>
struct hash<geomKit::Transform> {
    std::size_t operator()(const geomKit::Transform& t) const noexcept {
        using geomKit::detail::hashNumbers;
        const std::size_t linear = hashNumbers(t.rotation.data(), 9, hashNumbers(&t.scale, 1));
        return hashNumbers(t.translation.data(), 3, linear);
    }
};

}  // namespace std
