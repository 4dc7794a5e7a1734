#include <algorithm>

#include "geomKit/internal/toIndex.h"
#include "geomKit/internal/wideCall.h"
#include "geomKit/meshFunc2d/FacetIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/blend.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"

namespace geomKit {

namespace {

using detail::blend;
using detail::callWide;
using detail::cellCoordinate;
using detail::CellDivision;
using detail::clampedCellCoordinate;
using detail::FacetCell;
using detail::FacetFrame;
using detail::FacetIndex;
using detail::FacetPlace;
using detail::FacetWeights;
using detail::isInGrid;
using detail::lowestBit;
using detail::toIndex;

using Point = MeshFunction2D::Point;

/// Points that go together, so that their memory accesses overlap.
constexpr std::size_t kBatch = 64;
/// Candidates of each whose data are fetched ahead: few points need more.
constexpr int kPrefetched = 2;
/// The data of up to this many vertices need not be fetched ahead.
constexpr std::size_t kCachedVertices = 65536;

/// Points on their way, an array for each quantity: loops of mere arithmetic are then vectorised.
struct Batch {
    std::size_t count;
    /// In the location grid, by axis.
    double position[2][kBatch];
    int cell[2][kBatch];
    int isInGrid[kBatch];
    CellDivision division[kBatch];
    int part[2][kBatch];
    FacetPlace place[kBatch];
    /// The facets that are left to try. Once the first of them accepts the point, it stays there.
    unsigned candidates[kBatch];
    double weights[3][kBatch];
};

/// The next candidate of each point that has not been accepted yet.
struct Trials {
    std::size_t count;
    std::size_t point[kBatch];
    double position[2][kBatch];
    double corner[3][2][kBatch];
    double weights[3][kBatch];
    int isRejected[kBatch];
};

/// Where the answers go; each may be null.
struct Outputs {
    Point* values;
    float* floats;
    bool* found;
};

void _prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

GEOMKIT_INLINE_KERNEL void _placeInGrid(const MeshFunction2D& mesh, const Point* points,
                                        Batch& batch) {
    std::fill_n(batch.isInGrid, batch.count, 1);
    for (int k = 0; k < 2; ++k) {
        const double origin = mesh.boxMin[k];
        const double scale = mesh.cellScale[k];
        const int cells = mesh.cellCounts[k];
        for (std::size_t i = 0; i < batch.count; ++i) {
            const double x = ((k == 0 ? points[i].u : points[i].v) - origin) * scale;
            batch.isInGrid[i] = isInGrid(x, cells) ? batch.isInGrid[i] : 0;
            batch.position[k][i] = x;
            batch.cell[k][i] = clampedCellCoordinate(x, cells);
        }
    }
}

/// Points outside the grid are taken along: that costs less than to leave them out.
GEOMKIT_INLINE_KERNEL void _findFineCells(const FacetIndex& index, int columns, Batch& batch) {
    for (std::size_t i = 0; i < batch.count; ++i)
        batch.division[i] = index.division(toIndex(batch.cell[0][i] * columns + batch.cell[1][i]));
    for (int k = 0; k < 2; ++k) {
        for (std::size_t i = 0; i < batch.count; ++i) {
            batch.part[k][i] =
                batch.division[i].partCoordinate(batch.position[k][i], batch.cell[k][i]);
        }
    }
    for (std::size_t i = 0; i < batch.count; ++i) {
        batch.place[i] = index.place(batch.division[i], batch.part[0][i], batch.part[1][i]);
        _prefetch(batch.place[i].cell->facetsOfPart);
        _prefetch(batch.place[i].cell->vertices);
    }
}

/// Fetches what the first candidates need. Always inlined, because g++ takes a function that only
/// prefetches for one without effect.
GEOMKIT_INLINE_KERNEL void _prefetchData(const MeshFunction2D& mesh, const FacetCell& cell,
                                         unsigned candidates) {
    const bool hasFloats = mesh.normaldots.size() >= mesh.values.size();
    for (int n = 0; n < kPrefetched && candidates != 0; ++n, candidates &= candidates - 1) {
        for (int k = 0; k < 3; ++k) {
            const std::size_t vertex = toIndex(cell.vertex(lowestBit(candidates), k));
            _prefetch(&mesh.params[vertex]);
            _prefetch(&mesh.values[vertex]);
            if (hasFloats) _prefetch(&mesh.normaldots[vertex]);
        }
    }
}

/// Starts the trials of all points that have candidates.
GEOMKIT_INLINE_KERNEL void _readCandidates(const MeshFunction2D& mesh, Batch& batch,
                                           Trials& trials) {
    const bool isLarge = mesh.params.size() > kCachedVertices;
    trials.count = 0;
    for (std::size_t i = 0; i < batch.count; ++i) {
        const auto& [cell, part] = batch.place[i];
        const bool holdsFacets = (batch.isInGrid[i] != 0) & !cell->isListed();
        batch.candidates[i] = holdsFacets ? cell->facetsOfPart[part] : 0U;
        if (isLarge) _prefetchData(mesh, *cell, batch.candidates[i]);
        trials.point[trials.count] = i;
        trials.count += batch.candidates[i] != 0 ? 1 : 0;
    }
}

/// Tries one candidate of each point, and goes on with the points that are left. There is no branch
/// on the outcome: which of a point's candidates accepts it cannot be predicted.
GEOMKIT_INLINE_KERNEL void _tryCandidates(const Point* points, const Point* params, Batch& batch,
                                          Trials& trials) {
    for (std::size_t j = 0; j < trials.count; ++j) {
        const std::size_t i = trials.point[j];
        const unsigned f = lowestBit(batch.candidates[i]);
        trials.position[0][j] = points[i].u;
        trials.position[1][j] = points[i].v;
        for (int k = 0; k < 3; ++k) {
            const Point& corner = params[toIndex(batch.place[i].cell->vertex(f, k))];
            trials.corner[k][0][j] = corner.u;
            trials.corner[k][1][j] = corner.v;
        }
    }
    for (std::size_t j = 0; j < trials.count; ++j) {
        const auto& corner = trials.corner;
        const Point p0(corner[0][0][j], corner[0][1][j]);
        const Point p1(corner[1][0][j], corner[1][1][j]);
        const Point p2(corner[2][0][j], corner[2][1][j]);
        const FacetFrame frame(p0, {p0, p1, p2});
        const Point p(trials.position[0][j], trials.position[1][j]);
        const FacetWeights weights = frame.weightsAt(p);
        trials.weights[0][j] = weights.a;
        trials.weights[1][j] = weights.b;
        trials.weights[2][j] = weights.c;
        trials.isRejected[j] = weights.isOutside() ? 1 : 0;
    }
    std::size_t left = 0;
    for (std::size_t j = 0; j < trials.count; ++j) {
        const std::size_t i = trials.point[j];
        unsigned& candidates = batch.candidates[i];
        for (int k = 0; k < 3; ++k)
            batch.weights[k][i] = trials.weights[k][j];
        const auto isRejected = static_cast<unsigned>(trials.isRejected[j]);
        candidates &= candidates - isRejected;
        trials.point[left] = i;
        left += isRejected & (candidates != 0 ? 1U : 0U);
    }
    trials.count = left;
}

/// Evaluates up to `kBatch` points; returns how many succeeded.
GEOMKIT_INLINE_KERNEL std::size_t _evaluateBatch(const MeshFunction2D* mesh,
                                                 const FacetIndex* index, const Point* points,
                                                 std::size_t count, Outputs outputs) {
    Batch batch;
    Trials trials;
    batch.count = count;
    _placeInGrid(*mesh, points, batch);
    _findFineCells(*index, mesh->cellCounts.v, batch);
    _readCandidates(*mesh, batch, trials);
    while (trials.count > 0)
        _tryCandidates(points, mesh->params.data(), batch, trials);

    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const FacetCell& cell = *batch.place[i].cell;
        Point* outValue = outputs.values != nullptr ? outputs.values + i : nullptr;
        float* outFloat = outputs.floats != nullptr ? outputs.floats + i : nullptr;
        bool found = batch.candidates[i] != 0;
        if (found) {
            const FacetWeights weights = {batch.weights[0][i], batch.weights[1][i],
                                          batch.weights[2][i]};
            blend(*mesh, cell, lowestBit(batch.candidates[i]), weights, outValue, outFloat);
        } else if (cell.isListed()) {
            found = mesh->evaluate(points[i], outValue, outFloat);
        }
        if (outputs.found != nullptr) outputs.found[i] = found;
        hits += found ? 1 : 0;
    }
    return hits;
}

}  // namespace

std::size_t MeshFunction2D::evaluate(const Point* points, std::size_t count, Point* outValues,
                                     float* outFloats, bool* outFound) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) {
        if (outFound != nullptr) std::fill(outFound, outFound + count, false);
        return 0;
    }
    const MeshFunction2D* mesh = this;
    const FacetIndex* index = facetIndex_.get();
    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; i += kBatch) {
        const Outputs outputs = {outValues != nullptr ? outValues + i : nullptr,
                                 outFloats != nullptr ? outFloats + i : nullptr,
                                 outFound != nullptr ? outFound + i : nullptr};
        hits += callWide<_evaluateBatch>(mesh, index, points + i, (std::min)(kBatch, count - i),
                                         outputs);
    }
    return hits;
}

}  // namespace geomKit
