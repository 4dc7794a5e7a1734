/// @file
/// The real root that `solveCubic` deflates by. Internal to it: not installed.
#pragma once

#include "geomKit/queries/CubicBracket.h"

namespace geomKit::detail {

double findBracketedRoot(const CubicPolynomial& f);

}  // namespace geomKit::detail
