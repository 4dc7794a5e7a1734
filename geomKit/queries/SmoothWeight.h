/// @file
/// `SmoothWeight`, a falloff weight of compact support with its first two derivatives.
#pragma once

#include <cmath>

namespace geomKit {

/// The weight (1 - ((x - center) / radius)^2)^3: 1 at the centre, 0 with zero slope and zero
/// curvature at the distance `radius` and beyond. The derivatives are those of this formula.
///
/// The support ends `margin` = 1e-8 radii early, so that rounding at its rim never gives a weight
/// below 0. A radius that is not greater than 1e-8 (absolute, strict) has no slope to speak of:
/// `invRadius` and `margin` are 0, and the weight is a step, 1 where |x - center| <= radius and 0
/// elsewhere, with derivatives of 0; a negative radius gives 0 everywhere, a NaN or infinite one a
/// weight of 1 at every finite x. A NaN x, or a NaN centre, gives NaN. Pure value: any number of
/// threads may evaluate one object.
class SmoothWeight {
public:
    double center;
    double radius;
    double invRadius = 0.0;
    double margin = 0.0;

    constexpr SmoothWeight(double center_, double radius_) noexcept;

    /// Writes the weight at `x` and its first and second derivative with respect to x; each pointer
    /// may be null. Always returns true.
    bool evaluate(double x, double* w, double* dw, double* d2w) const noexcept;

private:
    static constexpr double kMinRadius = 1e-8;
    static constexpr double kRelativeMargin = 1e-8;
};

constexpr SmoothWeight::SmoothWeight(double center_, double radius_) noexcept
    : center(center_), radius(radius_) {
    if (radius > kMinRadius) {
        margin = radius * kRelativeMargin;
        invRadius = 1.0 / radius;
    }
}

inline bool SmoothWeight::evaluate(double x, double* w, double* dw, double* d2w) const noexcept {
    const double u = x - center;
    if (std::abs(u) > radius - margin) {
        if (w != nullptr) *w = 0.0;
        if (dw != nullptr) *dw = 0.0;
        if (d2w != nullptr) *d2w = 0.0;
        return true;
    }
    const double s = u * invRadius;
    const double s2 = s * s;
    const double k = 1.0 - s2;
    const double k2 = k * k;
    if (w != nullptr) *w = k2 * k;
    if (dw != nullptr) *dw = invRadius * -6.0 * s * k2;
    if (d2w != nullptr) *d2w = invRadius * 6.0 * invRadius * k * (5.0 * s2 - 1.0);
    return true;
}

}  // namespace geomKit
