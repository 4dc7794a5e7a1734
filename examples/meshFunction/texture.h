/// @file
/// Texture coordinates for pictures.
#pragma once

#include "examples/common/Mesh.h"
#include "examples/meshFunction/View.h"

namespace demo {

/// Gives a mesh texture coordinates by wrapping the texture round the axis `up` through its
/// middle, with the seam on the side that faces away from `from`. Both coordinates are lengths.
void wrapTexture(Mesh& mesh, const geomKit::UVector3& from, const geomKit::UVector3& up);

/// How many checker cells a unit of texture coordinates should have for a cell to be about
/// `cellSize` pixels wide: a power of two, by the median over the area of the view.
double cellsPerUnit(const View& view, double cellSize);

}  // namespace demo
