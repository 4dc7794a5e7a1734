/// @file
/// Random transforms and the way to Eigen, by which they are checked.
#pragma once

#include <Eigen/Dense>

#include "geomKit/transforms/BoneTransform.h"
#include "geomKit/transforms/Transform.h"
#include "tests/golden/Digest.h"

inline const double kNaN = std::nan("");

inline Eigen::Vector3d eigen(const Vector3& v) {
    return {v.x, v.y, v.z};
}

inline Eigen::Matrix3d eigen(const Matrix3& m) {
    Eigen::Matrix3d e;
    e << eigen(m.column(0)), eigen(m.column(1)), eigen(m.column(2));
    return e;
}

inline Eigen::Matrix4d eigen(const Matrix& m) {
    Eigen::Matrix4d e;
    for (int k = 0; k < 16; ++k)
        e(k / 4, k % 4) = m(k / 4, k % 4);
    return e;
}

template <typename A, typename B>
double distance(const A& a, const B& b) {
    return (a - b).norm();
}

/// Every third one is a mirror.
inline Transform randomTransform(InputSource& in) {
    const Vector3 axis = in.vector(1.0);
    Transform t(axis, in.uniform(-3.0, 3.0));
    t.translation = in.vector(5.0);
    t.scale = in.uniform(0.2, 3.0) * (in.index(3) == 0 ? -1.0 : 1.0);
    return t;
}
