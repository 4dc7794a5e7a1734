/// @file
/// A triangle mesh as the host programs hold it.
#pragma once

#include <vector>

#include <geomKit/vAlgebra/Vector3.h>

#include "examples/common/draw.h"

namespace demo {

struct Mesh {
    std::vector<geomKit::Vector3> positions;
    /// One per position, or empty.
    std::vector<geomKit::Vector3> normals;
    /// One per position, or empty when the model has no texture coordinates.
    std::vector<Point2> uvs;
    /// One per position, or empty: the smallest and the largest principal curvature.
    std::vector<Point2> curvatures;
    /// Index triples, counter-clockwise seen from outside.
    std::vector<int> facets;
};

/// Gives every vertex the average normal of its facets, weighted by their areas.
void computeNormals(Mesh& mesh);

/// Adds the vertices and facets of another mesh with the same kinds of data.
void append(Mesh& mesh, const Mesh& more);

/// Adds the vertex that divides the way from vertex a to vertex b of `from` in the ratio t, all its
/// data interpolated linearly, and returns its index. `from` may be the mesh itself.
int appendBetween(Mesh& mesh, const Mesh& from, int a, int b, double t);

}  // namespace demo
