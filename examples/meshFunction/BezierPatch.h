/// @file
/// A bicubic Bezier patch with its derivatives.
#pragma once

#include <array>

#include <geomKit/vAlgebra/Vector3.h>

namespace demo {

/// A surface point with the derivatives that `principalCurvatures` takes.
struct SurfacePoint {
    geomKit::Vector3 position;
    /// Su, Sv.
    std::array<geomKit::Vector3, 2> d1;
    /// Suu, Suv, Svv.
    std::array<geomKit::Vector3, 3> d2;
};

/// S(u, v) = sum over r, c of B_r(v) B_c(u) control[4 r + c] with the cubic Bernstein polynomials
/// B: u runs along a row of control points, v from row to row, both over [0, 1].
struct BezierPatch {
    std::array<geomKit::Vector3, 16> control;

    SurfacePoint at(double u, double v) const;
};

}  // namespace demo
