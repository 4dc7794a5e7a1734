/// @file
/// The real root that `solveCubic` deflates by. Internal to it: not installed.
#pragma once

#include "geomKit/queries/CubicBracket.h"

double findBracketedRoot(const CubicPolynomial& f);
