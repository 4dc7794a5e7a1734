#include "geomKit/queries/polynomialRoots.h"

#include <cmath>
#include <utility>

#include "geomKit/queries/cubic/CubicBracket.h"
#include "geomKit/queries/cubic/bracketedRoot.h"
#include "geomKit/vAlgebra/Tolerances.h"

namespace geomKit {

namespace {

using detail::CubicPolynomial;
using detail::findBracketedRoot;
using detail::kValueTol;

/// A critical point at which the cubic vanishes, within tolerance.
bool _findMultipleRoot(const CubicPolynomial& f, double& root) {
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

/// A fixed network, because std::sort is undefined with NaN; here NaN exchanges with nothing.
void _sortThree(double* v) {
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
    const CubicPolynomial f = {a, b, c, d};
    double r;
    if (!_findMultipleRoot(f, r)) r = findBracketedRoot(f);
    roots[0] = r;
    const double deflated = a * r + b;
    const int others = solveQuadratic(a, deflated, deflated * r + c, roots + 1);
    if (others > 0) _sortThree(roots);
    return others + 1;
}

}  // namespace geomKit
