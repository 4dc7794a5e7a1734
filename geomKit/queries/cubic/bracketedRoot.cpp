#include "geomKit/queries/cubic/bracketedRoot.h"

#include <limits>

#include "geomKit/queries/cubic/CubicBracket.h"
#include "geomKit/queries/cubic/fallingBracket.h"

namespace geomKit::detail {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kBracketGrowth = 3.0;
/// Odd steps cut where the bracket may be cut, even steps halve.
constexpr int kMaxSteps = 101;

/// At infinity the values differ in sign or are NaN, so the second test only makes the end plain.
CubicBracket _findBracket(const CubicPolynomial& f) {
    CubicBracket b = {-1.0, 1.0, f(-1.0), f(1.0)};
    while (b.fHi * b.fLo > 0.0 && b.hi < kInfinity) {
        const double hi = b.hi * kBracketGrowth;
        b = {-hi, hi, f(-hi), f(hi)};
    }
    return b;
}

/// The documented iteration from `step` on. It ends early by the lemma of idle steps.
double _iteratePlainly(const CubicPolynomial& f, CubicBracket b, int step) {
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

/// Takes pairs of steps of a narrow bracket with fLo = 0, as long as the cut falls on `lo` and the
/// halving moves `hi`. By the lemma of the zero at lo, such a pair needs no cut, and only this much
/// of the stop test.
void _halveTowardsZeroAtLo(const CubicPolynomial& f, CubicBracket& b, int& step) {
    for (; step < kMaxSteps && b.fHi > kValueTol && b.fHi * b.lo / b.fHi <= b.lo; step += 2) {
        const double x = b.middle();
        const double fx = f(x);
        if (b.keepsHi(fx)) return;
        b.setHi(x, fx);
    }
}

/// A cut and a halving in turn: the steps of most brackets in the shortest loop.
double _iterateInPairs(const CubicPolynomial& f, CubicBracket b) {
    int step = 1;
    for (; step < kMaxSteps && b.mayBeCut(); step += 2) {
        if (b.fLo == 0.0 && !b.isWide()) {
            _halveTowardsZeroAtLo(f, b, step);
            if (b.isDone()) return b.nearerEnd();
            if (step >= kMaxSteps || !b.mayBeCut()) break;
        }
        // Between neighbouring numbers, the plain loop sees that the steps are idle.
        const double middle = b.middle();
        if (middle <= b.lo || middle >= b.hi) break;
        b.splitAt(b.cut(), f);
        if (b.isDone()) return b.nearerEnd();
        b.halve(f);
        if (b.isDone()) return b.nearerEnd();
    }
    return _iteratePlainly(f, b, step);
}

}  // namespace

double findBracketedRoot(const CubicPolynomial& f) {
    const CubicBracket b = _findBracket(f);
    if (b.mayBeCut()) return _iterateInPairs(f, b);
    const HalvedBracket halved = halveFalling(f, b);
    return _iteratePlainly(f, halved.bracket, 1 + halved.halvings);
}

}  // namespace geomKit::detail
