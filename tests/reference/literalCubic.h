/// @file
/// The root finder of `solveCubic` written plainly: the polynomial is evaluated wherever its value
/// is needed, and all steps are taken. The reference for its bits and for its time.
#pragma once

#include <algorithm>
#include <cmath>

#include "geomKit/queries/polynomialRoots.h"

inline int solveCubicLiterally(double a, double b, double c, double d, double* roots) {
    if (std::abs(a) < 1e-13) return geomKit::solveQuadratic(b, c, d, roots);
    const auto f = [=](double x) { return ((a * x + b) * x + c) * x + d; };
    double r = 0.0;
    bool found = false;
    double critical[2];
    if (geomKit::solveQuadratic(3.0 * a, 2.0 * b, c, critical) == 2) {
        found = std::abs(f(critical[0])) <= 1e-13;
        r = critical[found ? 0 : 1];
        found = found || std::abs(f(r)) <= 1e-13;
    }
    if (!found) {
        double hi = 1.0;
        double lo = -1.0;
        while (f(hi) * f(lo) > 0.0) {
            hi *= 3.0;
            lo *= 3.0;
        }
        int count = 0;
        do {
            ++count;
            double x;
            if (f(hi) - f(lo) <= 1e-13 || count % 2 == 0) {
                x = (lo + hi) * 0.5;
            } else {
                x = (f(hi) * lo - f(lo) * hi) / (f(hi) - f(lo));
                if (hi - lo >= 3e-10) {
                    x = std::max(lo + 1e-10, std::min(hi - 1e-10, x));
                } else {
                    x = std::max(lo, std::min(hi, x));
                }
            }
            if (f(x) * f(hi) <= 0.0) {
                lo = x;
            } else {
                hi = x;
            }
            if (count > 100) break;
        } while (hi - lo > 1e-13 || std::abs(f(hi)) + std::abs(f(lo)) > 1e-13);
        r = std::abs(f(hi)) < std::abs(f(lo)) ? hi : lo;
    }
    roots[0] = r;
    const int others = geomKit::solveQuadratic(a, a * r + b, (a * r + b) * r + c, roots + 1);
    if (others > 0) {
        if (roots[0] > roots[1]) std::swap(roots[0], roots[1]);
        if (roots[1] > roots[2]) std::swap(roots[1], roots[2]);
        if (roots[0] > roots[1]) std::swap(roots[0], roots[1]);
    }
    return others + 1;
}
