/// @file
/// Real roots of quadratics and cubics. Pure functions, safe from any number of threads.
///
/// The tolerances are absolute: 1e-13 on the leading coefficient, on the discriminant and on the
/// values of the polynomial. Scale the polynomial, or the unknown, so that the coefficients are of
/// the order of 1. Multiplying all coefficients by 1e6 asks for values a million times smaller;
/// coefficients around 1e-7 make the discriminant of a quadratic count as zero.
#pragma once

#include "geomKit/export.h"

namespace geomKit {

/// Writes the real roots of a x^2 + b x + c to `roots`, which holds two, and returns their count.
///
/// |a| < 1e-13 (strict) leaves the linear equation: one root, or none when |b| < 1e-13 too, even if
/// every x is a root. With D = b^2 - 4ac: D < -1e-13 gives 0; D < 1e-13 gives 2, a double root
/// written twice; else 2, the one with -sqrt(D) first, so that they ascend for a > 0 and descend
/// for a < 0. When 4ac is tiny beside b^2, the root nearer to 0 loses digits to cancellation; c
/// divided by a and by the other root has them all.
///
/// NaN in a coefficient never selects a case: the count is 2 with NaN roots, 1 with a NaN root if
/// only |a| < 1e-13, or 0 if |b| < 1e-13 too.
GEOMKIT_API int solveQuadratic(double a, double b, double c, double* roots);

/// Writes the real roots of a x^3 + b x^2 + c x + d to `roots`, which holds three, and returns
/// their count: 3, ascending and counted with multiplicity, or 1, and then `roots[1]` and
/// `roots[2]` are left alone. |a| < 1e-13 (strict) gives `solveQuadratic(b, c, d, roots)` as it is:
/// 0, 1 or 2, not sorted.
///
/// One root comes from bracketing: an interval about 0, tripled until the values at its ends have
/// no common sign, then halved and cut by false position in turn, until it is at most 1e-13 wide
/// (absolute) with values that sum to at most 1e-13, or for 101 steps. The others are those of the
/// deflated quadratic. A critical point whose value is at most 1e-13 in magnitude is taken as a
/// root instead: it is a double root.
///
/// What may surprise: a cubic that falls through the bracket (a < 0, as a rule) is only halved. The
/// 101 steps suffice for the same accuracy. Because of the deflation a
/// nearly double pair may come out as none or two: the count near such a pair is decided by
/// rounding. Once the bracket is below 1e-13, smaller roots are not told apart from 0.
///
/// It returns for every input. The bracket ends its growth at infinity, after 647 triplings at
/// most. Where values of the polynomial overflow, cuts fall back to halving. Coefficients that are
/// infinite or NaN, or whose roots exceed the range of double, give a count of 1 or 3 with roots
/// that may be infinite, NaN or meaningless; NaN is left where it is when the roots are sorted.
/// Test the coefficients with `std::isfinite` where they may be bad.
GEOMKIT_API int solveCubic(double a, double b, double c, double d, double* roots);

}  // namespace geomKit
