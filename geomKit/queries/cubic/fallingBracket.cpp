#include "geomKit/queries/cubic/fallingBracket.h"

#include <algorithm>
#include <cstdint>

namespace geomKit::detail {

namespace {

/// The bracket of level n, after n halvings of [-X, X], is one of 2^n equal parts. Up to this level
/// and this X, parts are wider than `kBracketTol` and their ends and middles are exact: the lemma
/// of exact halvings.
constexpr int kLastLevel = 44;
constexpr double kLastWidth = 0x1p-43;
constexpr double kLargestBracket = 243.0;
/// Few cubics that fall nowhere in the bracket by then do so later.
constexpr int kEvaluatedHalvings = 12;

/// A computed value errs by at most 6 roundings, 6.7e-16, of the bound of |f|.
constexpr double kNoise = 1e-15;
/// The product of two values above this does not underflow.
constexpr double kLeastNoise = 1e-150;
/// A computed slope errs by at most 12 roundings, 1.4e-15, of the bound of |f'|.
constexpr double kSlopeNoise = 1e-14;
constexpr int kNewtonSteps = 8;

struct Interval {
    double lo;
    double hi;
};

/// Whether f' < 0 in all of the bracket, by its Taylor expansion about the middle: the lemma of the
/// falling bracket.
bool _falls(const CubicPolynomial& f, const CubicBracket& b) {
    const double x = b.middle();
    const double h = b.width() * 0.5;
    const double change = (std::abs(f.bend(x)) + 3.0 * std::abs(f.a) * h) * h;
    return f.slope(x) + change < -kSlopeNoise * f.steepest(std::abs(x) + h);
}

/// Finds an interval within the falling bracket outside of which computed values have a certain
/// sign: the lemma of certain signs. Newton's method only proposes it, the last line proves it.
bool _encloseRoot(const CubicPolynomial& f, const CubicBracket& b, Interval& root) {
    const double noise = kNoise * f.largest(std::max(std::abs(b.lo), std::abs(b.hi)));
    double x = b.middle();
    double slope = 0.0;
    for (int i = 0; i < kNewtonSteps; ++i) {
        const double fx = f(x);
        slope = f.slope(x);
        x -= fx / slope;
        // The error after a step is of the order of the square of the step.
        if (std::abs(fx) < 1e6 * noise) break;
    }
    const double reach = -4.0 * noise / slope;
    root = {x - reach, x + reach};
    return noise > kLeastNoise && b.lo < root.lo && root.lo < root.hi && root.hi < b.hi &&
           f(root.lo) > 3.0 * noise && f(root.hi) < -3.0 * noise;
}

/// Goes to the deepest part that holds `root`, if it is deeper than the present one.
void _descend(const CubicPolynomial& f, double size, const Interval& root, HalvedBracket& at) {
    constexpr std::int64_t kParts = std::int64_t{1} << kLastLevel;
    double width = size * kLastWidth;
    // Counted from the nearer end, an end of `root` on a boundary is on the side of the root.
    auto first = static_cast<std::int64_t>((root.lo + size) / width);
    auto last = kParts - 1 - static_cast<std::int64_t>((size - root.hi) / width);
    int level = kLastLevel;
    for (; first != last && level > at.halvings; --level) {
        first >>= 1;
        last >>= 1;
        width *= 2.0;
    }
    const double lo = static_cast<double>(first) * width - size;
    const double hi = lo + width;
    // The divisions were rounded, so the part may be a wrong one.
    if (level <= at.halvings || !(lo <= root.lo && root.hi <= hi)) return;
    at = {{lo, hi, f(lo), f(hi)}, level};
}

}  // namespace

HalvedBracket halveFalling(const CubicPolynomial& f, const CubicBracket& start) {
    HalvedBracket at = {start, 0};
    if (!(start.hi <= kLargestBracket)) return at;
    for (; !_falls(f, at.bracket); ++at.halvings) {
        if (at.bracket.mayBeCut() || at.halvings == kEvaluatedHalvings) return at;
        at.bracket.halve(f);
    }
    Interval root;
    if (!_encloseRoot(f, at.bracket, root)) return at;
    _descend(f, start.hi, root, at);
    if (at.halvings >= kLastLevel - 4) return at;
    // A middle lies inside of `root`, as it does when the root is a short binary number. Once its
    // side is decided, the halvings are certain again: the lemma of the decided middle.
    at.bracket.halve(f);
    ++at.halvings;
    root = {std::max(root.lo, at.bracket.lo), std::min(root.hi, at.bracket.hi)};
    _descend(f, start.hi, root, at);
    return at;
}

}  // namespace geomKit::detail
