/// @file
/// `BoneTransform`, the affine map that carries a bone from its rest position to its pose.
#pragma once

#include "geomKit/export.h"
#include "geomKit/transforms/Matrix.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/Vector3.h"

/// The map x -> linear x + translation, with a general linear part: rotation, twist and stretch.
///
/// Nothing checks the linear part; no operation reports an error. All are pure, safe from any
/// number of threads.
class BoneTransform {
public:
    Matrix3 linear;
    Vector3 translation;

    /// The identity.
    constexpr BoneTransform() = default;

    /// The map that takes the segment restStart-restEnd onto poseStart-poseEnd: the smallest swing
    /// of its direction, then a turn of `twist` radians about the posed direction, then a stretch
    /// along it that matches the lengths. Offsets perpendicular to the bone keep their length.
    ///
    /// A rest bone of length zero makes the stretch infinite or NaN. A posed one of length zero
    /// flattens the bone, pointing along z, into a plane: `interpolate` cannot divide by that.
    GEOMKIT_API BoneTransform(const Vector3& restStart, const Vector3& restEnd,
                              const Vector3& poseStart, const Vector3& poseEnd, double twist);

    /// Blend from the identity (t <= 0 or NaN) to `x` (t >= 1). With M = R U the polar
    /// decomposition of x's linear part, the linear part is R^t U^t and the translation t times
    /// x's.
    ///
    /// Two blends by 1/2 compose to x only when R and U commute and there is no translation.
    /// When |det M| < 1e-8 (strict, absolute: a uniform scale under about 0.002), the linear part
    /// collapses to zero for every t inside: such a bone is rescaled by its owner first. Above that
    /// the eigensystem's absolute stop of 1e-8 costs accuracy: scales of 0.01 jump by up to 1e-4 of
    /// themselves at t = 1. When R
    /// turns by less than about 1e-4 rad, its axis is a coordinate axis and the turn jumps at t = 1
    /// (see `Matrix3::getRotationAxis`). A mirror (det M < 0) has no rotation to take the axis of:
    /// meaningless, finite values; `Transform` blends mirrors. NaN gives NaN.
    ///
    /// Source: polar decomposition from the eigensystem of M M^T (Shoemake and Duff, Matrix
    /// Animation and Polar Decomposition, 1992).
    GEOMKIT_API static BoneTransform interpolate(const BoneTransform& x, double t);

    /// Blend from `a` (t <= 0 or NaN) to `b` (t >= 1, up to rounding): a, followed in a's frame by
    /// the blend of a^-1 b. An `a` with |det| < 1e-8 has no inverse: the linear part is zero for
    /// t > 0.
    GEOMKIT_API static BoneTransform interpolate(const BoneTransform& a, const BoneTransform& b,
                                                 double t);

    /// The image of a point.
    Vector3 transformPoint(const Vector3& p) const { return linear * p + translation; }
    /// The image of a direction or displacement, which the translation leaves alone.
    Vector3 transformDirection(const Vector3& d) const { return linear * d; }
    /// The same map as a 4x4 matrix.
    Matrix getMatrix() const { return {linear, translation}; }
};
