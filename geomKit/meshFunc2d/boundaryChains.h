/// @file
/// The boundary of a triangle mesh as chains of half-edges. Internal to mesh functions.
#pragma once

#include <vector>

namespace geomKit::detail {

/// A walk along boundary half-edges: `vertices` holds one entry more than `facets`, and facet j
/// owns the edge from vertex j to vertex j + 1.
struct BoundaryChain {
    std::vector<int> vertices;
    std::vector<int> facets;
};

/// The half-edges that no opposite half-edge cancels, joined into chains; `MeshFunction2D` tells in
/// which order. `facets` holds whole triples, at most 2^31 - 1 entries; triples with an index
/// outside 0..vertexCount-1 are passed over.
std::vector<BoundaryChain> findBoundaryChains(const std::vector<int>& facets, int vertexCount);

}  // namespace geomKit::detail
