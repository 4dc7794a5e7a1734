#include <algorithm>

#include "geomKit/WideCall.h"
#include "geomKit/at.h"
#include "geomKit/meshFunc2d/FacetIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/blend.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"

namespace {

using Point = MeshFunction2D::Point;

/// Queries of an array that go together, so that their memory accesses overlap.
constexpr std::size_t kBatch = 32;
/// Candidates of each whose data are fetched ahead: few queries need more.
constexpr int kPrefetched = 2;
/// Meshes of up to this many vertices stay in the cache by themselves.
constexpr std::size_t kCachedVertices = 8192;

void prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

/// Fetches what the first candidates need. Always inlined, because g++ takes a function that only
/// prefetches for one without effect.
GEOMKIT_INLINE_KERNEL void prefetchData(const MeshFunction2D& mesh, const FacetCell& cell,
                                        unsigned candidates) {
    const bool hasFloats = mesh.normaldots.size() >= mesh.values.size();
    for (int n = 0; n < kPrefetched && candidates != 0; ++n, candidates &= candidates - 1) {
        for (int k = 0; k < 3; ++k) {
            const std::size_t vertex = at(cell.vertex(lowestBit(candidates), k));
            prefetch(&mesh.params[vertex]);
            prefetch(&mesh.values[vertex]);
            if (hasFloats) prefetch(&mesh.normaldots[vertex]);
        }
    }
}

/// A point of an array on its way: the candidates left, and the weights in the first of them once
/// that accepts the point.
struct ArrayQuery {
    FacetPlace place;
    unsigned candidates = 0;
    FacetWeights weights = {};
};

/// Nowhere outside the grid.
FacetPlace locate(const MeshFunction2D& mesh, const FacetIndex& index, const Point& p) {
    const ktNM::vect2<int>& counts = mesh.cellCounts;
    Point x;
    int cell[2];
    for (int k = 0; k < 2; ++k) {
        x[k] = (p[k] - mesh.boxMin[k]) * mesh.cellScale[k];
        // Written so that NaN is outside too.
        if (!(x[k] >= -kMeshEps && x[k] <= counts[k] + kMeshEps)) return {};
        cell[k] = cellCoordinate(x[k], counts[k]);
    }
    return index.find(x, cell[0], cell[1], at(cell[0]) * at(counts.v) + at(cell[1]));
}

void blend(const MeshFunction2D& mesh, const FacetCell& cell, unsigned f,
           const FacetWeights& weights, Point* outValue, float* outFloat) {
    const int corner[3] = {cell.vertex(f, 0), cell.vertex(f, 1), cell.vertex(f, 2)};
    blend(mesh, corner, weights, outValue, outFloat);
}

bool evaluateListed(const MeshFunction2D& mesh, const FacetIndex& index, const FacetCell& cell,
                    const Point& p, Point* outValue, float* outFloat) {
    for (const int* f = index.begin(cell); f != index.end(cell); ++f) {
        const int* corner = &mesh.facets[3 * at(*f)];
        if (mesh.iEvalInFacet(corner[0], corner[1], corner[2], p, outValue, outFloat, true))
            return true;
    }
    return false;
}

/// Where the answers of an array go; each may be null.
struct Outputs {
    Point* values;
    float* floats;
    bool* found;

    Outputs from(std::size_t i) const {
        return {values != nullptr ? values + i : nullptr, floats != nullptr ? floats + i : nullptr,
                found != nullptr ? found + i : nullptr};
    }
};

/// Evaluates up to `kBatch` points; returns how many succeeded.
std::size_t evaluateBatch(const MeshFunction2D& mesh, const FacetIndex& index, const Point* points,
                          std::size_t count, const Outputs& outputs) {
    ArrayQuery queries[kBatch];
    for (std::size_t i = 0; i < count; ++i) {
        queries[i].place = locate(mesh, index, points[i]);
        if (const FacetCell* cell = queries[i].place.cell) {
            prefetch(cell->facetsOfPart);
            prefetch(cell->vertices);
        }
    }

    const Point* params = mesh.params.data();
    const bool isLarge = mesh.params.size() > kCachedVertices;
    std::size_t active[kBatch];
    std::size_t activeCount = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto [cell, part] = queries[i].place;
        if (cell == nullptr || cell->isListed()) continue;
        const unsigned candidates = cell->facetsOfPart[part];
        queries[i].candidates = candidates;
        active[activeCount] = i;
        activeCount += candidates != 0 ? 1 : 0;
        if (isLarge) prefetchData(mesh, *cell, candidates);
    }

    // One candidate of every point in turn, and without a branch on the outcome: which of a
    // point's candidates accepts it cannot be predicted.
    while (activeCount > 0) {
        std::size_t rejectedCount = 0;
        for (std::size_t j = 0; j < activeCount; ++j) {
            const std::size_t i = active[j];
            ArrayQuery& query = queries[i];
            const unsigned f = lowestBit(query.candidates);
            query.weights = query.place.cell->frame(f, params).weightsAt(points[i]);
            const unsigned rejected = query.weights.isOutside() ? 1 : 0;
            query.candidates &= query.candidates - rejected;
            active[rejectedCount] = i;
            rejectedCount += rejected & (query.candidates != 0 ? 1U : 0U);
        }
        activeCount = rejectedCount;
    }

    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto& [place, candidates, weights] = queries[i];
        Point* outValue = outputs.values != nullptr ? outputs.values + i : nullptr;
        float* outFloat = outputs.floats != nullptr ? outputs.floats + i : nullptr;
        bool found = candidates != 0;
        if (found) {
            blend(mesh, *place.cell, lowestBit(candidates), weights, outValue, outFloat);
        } else if (place.cell != nullptr && place.cell->isListed()) {
            found = evaluateListed(mesh, index, *place.cell, points[i], outValue, outFloat);
        }
        if (outputs.found != nullptr) outputs.found[i] = found;
        hits += found ? 1 : 0;
    }
    return hits;
}

}  // namespace

bool MeshFunction2D::evaluate(const Point& p, Point* outValue, float* outFloat) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) return false;
    const FacetPlace place = locate(*this, *facetIndex_, p);
    if (place.cell == nullptr) return false;
    const FacetCell& cell = *place.cell;
    if (cell.isListed()) return evaluateListed(*this, *facetIndex_, cell, p, outValue, outFloat);
    for (unsigned rest = cell.facetsOfPart[place.part]; rest != 0; rest &= rest - 1) {
        const unsigned f = lowestBit(rest);
        const FacetWeights weights = cell.frame(f, params.data()).weightsAt(p);
        if (weights.isOutside()) continue;
        blend(*this, cell, f, weights, outValue, outFloat);
        return true;
    }
    return false;
}

std::size_t MeshFunction2D::evaluate(const Point* points, std::size_t count, Point* outValues,
                                     float* outFloats, bool* outFound) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) {
        if (outFound != nullptr) std::fill(outFound, outFound + count, false);
        return 0;
    }
    const Outputs outputs = {outValues, outFloats, outFound};
    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; i += kBatch) {
        hits += evaluateBatch(*this, *facetIndex_, points + i, (std::min)(kBatch, count - i),
                              outputs.from(i));
    }
    return hits;
}
