/// @file
/// `BoneTransform`, the affine map that carries a bone from its rest position to its pose.
#pragma once

#include <iosfwd>
#include <type_traits>
#include <typeindex>

#include "geomKit/export.h"
#include "geomKit/transforms/Matrix.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The map x -> linear x + translation, with a general linear part: rotation, twist and stretch.
///
/// Nothing checks the linear part; no operation reports an error. All are pure, safe from any
/// number of threads.
class BoneTransform {
public:
    Matrix3 linear;
    Vector3 translation;

    /// The identity.
    constexpr BoneTransform() noexcept = default;
    constexpr BoneTransform(const Matrix3& linear, const Vector3& translation) noexcept;
    /// The affine map of a 4x4 matrix, whose bottom row is not read.
    constexpr explicit BoneTransform(const Matrix& m) noexcept;

    /// The map that takes the segment restStart-restEnd onto poseStart-poseEnd: the smallest swing
    /// of its direction, then a turn of `twist` radians about the posed direction, then a stretch
    /// along it that matches the lengths. Offsets perpendicular to the bone keep their length.
    ///
    /// A rest bone of length zero makes the stretch infinite or NaN. A posed one of length zero
    /// flattens the bone, pointing along z, into a plane: `interpolate` cannot divide by that.
    GEOMKIT_API BoneTransform(const Vector3& restStart, const Vector3& restEnd,
                              const Vector3& poseStart, const Vector3& poseEnd,
                              double twist) noexcept;

    /// Blend from the identity (t <= 0 or NaN) to `x` (t >= 1). With M = R U the polar
    /// decomposition of x's linear part, the linear part is R^t U^t and the translation t times
    /// x's.
    ///
    /// Two blends by 1/2 compose to x only when R and U commute and there is no translation.
    /// When |det M| < 1e-8 (strict, absolute: a uniform scale under about 0.002), the linear part
    /// collapses to zero for every t inside: such a bone is rescaled by its owner first. Above that
    /// the eigensystem's absolute stop of 1e-8 costs accuracy: scales of 0.01 jump by up to 1e-4 of
    /// themselves at t = 1. When R turns by less than about 1e-4 rad, its axis is a coordinate axis
    /// and the turn jumps at t = 1 (see `Matrix3::getRotationAxis`). A mirror (det M < 0) has no
    /// rotation with an axis: the values are finite and meaningless; `Transform` blends mirrors.
    /// NaN gives NaN.
    ///
    /// Source: polar decomposition from the eigensystem of M M^T (Shoemake and Duff, Matrix
    /// Animation and Polar Decomposition, 1992).
    [[nodiscard]] GEOMKIT_API static BoneTransform interpolate(const BoneTransform& x,
                                                               double t) noexcept;

    /// Blend from `a` (t <= 0 or NaN) to `b` (t >= 1, up to rounding): a, followed in a's frame by
    /// the blend of a^-1 b. An `a` with |det| < 1e-8 has no inverse: the linear part is zero for
    /// t > 0.
    [[nodiscard]] GEOMKIT_API static BoneTransform interpolate(const BoneTransform& a,
                                                               const BoneTransform& b,
                                                               double t) noexcept;

    /// Equal in every number, without tolerance. Both zeros are equal, NaN equals nothing.
    [[nodiscard]] constexpr bool operator==(const BoneTransform& b) const noexcept;
    [[nodiscard]] constexpr bool operator!=(const BoneTransform& b) const noexcept;

    /// `a * b` applies b first.
    [[nodiscard]] constexpr BoneTransform operator*(const BoneTransform& b) const noexcept;
    /// The image of a point, as `transformPoint`.
    [[nodiscard]] constexpr Vector3 operator*(const Vector3& p) const noexcept;
    /// this * b.
    constexpr BoneTransform& operator*=(const BoneTransform& b) noexcept;
    /// By `Matrix3::inverse`: where |det| < 1e-8, the linear part and the translation are zero.
    [[nodiscard]] BoneTransform inverse() const noexcept;

    /// The image of a point.
    [[nodiscard]] constexpr Vector3 transformPoint(const Vector3& p) const noexcept;
    /// The image of a direction or displacement, which the translation leaves alone.
    [[nodiscard]] constexpr Vector3 transformDirection(const Vector3& d) const noexcept;
    /// The same map as a 4x4 matrix.
    [[nodiscard]] constexpr Matrix getMatrix() const noexcept { return {linear, translation}; }
};

static_assert(sizeof(BoneTransform) == 12 * sizeof(double) &&
                  std::is_standard_layout_v<BoneTransform> &&
                  std::is_trivially_copyable_v<BoneTransform>,
              "a BoneTransform is twelve numbers: linear part, translation");

/// Writes "linear [(a, b, c), ...], translation (x, y, z)" in the stream's own number format.
GEOMKIT_API std::ostream& operator<<(std::ostream& os, const BoneTransform& b);

constexpr BoneTransform::BoneTransform(const Matrix3& linear_, const Vector3& translation_) noexcept
    : linear(linear_), translation(translation_) {}

constexpr BoneTransform::BoneTransform(const Matrix& m) noexcept
    : linear(m), translation(m.translation()) {}

constexpr bool BoneTransform::operator==(const BoneTransform& b) const noexcept {
    return linear == b.linear && translation.equalsExactly(b.translation);
}

constexpr bool BoneTransform::operator!=(const BoneTransform& b) const noexcept {
    return !(*this == b);
}

constexpr BoneTransform BoneTransform::operator*(const BoneTransform& b) const noexcept {
    return {linear * b.linear, translation + linear * b.translation};
}

constexpr Vector3 BoneTransform::operator*(const Vector3& p) const noexcept {
    return transformPoint(p);
}

constexpr BoneTransform& BoneTransform::operator*=(const BoneTransform& b) noexcept {
    return *this = *this * b;
}

inline BoneTransform BoneTransform::inverse() const noexcept {
    const Matrix3 back = linear.inverse();
    return {back, -(back * translation)};
}

constexpr Vector3 BoneTransform::transformPoint(const Vector3& p) const noexcept {
    return linear * p + translation;
}

constexpr Vector3 BoneTransform::transformDirection(const Vector3& d) const noexcept {
    return linear * d;
}

}  // namespace geomKit

namespace std {

/// Goes with `==`.
template <>
struct hash<geomKit::BoneTransform> {
    std::size_t operator()(const geomKit::BoneTransform& b) const noexcept {
        using geomKit::detail::hashNumbers;
        return hashNumbers(b.translation.data(), 3, hashNumbers(b.linear.data(), 9));
    }
};

}  // namespace std
