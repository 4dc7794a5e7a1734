/// @file
/// Halvings of a falling bracket whose outcome is certain beforehand. Internal to `solveCubic`: not
/// installed.
#pragma once

#include "geomKit/queries/cubic/CubicBracket.h"

namespace geomKit::detail {

struct HalvedBracket {
    CubicBracket bracket;
    int halvings;
};

/// The bracket after some steps of the iteration from `start`, and their number: between 0 and 44
/// halvings, none of which is a cut or meets the stop test. `start` is [-X, X] with X a power of 3.
HalvedBracket halveFalling(const CubicPolynomial& f, const CubicBracket& start);

}  // namespace geomKit::detail
