/// @file
/// The real root that `solveCubic` deflates by. Internal to it: not installed.
#pragma once

#include "geomKit/queries/cubic/CubicPolynomial.h"

namespace geomKit::detail {

/// The root to the bit that the documented iteration finds, by fewer evaluations. README.md of this
/// folder has the proof, to whose lemmas the sources refer.
double findBracketedRoot(const CubicPolynomial& f);

}  // namespace geomKit::detail
