/// @file
/// A triangle mesh as the host programs hold it.
#pragma once

#include <vector>

#include <geomKit/vAlgebra/Vector3.h>

#include "examples/common/draw.h"

namespace demo {

struct Mesh {
    std::vector<Vector3> positions;
    /// One per position, or empty.
    std::vector<Vector3> normals;
    /// One per position, or empty when the model has no texture coordinates.
    std::vector<Point2> uvs;
    /// Index triples, counter-clockwise seen from outside.
    std::vector<int> facets;
};

/// Gives every vertex the average normal of its facets, weighted by their areas.
void computeNormals(Mesh& mesh);

}  // namespace demo
