/// @file
/// Comparisons that NaN fails: with each other component by component, and with Eigen.
#pragma once

#include <Eigen/Dense>

#include "tests/support.h"

inline void expectNear(const Vector3& a, const Vector3& b, double tolerance) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

inline void expectNear(const Matrix3& a, const Matrix3& b, double tolerance) {
    for (int j = 0; j < 3; ++j)
        expectNear(a.column(j), b.column(j), tolerance);
}

template <typename E>
Eigen::MatrixXd eigen(const Eigen::MatrixBase<E>& e) {
    return e;
}
inline Eigen::Vector3d eigen(const Vector3& v) {
    return {v.x, v.y, v.z};
}
inline Eigen::Matrix3d eigen(const Matrix3& m) {
    return (Eigen::Matrix3d() << eigen(m.column(0)), eigen(m.column(1)), eigen(m.column(2)))
        .finished();
}

/// NaN, which fails every bound, when there is one in a or b.
template <typename A, typename B>
double distance(const A& a, const B& b) {
    return (eigen(a) - eigen(b)).norm();
}
