/// @file
/// Random transforms and the way to Eigen, by which they are checked.
#pragma once

#include "tests/vAlgebra/distance.h"

namespace geomKit {

inline Eigen::Matrix4d eigen(const Matrix& m) {
    return Eigen::Matrix<double, 4, 4, Eigen::RowMajor>(m.data());
}
template <typename T>
auto eigen(const T& t) -> decltype(eigen(t.getMatrix())) {
    return eigen(t.getMatrix());
}

/// Every third one is a mirror.
inline Transform randomTransform(InputSource& in) {
    const UVector3 axis = in.vector(1.0);
    const Matrix3 rotation = Matrix3::rotationMatrix(axis, in.uniform(-3.0, 3.0));
    const Vector3 translation = in.vector(5.0);
    const double size = in.uniform(0.2, 3.0);
    return {rotation, translation, in.index(3) == 0 ? -size : size};
}

/// Blends end on their operands, also beyond the ends; NaN counts as the start.
template <typename T>
void expectBlendsEnd(const T& a, const T& b, double tolerance) {
    for (const double t : {0.0, -3.0, kNaN})
        EXPECT_EQ(distance(T::interpolate(a, b, t), a), 0.0);
    for (const double t : {1.0, 7.0})
        EXPECT_LE(distance(T::interpolate(a, b, t), b), tolerance);
}

}  // namespace geomKit
