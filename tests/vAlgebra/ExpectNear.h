/// @file
/// Component-wise comparisons that NaN fails.
#pragma once

#include <gtest/gtest.h>

#include "geomKit/vAlgebra/Matrix3.h"

inline void expectNear(const Vector3& a, const Vector3& b, double tolerance) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

inline void expectNear(const Matrix3& a, const Matrix3& b, double tolerance) {
    for (int j = 0; j < 3; ++j)
        expectNear(a.column(j), b.column(j), tolerance);
}
