/// @file
/// Finer triangles on the same surface.
#pragma once

#include "examples/common/Mesh.h"

namespace demo {

/// Cuts every triangle into four at the middles of its edges, again and again until there are at
/// least `facetCount`. A mesh function is linear in each facet while perspective is not: small
/// facets keep textures straight.
Mesh refineMesh(Mesh mesh, std::size_t facetCount);

}  // namespace demo
