/// @file
/// The distance between values of the library or of Eigen.
#pragma once

#include <Eigen/Dense>

#include "tests/support.h"

namespace geomKit {

template <typename E>
Eigen::MatrixXd eigen(const Eigen::MatrixBase<E>& e) {
    return e;
}
inline Eigen::Vector3d eigen(const Vector3& v) {
    return v.to<Eigen::Vector3d>();
}
inline Eigen::Matrix3d eigen(const Matrix3& m) {
    return Eigen::Matrix<double, 3, 3, Eigen::RowMajor>(m.data());
}

/// NaN, which fails every bound, when there is one in a or b.
template <typename A, typename B>
double distance(const A& a, const B& b) {
    return (eigen(a) - eigen(b)).norm();
}

}  // namespace geomKit
