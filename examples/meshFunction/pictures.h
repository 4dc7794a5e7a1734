/// @file
/// The pictures of a mesh function whose values are texture coordinates and whose numbers are
/// cosines between normal and view direction.
#pragma once

#include <geomKit/meshFunc2d/MeshFunction2D.h>

#include "examples/common/Image.h"
#include "examples/meshFunction/Field.h"

namespace demo {

/// A checker of `cellsPerUnit` cells a unit of texture coordinates, shaded by the cosines, over
/// `background`.
Image checkerPicture(const Field& field, double cellsPerUnit, const Image& background);

/// The cosines by colour.
Image cosinePicture(const Field& field, const Image& background);

/// The mean curvature by colour, white where the surface is flat, red where it bulges: `curvature`
/// has the principal curvatures as its values, and |mean curvature| >= `most` has the full colour.
Image curvaturePicture(const Field& curvature, double most, const Image& background);

/// The checker inside, and outside, paler, the checker that `outside` continues it with.
Image extrapolatedPicture(const Field& field, const Field& outside, double cellsPerUnit,
                          const Image& background);

/// The picture faded, for drawing over it.
Image palePicture(const Image& picture);

/// The function's boundary chains over `picture`, drawn through the debug drawing hooks: each in a
/// colour of its own, with a dot at its first point and an arrow along it. Returns the number of
/// calls that the hooks passed on.
int drawBoundaries(const geomKit::MeshFunction2D& function, Image& picture);

}  // namespace demo
