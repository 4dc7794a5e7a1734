/// @file
/// `Transform`, the similarity transform: rotation, translation and uniform scale.
#pragma once

#include "geomKit/export.h"
#include "geomKit/transforms/Matrix.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

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
    Transform(double s = 1.0) : scale(s) {}
    /// Rotation by `angle` radians about `axis`, of any length, through the origin. A null axis is
    /// `UVector3`'s (0, 0, 1).
    GEOMKIT_API Transform(const Vector3& axis, double angle);
    /// The frame at `t` whose z axis is `u` and whose x axis is `v`; y is u x v. Right-handed for
    /// perpendicular `u` and `v`, which is not checked.
    Transform(const UVector3& u, const UVector3& v, const Vector3& t);

    /// The mirror in the plane through `p` with normal `n`: a half turn about n with scale -1.
    GEOMKIT_API static Transform reflection(const Vector3& p, const UVector3& n);

    /// The rotation about their common normal that takes `from` to `to`. Directions within 0.03
    /// degrees of parallel (`Vector3::isParallel`) give the identity, not the tiny turn between
    /// them; within 0.03 degrees of opposite, a half turn about the second `getBasis` vector of
    /// `from`. `Matrix3::rotationMatrix(from, to)` keeps the tiny turns.
    GEOMKIT_API static Transform rotate(const UVector3& from, const UVector3& to);

    /// Blend from `a` (t <= 0 or NaN) to `b` (t >= 1), both returned as they are at the ends: the
    /// translation linearly, the scale's magnitude geometrically, the rotation about the single
    /// axis of the relative rotation. Between scales of opposite sign the sign flips abruptly just
    /// after t = 0.5, and a scale of 0 at either end makes all of the inside 0.
    ///
    /// Relative rotations under about 1e-4 rad are given a coordinate axis by
    /// `Matrix3::getRotationAxis`: only the part of the turn about that axis is blended, and the
    /// rest comes at t = 1. A caller who blends finely builds `Matrix3::rotationMatrix` from
    /// (R32 - R23, R13 - R31, R21 - R12) of the relative rotation R instead.
    GEOMKIT_API static Transform interpolate(const Transform& a, const Transform& b, double t);

    /// `a * b` applies b first.
    Transform operator*(const Transform& b) const;
    /// The rotation is inverted by transposition; a scale of 0 gives infinities and NaN.
    Transform inverse() const;
    /// This without the translation.
    Transform linearComponent() const;

    /// The image of a point.
    Vector3 transformPoint(const Vector3& p) const;
    /// The image of a direction or displacement, which the translation leaves alone.
    Vector3 transformDirection(const Vector3& d) const;

    /// scale * rotation.
    Matrix3 getLinear() const { return rotation * scale; }
    /// The same map as a 4x4 matrix.
    Matrix getMatrix() const { return {getLinear(), translation}; }

    /// Does nothing: the place for a host's breakpoint. `interpolate` calls it on both ends.
    void assertValid() const {}
};

inline Transform::Transform(const UVector3& u, const UVector3& v, const Vector3& t)
    : rotation(v, u % v, u), translation(t), scale(1.0) {}

inline Transform Transform::operator*(const Transform& b) const {
    Transform p(scale * b.scale);
    p.rotation = rotation * b.rotation;
    p.translation = translation + rotation * (b.translation * scale);
    return p;
}

inline Transform Transform::inverse() const {
    Transform p(1.0 / scale);
    p.rotation = rotation.transpose();
    p.translation = -(p.rotation * (translation * p.scale));
    return p;
}

inline Transform Transform::linearComponent() const {
    Transform p(scale);
    p.rotation = rotation;
    return p;
}

inline Vector3 Transform::transformPoint(const Vector3& p) const {
    return transformDirection(p) + translation;
}

inline Vector3 Transform::transformDirection(const Vector3& d) const {
    return (rotation * d) * scale;
}
