/// @file
/// An interval at whose ends the values of a cubic differ in sign, and the steps of the documented
/// iteration. Internal to `solveCubic`: not installed.
#pragma once

#include <cmath>

#include "geomKit/queries/cubic/CubicPolynomial.h"

namespace geomKit::detail {

/// A polynomial value at or below this, a rise at or below it, a bracket no wider: all count as 0.
inline constexpr double kValueTol = 1e-13;
inline constexpr double kBracketTol = 1e-13;
/// A false-position cut keeps this distance from the ends of a bracket of at least `kWideBracket`.
inline constexpr double kCutInset = 1e-10;
inline constexpr double kWideBracket = 3e-10;

struct CubicBracket {
    double lo;
    double hi;
    /// The values at the ends. They are kept, because they would come out the same again.
    double fLo;
    double fHi;

    double width() const { return hi - lo; }
    bool isWide() const { return width() >= kWideBracket; }
    double middle() const { return (lo + hi) * 0.5; }
    /// The zero of the chord, kept inside.
    double cut() const {
        return isWide() ? iChordZero(lo + kCutInset, hi - kCutInset) : iChordZero(lo, hi);
    }
    /// The difference is signed on purpose: a falling bracket is only ever halved.
    bool mayBeCut() const { return !(fHi - fLo <= kValueTol); }
    /// Whether a step to x, where the value is fx, moves `lo` and leaves `hi`.
    bool keepsHi(double fx) const { return fx * fHi <= 0.0; }
    void setLo(double x, double fx) {
        lo = x;
        fLo = fx;
    }
    void setHi(double x, double fx) {
        hi = x;
        fHi = fx;
    }
    void splitAt(double x, const CubicPolynomial& f) {
        const double fx = f(x);
        if (keepsHi(fx)) {
            setLo(x, fx);
        } else {
            setHi(x, fx);
        }
    }
    void halve(const CubicPolynomial& f) { splitAt(middle(), f); }
    bool isDone() const {
        return !(width() > kBracketTol) && !(std::abs(fHi) + std::abs(fLo) > kValueTol);
    }
    double nearerEnd() const { return std::abs(fHi) < std::abs(fLo) ? hi : lo; }

private:
    /// Clips to the upper bound, then to the lower one. NaN, the zero of an overflowed chord,
    /// becomes the upper bound. The first test changes no result: it is well predicted, and the
    /// selections that follow it would delay every step.
    double iChordZero(double lower, double upper) const {
        const double x = (fHi * lo - fLo * hi) / (fHi - fLo);
        if (x > lower && x < upper) return x;
        const double clipped = x < upper ? x : upper;
        return clipped > lower ? clipped : lower;
    }
};

}  // namespace geomKit::detail
