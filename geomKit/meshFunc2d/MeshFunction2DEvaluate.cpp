#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/FacetIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/blend.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"

namespace geomKit {

namespace {

using detail::blend;
using detail::cellCoordinate;
using detail::CellDivision;
using detail::FacetCell;
using detail::FacetIndex;
using detail::FacetPlace;
using detail::FacetWeights;
using detail::isInGrid;
using detail::lowestBit;
using detail::toIndex;

using Point = MeshFunction2D::Point;

/// Nowhere outside the grid.
FacetPlace _locate(const MeshFunction2D& mesh, const FacetIndex& index, const Point& p) {
    const ktNM::vect2<int>& counts = mesh.cellCounts;
    Point x;
    int cell[2];
    for (int k = 0; k < 2; ++k) {
        x[k] = (p[k] - mesh.boxMin[k]) * mesh.cellScale[k];
        if (!isInGrid(x[k], counts[k])) return {};
        cell[k] = cellCoordinate(x[k], counts[k]);
    }
    const CellDivision& division = index.division(toIndex(cell[0] * counts.v + cell[1]));
    return index.place(division, division.partCoordinate(x.u, cell[0]),
                       division.partCoordinate(x.v, cell[1]));
}

bool _evaluateListed(const MeshFunction2D& mesh, const FacetIndex& index, const FacetCell& cell,
                     const Point& p, Point* outValue, float* outFloat) {
    for (const int* f = index.begin(cell); f != index.end(cell); ++f) {
        const int* corner = &mesh.facets[3 * toIndex(*f)];
        if (mesh.iEvalInFacet(corner[0], corner[1], corner[2], p, outValue, outFloat, true))
            return true;
    }
    return false;
}

}  // namespace

bool MeshFunction2D::evaluate(const Point& p, Point* outValue, float* outFloat) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) return false;
    const FacetPlace place = _locate(*this, *facetIndex_, p);
    if (place.cell == nullptr) return false;
    const FacetCell& cell = *place.cell;
    if (cell.isListed()) return _evaluateListed(*this, *facetIndex_, cell, p, outValue, outFloat);
    for (unsigned rest = cell.facetsOfPart[place.part]; rest != 0; rest &= rest - 1) {
        const unsigned f = lowestBit(rest);
        const FacetWeights weights = cell.frame(f, params.data()).weightsAt(p);
        if (weights.isOutside()) continue;
        blend(*this, cell, f, weights, outValue, outFloat);
        return true;
    }
    return false;
}

}  // namespace geomKit
