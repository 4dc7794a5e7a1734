/// @file
/// Halvings of a bracket whose outcome is certain beforehand. Internal to `solveCubic`: not
/// installed.
#pragma once

#include "geomKit/queries/CubicBracket.h"

namespace geomKit::detail {

struct HalvedBracket {
    CubicBracket bracket;
    int halvings;
};

/// The bracket after some halvings of `start`, at most 44, that are neither cuts nor fulfil the
/// stop test: none if nothing is certain. `start` is [-X, X] with X a power of 3.
///
/// The root r is found by Newton's method, and with it an interval about r outside of which the
/// computed values have a certain sign. Up to there a halving needs no evaluation, and since its
/// ends are exact, neither does a sequence: the last of its brackets is computed directly.
HalvedBracket halveFalling(const CubicPolynomial& f, const CubicBracket& start);

}  // namespace geomKit::detail
