#include "geomKit/queries/polynomialRoots.h"

#include <cmath>
#include <limits>
#include <utility>

#include "geomKit/vAlgebra/Tolerances.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A polynomial value at or below this, a rise at or below it, a bracket no wider: all count as 0.
constexpr double kValueTol = 1e-13;
constexpr double kBracketTol = 1e-13;
constexpr double kBracketGrowth = 3.0;
/// A false-position cut keeps this distance from the ends of a bracket of at least `kWideBracket`.
constexpr double kCutInset = 1e-10;
constexpr double kWideBracket = 3e-10;
constexpr int kMaxSteps = 101;

struct Cubic {
    double a;
    double b;
    double c;
    double d;

    double operator()(double x) const { return ((a * x + b) * x + c) * x + d; }
};

struct Bracket {
    double lo;
    double hi;
    double fLo;
    double fHi;

    double middle() const { return (lo + hi) * 0.5; }
    /// The zero of the chord, kept inside. An overflowed chord has none: NaN becomes the upper
    /// bound, and the halving of the next step makes the progress.
    double cut() const {
        const double x = (fHi * lo - fLo * hi) / (fHi - fLo);
        const bool wide = hi - lo >= kWideBracket;
        const double upper = wide ? hi - kCutInset : hi;
        const double lower = wide ? lo + kCutInset : lo;
        const double clipped = x < upper ? x : upper;
        return clipped > lower ? clipped : lower;
    }
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
    bool isDone() const {
        return !(hi - lo > kBracketTol) && !(std::abs(fHi) + std::abs(fLo) > kValueTol);
    }
};

/// A critical point at which the cubic vanishes, within tolerance.
bool findMultipleRoot(const Cubic& f, double& root) {
    double critical[2];
    if (solveQuadratic(3.0 * f.a, 2.0 * f.b, f.c, critical) != 2) return false;
    for (const double x : critical) {
        if (std::abs(f(x)) <= kValueTol) {
            root = x;
            return true;
        }
    }
    return false;
}

Bracket findBracket(const Cubic& f) {
    Bracket b = {-1.0, 1.0, f(-1.0), f(1.0)};
    // At infinity the values differ in sign or are NaN, so the second test only says so.
    while (b.fHi * b.fLo > 0.0 && b.hi < kInfinity) {
        const double hi = b.hi * kBracketGrowth;
        b = {-hi, hi, f(-hi), f(hi)};
    }
    return b;
}

double findBracketedRoot(const Cubic& f) {
    Bracket b = findBracket(f);
    // A step depends on the bracket and its parity alone: after two that changed nothing, none
    // will. Where rounding keeps the values above the tolerance this saves the rest of the steps.
    int idleSteps = 0;
    for (int step = 1; step <= kMaxSteps && idleSteps < 2; ++step) {
        const bool cut = b.mayBeCut() && step % 2 == 1;
        const double x = cut ? b.cut() : b.middle();
        // A cut at an end changes nothing, and a processor that may guess so need not wait for the
        // quotient before it halves: up to a third of the time.
        if (cut && ((x == b.lo && b.keepsHi(b.fLo)) || (x == b.hi && !b.keepsHi(b.fHi)))) {
            ++idleSteps;
            continue;
        }
        const double fx = f(x);
        if (b.keepsHi(fx)) {
            idleSteps = x == b.lo ? idleSteps + 1 : 0;
            b.setLo(x, fx);
        } else {
            idleSteps = x == b.hi ? idleSteps + 1 : 0;
            b.setHi(x, fx);
        }
        if (b.isDone()) break;
    }
    return std::abs(b.fHi) < std::abs(b.fLo) ? b.hi : b.lo;
}

/// A fixed network, because std::sort is undefined with NaN; here NaN exchanges with nothing.
void sortThree(double* v) {
    if (v[0] > v[1]) std::swap(v[0], v[1]);
    if (v[1] > v[2]) std::swap(v[1], v[2]);
    if (v[0] > v[1]) std::swap(v[0], v[1]);
}

}  // namespace

int solveQuadratic(double a, double b, double c, double* roots) {
    if (std::abs(a) < kNullComponentTol) {
        if (std::abs(b) < kNullComponentTol) return 0;
        roots[0] = -c / b;
        return 1;
    }
    const double D = b * b - (a * 4.0) * c;
    if (D < -kNullComponentTol) return 0;
    if (D < kNullComponentTol) {
        roots[0] = roots[1] = b * -0.5 / a;
        return 2;
    }
    const double q = std::sqrt(D);
    const double f = 0.5 / a;
    roots[0] = (-b - q) * f;
    roots[1] = (q - b) * f;
    return 2;
}

int solveCubic(double a, double b, double c, double d, double* roots) {
    if (std::abs(a) < kNullComponentTol) return solveQuadratic(b, c, d, roots);
    const Cubic f = {a, b, c, d};
    double r;
    if (!findMultipleRoot(f, r)) r = findBracketedRoot(f);
    roots[0] = r;
    const double deflated = a * r + b;
    const int others = solveQuadratic(a, deflated, deflated * r + c, roots + 1);
    if (others > 0) sortThree(roots);
    return others + 1;
}
