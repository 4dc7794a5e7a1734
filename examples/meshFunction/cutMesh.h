/// @file
/// Cutting a mesh along a line across its triangles.
#pragma once

#include <vector>

#include "examples/common/Mesh.h"

namespace demo {

/// The part of `mesh` on which `side`, given at the vertices and linear between them, is positive.
/// Neighbouring triangles share the vertices of the cut, so what was joined stays joined.
Mesh cutMesh(const Mesh& mesh, const std::vector<double>& side);

}  // namespace demo
