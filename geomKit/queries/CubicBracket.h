/// @file
/// A cubic and an interval at whose ends its values differ in sign. Internal to `solveCubic`: not
/// installed.
#pragma once

#include <cmath>

namespace geomKit::detail {

/// A polynomial value at or below this, a rise at or below it, a bracket no wider: all count as 0.
inline constexpr double kValueTol = 1e-13;
inline constexpr double kBracketTol = 1e-13;
/// A false-position cut keeps this distance from the ends of a bracket of at least `kWideBracket`.
inline constexpr double kCutInset = 1e-10;
inline constexpr double kWideBracket = 3e-10;

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

struct CubicBracket {
    double lo;
    double hi;
    double fLo;
    double fHi;

    double width() const { return hi - lo; }
    bool isWide() const { return width() >= kWideBracket; }
    double middle() const { return (lo + hi) * 0.5; }
    /// The zero of the chord, kept inside.
    double cut() const { return isWide() ? wideCut() : narrowCut(); }
    double wideCut() const { return iChordZero(lo + kCutInset, hi - kCutInset); }
    double narrowCut() const { return iChordZero(lo, hi); }
    /// The difference is signed on purpose: a falling cubic is only ever halved.
    bool mayBeCut() const { return !(fHi - fLo <= kValueTol); }
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
    /// An overflowed chord has no zero: NaN becomes the upper bound, and the halving of the next
    /// step makes the progress. The test comes first because it is predicted; the selections that
    /// it avoids would delay every step.
    double iChordZero(double lower, double upper) const {
        const double x = (fHi * lo - fLo * hi) / (fHi - fLo);
        if (x > lower && x < upper) return x;
        const double clipped = x < upper ? x : upper;
        return clipped > lower ? clipped : lower;
    }
};

}  // namespace geomKit::detail
