// Cubic roots against the plain form, GSL and Boost.Math (where it has cubic_roots, from 1.80 on).
// The label of each run is its worst root error: the largest distance from a true root to the
// nearest root found. The coefficients of most sets are products of short dyadic numbers and so
// exact. Roots like those lie on the points that halving meets; those of the uniform set do not.
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <gsl/gsl_poly.h>

#if __has_include(<boost/math/tools/cubic_roots.hpp>)
#include <boost/math/tools/cubic_roots.hpp>
#define GEOMKIT_BENCH_BOOST 1
#endif

#include "tests/reference/InputSource.h"
#include "tests/reference/literalCubic.h"

using namespace geomKit;

namespace {

constexpr int kCubics = 30000;

struct Cubic {
    std::array<double, 4> coefficients;
    std::vector<double> roots;
};

/// A multiple of 2^-shift in [-8, 8).
double dyadic(InputSource& in, int shift) {
    return std::ldexp(in.index(16 << shift) - (8 << shift), -shift);
}

Cubic fromRoots(double a, double p, double q, double r) {
    return {{a, -a * (p + q + r), a * (p * q + q * r + r * p), -a * p * q * r}, {p, q, r}};
}

Cubic threeReal(InputSource& in) {
    const double p = dyadic(in, 10);
    const double q = dyadic(in, 10);
    const double r = dyadic(in, 10);
    return fromRoots(1.0, p, q, r);
}

/// Beside the root p, a pair of complex ones around q.
Cubic oneReal(InputSource& in) {
    const double p = dyadic(in, 8);
    const double q = dyadic(in, 8);
    const double h = dyadic(in, 8) + 16.0;
    const double square = q * q + h;
    return {{1.0, -(p + 2.0 * q), 2.0 * p * q + square, -p * square}, {p}};
}

/// Two roots between 2^-16 and 1/16 apart.
Cubic nearDouble(InputSource& in) {
    const double p = dyadic(in, 5);
    const double r = dyadic(in, 5);
    const double gap = std::ldexp(1.0, -4 - in.index(13));
    return fromRoots(1.0, p, p + gap, r);
}

Cubic falling(InputSource& in) {
    Cubic cubic = threeReal(in);
    for (double& c : cubic.coefficients)
        c = -c;
    return cubic;
}

Cubic uniform(InputSource& in) {
    const double p = in.uniform(-8.0, 8.0);
    const double q = in.uniform(-8.0, 8.0);
    return fromRoots(in.index(2) == 0 ? 1.0 : -1.0, p, q, in.uniform(-8.0, 8.0));
}

using Draw = Cubic (*)(InputSource&);
using Solve = int (*)(const double*, double*);

int solveGeomKit(const double* k, double* roots) {
    return solveCubic(k[0], k[1], k[2], k[3], roots);
}

int solveLiteral(const double* k, double* roots) {
    return solveCubicLiterally(k[0], k[1], k[2], k[3], roots);
}

int solveGsl(const double* k, double* roots) {
    return gsl_poly_solve_cubic(k[1] / k[0], k[2] / k[0], k[3] / k[0], roots, roots + 1, roots + 2);
}

#ifdef GEOMKIT_BENCH_BOOST
int solveBoost(const double* k, double* roots) {
    const std::array<double, 3> found = boost::math::tools::cubic_roots(k[0], k[1], k[2], k[3]);
    int count = 0;
    for (const double r : found) {
        if (r == r) roots[count++] = r;
    }
    return count;
}
#endif

double worstError(const std::vector<Cubic>& cubics, Solve solve) {
    double worst = 0.0;
    for (const Cubic& cubic : cubics) {
        double found[3];
        const int count = solve(cubic.coefficients.data(), found);
        for (const double root : cubic.roots) {
            double nearest = HUGE_VAL;
            for (int i = 0; i < count; ++i)
                nearest = std::fmin(nearest, std::abs(found[i] - root));
            worst = std::fmax(worst, nearest);
        }
    }
    return worst;
}

bool sameAsLiteral(const std::vector<Cubic>& cubics) {
    for (const Cubic& cubic : cubics) {
        double ours[3] = {0.0, 0.0, 0.0};
        double literal[3] = {0.0, 0.0, 0.0};
        if (solveGeomKit(cubic.coefficients.data(), ours) !=
            solveLiteral(cubic.coefficients.data(), literal))
            return false;
        if (std::memcmp(ours, literal, sizeof ours) != 0) return false;
    }
    return true;
}

void measure(benchmark::State& state, Draw draw, Solve solve) {
    InputSource in(21);
    std::vector<Cubic> cubics;
    for (int i = 0; i < kCubics; ++i)
        cubics.push_back(draw(in));
    if (!sameAsLiteral(cubics)) state.SkipWithError("differs from the plain form");
    std::vector<std::array<double, 4>> list;
    for (const Cubic& cubic : cubics)
        list.push_back(cubic.coefficients);
    for (auto _ : state) {
        for (const auto& coefficients : list) {
            double roots[3];
            benchmark::DoNotOptimize(solve(coefficients.data(), roots));
            benchmark::DoNotOptimize(roots);
        }
    }
    char label[40];
    std::snprintf(label, sizeof label, "worst error %.1e", worstError(cubics, solve));
    state.SetLabel(label);
    state.SetItemsProcessed(state.iterations() * kCubics);
}

const bool kRegistered = [] {
    const std::pair<const char*, Draw> sets[] = {{"cubicThreeReal", threeReal},
                                                 {"cubicOneReal", oneReal},
                                                 {"cubicNearDouble", nearDouble},
                                                 {"cubicFalling", falling},
                                                 {"cubicUniform", uniform}};
    const std::pair<const char*, Solve> solvers[] = {
        {"geomKit", solveGeomKit},
        {"literal", solveLiteral},
        {"GSL", solveGsl},
#ifdef GEOMKIT_BENCH_BOOST
        {"Boost", solveBoost},
#endif
    };
    for (const auto& [set, draw] : sets) {
        for (const auto& [solver, solve] : solvers) {
            const std::string name = std::string(set) + "/" + solver;
            benchmark::RegisterBenchmark(name.c_str(), measure, draw, solve)
                ->Unit(benchmark::kMicrosecond);
        }
    }
    return true;
}();

}  // namespace
