// Extrapolation from the facets of a grid cell.
#include <cmath>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"

namespace geomKit {

namespace {

using detail::cellCoordinate;
using detail::kMeshEps;
using detail::toIndex;

}  // namespace

bool MeshFunction2D::extrapolateOld(const Point& p, Point* outValue, float* outFloat) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) return false;
    if (cells.size() != toIndex(cellCounts.u) * toIndex(cellCounts.v)) return false;
    int cell[2];
    for (int k = 0; k < 2; ++k) {
        const double x = (p[k] - boxMin[k]) * cellScale[k];
        if (!std::isfinite(x)) return false;
        cell[k] = cellCoordinate(x, cellCounts[k]);
    }

    if (cells[iCellIndex(cell[0], cell[1])].empty()) {
        Point position(cell[0], cell[1]);
        Point step(0.5 * cellCounts.u - cell[0], 0.5 * cellCounts.v - cell[1]);
        const double absU = std::abs(step.u);
        const double absV = std::abs(step.v);
        const double longest = absU >= absV ? absU : absV;
        if (longest < kMeshEps) return false;
        step.u /= longest;
        step.v /= longest;
        do {
            for (int k = 0; k < 2; ++k) {
                position[k] += step[k];
                cell[k] = static_cast<int>(std::floor(position[k]));
                if (cell[k] < 0 || cell[k] >= cellCounts[k]) return false;
            }
        } while (cells[iCellIndex(cell[0], cell[1])].empty());
    }

    double best = -1.0;
    const int* nearest = nullptr;
    for (const int f : cells[iCellIndex(cell[0], cell[1])]) {
        if (3 * toIndex(f) + 2 >= facets.size()) continue;
        const int* corner = &facets[3 * toIndex(f)];
        for (int e = 0; e < 3; ++e) {
            bool interior = false;
            const double d = iDistToEdge(corner[e], corner[(e + 1) % 3], p, &interior, false);
            if (best < 0.0 || d < best - kMeshEps || (interior && d < best + kMeshEps)) {
                best = d;
                nearest = corner;
            }
        }
    }
    if (nearest == nullptr) return false;
    return iEvalInFacet(nearest[0], nearest[1], nearest[2], p, outValue, outFloat, false);
}

}  // namespace geomKit
