#include "geomKit/queries/bracketedRoot.h"

#include <limits>

#include "geomKit/queries/fallingCubic.h"

namespace geomKit::detail {

// The steps form one long chain of operations, which a processor runs ahead of only as far as it
// can guess which end moves next. Wide and narrow brackets have loops of their own because each is
// guessed better, and has fewer tests, than the two in one.

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kBracketGrowth = 3.0;
constexpr int kMaxSteps = 101;
/// Up to here `kCutInset` can be added to an end almost exactly.
constexpr double kLargestInsetBracket = 1e5;

CubicBracket _findBracket(const CubicPolynomial& f) {
    CubicBracket b = {-1.0, 1.0, f(-1.0), f(1.0)};
    // At infinity the values differ in sign or are NaN, so the second test only says so.
    while (b.fHi * b.fLo > 0.0 && b.hi < kInfinity) {
        const double hi = b.hi * kBracketGrowth;
        b = {-hi, hi, f(-hi), f(hi)};
    }
    return b;
}

/// Cuts and halves in turn. Half of a bracket that was cut inside its insets is wider than
/// `kBracketTol`, so no step needs the stop test.
void _stepWhileWide(const CubicPolynomial& f, CubicBracket& b, int& step) {
    for (; step < kMaxSteps && b.isWide() && b.mayBeCut(); step += 2) {
        b.splitAt(b.wideCut(), f);
        b.halve(f);
    }
}

/// Halves with fLo = 0 in a narrow bracket for as long as `lo` stays. Of a cut a product and the
/// quotient remain, which shows that it falls on `lo`, and of the stop test the value of `hi`.
void _stepTowardsZeroAtLo(const CubicPolynomial& f, CubicBracket& b, int& step) {
    for (; step < kMaxSteps && b.fHi > kValueTol && b.fHi * b.lo / b.fHi <= b.lo; step += 2) {
        const double x = b.middle();
        const double fx = f(x);
        if (b.keepsHi(fx)) return;
        b.setHi(x, fx);
    }
}

/// Cuts and halves in turn; returns whether the stop test ended that.
bool _stepWhileNarrow(const CubicPolynomial& f, CubicBracket& b, int& step) {
    for (; step < kMaxSteps && !b.isWide() && b.mayBeCut(); step += 2) {
        if (b.fLo == 0.0) {
            _stepTowardsZeroAtLo(f, b, step);
            if (b.isDone()) return true;
            if (!b.mayBeCut() || step >= kMaxSteps) return false;
        }
        const double x = b.narrowCut();
        // A cut at an end changes nothing. The halving then does, or nothing will.
        if (x == b.lo && b.keepsHi(b.fLo)) {
            const double middle = b.middle();
            if (middle <= b.lo || middle >= b.hi) return false;
        } else {
            b.splitAt(x, f);
            if (b.isDone()) return true;
        }
        b.halve(f);
        if (b.isDone()) return true;
    }
    return false;
}

}  // namespace

double findBracketedRoot(const CubicPolynomial& f) {
    CubicBracket b = _findBracket(f);
    int step = 1;
    if (!b.mayBeCut()) {
        const HalvedBracket halved = halveFalling(f, b);
        b = halved.bracket;
        step += halved.halvings;
    } else if (b.hi <= kLargestInsetBracket) {
        _stepWhileWide(f, b, step);
        if (_stepWhileNarrow(f, b, step)) return b.nearerEnd();
    }
    // A step depends on the bracket and its parity alone: after two that changed nothing, none
    // will. Where rounding keeps the values above the tolerance this saves the rest of the steps.
    for (int idleSteps = 0; step <= kMaxSteps && idleSteps < 2; ++step) {
        const bool cut = step % 2 == 1 && b.mayBeCut();
        const double x = cut ? b.cut() : b.middle();
        const CubicBracket before = b;
        b.splitAt(x, f);
        idleSteps = b.lo == before.lo && b.hi == before.hi ? idleSteps + 1 : 0;
        if (b.isDone()) break;
    }
    return b.nearerEnd();
}

}  // namespace geomKit::detail
