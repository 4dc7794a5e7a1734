#include <algorithm>
#include <cmath>
#include <limits>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/ChainTree.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/blend.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"

namespace geomKit {

namespace {

using detail::blend;
using detail::cellCoordinate;
using detail::ChainTree;
using detail::FacetEdges;
using detail::FacetFrame;
using detail::FacetWeights;
using detail::kMeshEps;
using detail::toIndex;

bool _isIndex(int i, std::size_t size) {
    return i >= 0 && toIndex(i) < size;
}

}  // namespace

bool MeshFunction2D::extrapolate(const Point& p, Point* outValue, float* outFloat) const {
    if (!extrapolateFlag) return extrapolateOld(p, outValue, outFloat);
    if (cellCounts.u < 1 || cellCounts.v < 1) return false;
    if (evaluate(p, outValue, outFloat)) return true;

    if (!chainTree_) return false;
    const ChainTree::Nearest nearest = chainTree_->nearest(p, boundaries);
    if (nearest.chain < 0) return false;
    const int chosen = boundaryFacets[toIndex(nearest.chain)][toIndex(nearest.segment)];
    if (3 * toIndex(chosen) + 2 >= facets.size()) return false;
    const int* corner = &facets[3 * toIndex(chosen)];
    return iEvalInFacet(corner[0], corner[1], corner[2], p, outValue, outFloat, false);
}

std::size_t MeshFunction2D::extrapolate(const Point* points, std::size_t count, Point* outValues,
                                        float* outFloats, bool* outFound) const {
    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const bool hit = extrapolate(points[i], outValues != nullptr ? outValues + i : nullptr,
                                     outFloats != nullptr ? outFloats + i : nullptr);
        if (outFound != nullptr) outFound[i] = hit;
        hits += hit ? 1 : 0;
    }
    return hits;
}

bool MeshFunction2D::extrapolateOld(const Point& p, Point* outValue, float* outFloat) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) return false;
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

bool MeshFunction2D::iEvalInFacet(int i0, int i1, int i2, const Point& p, Point* outValue,
                                  float* outFloat, bool strict) const {
    const std::size_t size = params.size() < values.size() ? params.size() : values.size();
    if (!_isIndex(i0, size) || !_isIndex(i1, size) || !_isIndex(i2, size)) return false;
    const Point& p0 = params[toIndex(i0)];
    const FacetEdges edges(p0, params[toIndex(i1)], params[toIndex(i2)]);
    if (edges.isDegenerate()) return false;
    const FacetWeights weights = FacetFrame(p0, edges).weightsAt(p);
    if (strict && weights.isOutside()) return false;
    const int corner[3] = {i0, i1, i2};
    blend(*this, corner, weights, outValue, outFloat);
    return true;
}

double MeshFunction2D::iDistToEdge(int a, int b, const Point& p, bool* interior,
                                   bool useValues) const {
    if (interior != nullptr) *interior = false;
    const std::vector<Point>& points = useValues ? values : params;
    if (!_isIndex(a, points.size()) || !_isIndex(b, points.size())) {
        return std::numeric_limits<double>::infinity();
    }
    const Point e = points[toIndex(b)] - points[toIndex(a)];
    const Point w = p - points[toIndex(a)];
    const double lengthSq = e.v * e.v + e.u * e.u;
    const double toStartSq = w.v * w.v + w.u * w.u;
    if (lengthSq < kMeshEps * kMeshEps) return toStartSq;
    const double t = e * w;
    if (t < -lengthSq * kMeshEps) return toStartSq;
    if (t > lengthSq + kMeshEps * lengthSq) {
        const Point toEnd = p - points[toIndex(b)];
        return toEnd * toEnd;
    }
    if (interior != nullptr) *interior = true;
    return toStartSq - t * t / lengthSq;
}

}  // namespace geomKit
