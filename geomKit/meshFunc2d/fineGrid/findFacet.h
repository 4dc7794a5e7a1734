/// @file
/// The search for the first facet that accepts a point. Internal to mesh functions.
#pragma once

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/fineGrid/FineGrid.h"

namespace geomKit::detail {

/// A facet that contains a point. Not initialised: that would cost the array call 2 %.
struct FoundFacet {
    FineGrid::Corners corners;
    FacetWeights weights;
};

/// Searches the facets of a listed fine cell. False, with `found` untouched, if none accepts `p`.
inline bool findListedFacet(const FineGrid& grid, const FineCell& listed,
                            const FineGrid::Point* params, const FineGrid::Point& p,
                            FoundFacet& found) {
    for (const FineGrid::Corners& corners : grid.listOf(listed)) {
        const FineGrid::Point& p0 = params[toIndex(corners[0])];
        const FacetEdges edges(p0, params[toIndex(corners[1])], params[toIndex(corners[2])]);
        const FacetWeights weights = FacetFrame(p0, edges).weightsAt(p);
        if (weights.isOutside()) continue;
        found = {corners, weights};
        return true;
    }
    return false;
}

/// Searches the facets at a point. False, with `found` untouched, if none accepts it.
inline bool findFacet(const FineGrid& grid, const FineGrid::Point* params, const FineGrid::Point& p,
                      FoundFacet& found) {
    const Part part = grid.partAt(p);
    if (part.fineCell == nullptr) return false;
    const FineCell& cell = *part.fineCell;
    for (unsigned rest = part.facets(); rest != 0; rest &= rest - 1) {
        const unsigned f = lowestBit(rest);
        const FacetWeights weights = cell.frame(f, params).weightsAt(p);
        if (weights.isOutside()) continue;
        found = {cell.cornersOf(f), weights};
        return true;
    }
    return cell.kind == FineCell::Kind::Listed && findListedFacet(grid, cell, params, p, found);
}

}  // namespace geomKit::detail
