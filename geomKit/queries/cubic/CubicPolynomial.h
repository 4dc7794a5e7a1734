/// @file
/// A cubic by its coefficients. Internal to `solveCubic`: not installed.
#pragma once

#include <cmath>

namespace geomKit::detail {

struct CubicPolynomial {
    double a;
    double b;
    double c;
    double d;

    double operator()(double x) const { return ((a * x + b) * x + c) * x + d; }
    double slope(double x) const { return (3.0 * a * x + 2.0 * b) * x + c; }
    double bend(double x) const { return 6.0 * a * x + 2.0 * b; }
    /// Bounds of |f| and |f'| over [-x, x].
    double largest(double x) const {
        return ((std::abs(a) * x + std::abs(b)) * x + std::abs(c)) * x + std::abs(d);
    }
    double steepest(double x) const {
        return (3.0 * std::abs(a) * x + 2.0 * std::abs(b)) * x + std::abs(c);
    }
};

}  // namespace geomKit::detail
