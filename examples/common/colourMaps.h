/// @file
/// Colours for numbers.
#pragma once

#include "examples/common/Colour.h"

namespace demo {

/// Clearly different colours by index, for curves and points; any int is valid.
Colour paletteColour(int index);

/// Dark blue through teal to warm yellow for t in [0, 1]; lightness rises steadily.
Colour sequentialColour(double t);

/// Blue for -1, near white for 0, red for +1.
Colour divergingColour(double t);

}  // namespace demo
