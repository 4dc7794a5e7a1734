#include "geomKit/queries/fallingCubic.h"

#include <algorithm>
#include <cstdint>

namespace geomKit::detail {

namespace {

/// The brackets of level n, after n halvings of [-X, X], are X 2^(1-n) wide. For X >= 1 those of
/// level 44 are wider than `kBracketTol`. For X <= 243 < 2^8 all their ends, multiples of X 2^-43,
/// and the sums of two have at most 53 bits, so that the middles are exact.
constexpr int kLastLevel = 44;
constexpr double kLastWidth = 0x1p-43;
constexpr double kLargestBracket = 243.0;
constexpr int kEvaluatedHalvings = 12;

/// Horner's form errs by at most 6 roundings of 2^-53, 6.7e-16, times the bound of |f|.
constexpr double kNoise = 1e-15;
/// Below this the product of two values could underflow, and with it the test of their signs.
constexpr double kLeastNoise = 1e-150;
constexpr int kNewtonSteps = 8;

struct Interval {
    double lo;
    double hi;
};

/// Whether f' < 0 in all of the bracket, by its Taylor expansion at the middle. The margin is ten
/// times what rounding can do.
bool _falls(const CubicPolynomial& f, const CubicBracket& b) {
    const double x = b.middle();
    const double h = b.width() * 0.5;
    const double change = (std::abs(f.bend(x)) + 3.0 * std::abs(f.a) * h) * h;
    return f.slope(x) + change < -1e-14 * f.steepest(std::abs(x) + h);
}

/// An interval about the root of a falling bracket. At its ends the values exceed 3 times the
/// noise, the exact ones hence 2 times. Outside of it, f being monotone, so do the exact ones, and
/// the computed ones exceed the noise: their signs are certain.
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

/// Goes on to the deepest bracket that holds `root`, if it is deeper than the present one.
void _descend(const CubicPolynomial& f, double size, const Interval& root, HalvedBracket& at) {
    // Counted from both ends, so that a root's bound on a boundary belongs to the side of the root.
    constexpr std::int64_t kCells = std::int64_t{1} << kLastLevel;
    double width = size * kLastWidth;
    auto first = static_cast<std::int64_t>((root.lo + size) / width);
    auto last = kCells - 1 - static_cast<std::int64_t>((size - root.hi) / width);
    int level = kLastLevel;
    for (; first != last && level > at.halvings; --level) {
        first >>= 1;
        last >>= 1;
        width *= 2.0;
    }
    const double lo = static_cast<double>(first) * width - size;
    const double hi = lo + width;
    // The indices were rounded: only the ends themselves tell.
    if (level <= at.halvings || !(lo <= root.lo && root.hi <= hi)) return;
    at = {{lo, hi, f(lo), f(hi)}, level};
}

}  // namespace

HalvedBracket halveFalling(const CubicPolynomial& f, const CubicBracket& start) {
    HalvedBracket at = {start, 0};
    if (!(start.fLo > 0.0 && start.fHi < 0.0 && start.hi <= kLargestBracket)) return at;
    for (; !_falls(f, at.bracket); ++at.halvings) {
        if (at.bracket.mayBeCut() || at.halvings == kEvaluatedHalvings) return at;
        at.bracket.halve(f);
    }
    Interval root;
    if (!_encloseRoot(f, at.bracket, root)) return at;
    _descend(f, start.hi, root, at);
    if (at.halvings >= kLastLevel - 4) return at;
    // A middle lies within the interval, as when the root is a short number. Once it is decided,
    // one end of the bracket stays there and the other halvings are certain again.
    at.bracket.halve(f);
    ++at.halvings;
    root = {std::max(root.lo, at.bracket.lo), std::min(root.hi, at.bracket.hi)};
    _descend(f, start.hi, root, at);
    return at;
}

}  // namespace geomKit::detail
