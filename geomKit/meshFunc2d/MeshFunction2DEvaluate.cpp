#include <algorithm>

#include "geomKit/internal/outputs.h"
#include "geomKit/internal/wideCall.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/blend.h"
#include "geomKit/meshFunc2d/fineGrid/BatchTrials.h"
#include "geomKit/meshFunc2d/fineGrid/FineGrid.h"
#include "geomKit/meshFunc2d/fineGrid/PointBatch.h"
#include "geomKit/meshFunc2d/fineGrid/findFacet.h"

namespace geomKit {

namespace {

using detail::BatchTrials;
using detail::blend;
using detail::callWide;
using detail::findFacet;
using detail::findListedFacet;
using detail::FineCell;
using detail::FineGrid;
using detail::FoundFacet;
using detail::locateCells;
using detail::locateParts;
using detail::lowestBit;
using detail::offset;
using detail::PointBatch;
using detail::startTrials;
using detail::tryCandidates;

using Point = MeshFunction2D::Point;

/// Where the answers go; each may be null.
struct Outputs {
    Point* values;
    float* floats;
    bool* found;

    Outputs from(std::size_t i) const {
        return {offset(values, i), offset(floats, i), offset(found, i)};
    }
};

/// The facet of point i of a batch whose trials are over.
GEOMKIT_INLINE_KERNEL bool _facetOf(const MeshFunction2D& mesh, const FineGrid& grid,
                                    const PointBatch& batch, std::size_t i, FoundFacet& found) {
    const FineCell& cell = *batch.part[i].fineCell;
    if (batch.candidates[i] != 0) {
        const auto& weights = batch.weights;
        found = {cell.cornersOf(lowestBit(batch.candidates[i])),
                 {weights[0][i], weights[1][i], weights[2][i]}};
        return true;
    }
    return batch.isInGrid[i] != 0 && cell.kind == FineCell::Kind::Listed &&
           findListedFacet(grid, cell, mesh.params.data(), batch.points[i], found);
}

/// Evaluates up to `PointBatch::kSize` points; returns how many succeeded.
GEOMKIT_INLINE_KERNEL std::size_t _evaluateBatch(const MeshFunction2D* mesh, const FineGrid* grid,
                                                 const Point* points, std::size_t count,
                                                 Outputs outputs) {
    PointBatch batch;
    BatchTrials trials;
    batch.points = points;
    batch.count = count;
    locateCells(*grid, batch);
    locateParts(*grid, batch);
    startTrials(*mesh, batch, trials);
    while (trials.count > 0)
        tryCandidates(*mesh, batch, trials);

    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto [outValue, outFloat, outFound] = outputs.from(i);
        FoundFacet found;
        const bool isFound = _facetOf(*mesh, *grid, batch, i, found);
        if (isFound) blend(*mesh, found.corners.data(), found.weights, outValue, outFloat);
        if (outFound != nullptr) *outFound = isFound;
        hits += isFound ? 1 : 0;
    }
    return hits;
}

}  // namespace

bool MeshFunction2D::evaluate(const Point& p, Point* outValue, float* outFloat) const {
    if (!iIsIndexed()) return false;
    FoundFacet found;
    if (!findFacet(*fineGrid_, params.data(), p, found)) return false;
    blend(*this, found.corners.data(), found.weights, outValue, outFloat);
    return true;
}

std::size_t MeshFunction2D::evaluate(const Point* points, std::size_t count, Point* outValues,
                                     float* outFloats, bool* outFound) const {
    if (!iIsIndexed()) {
        if (outFound != nullptr) std::fill(outFound, outFound + count, false);
        return 0;
    }
    const Outputs outputs = {outValues, outFloats, outFound};
    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; i += PointBatch::kSize) {
        const MeshFunction2D* mesh = this;
        const FineGrid* grid = fineGrid_.get();
        const std::size_t size = (std::min)(PointBatch::kSize, count - i);
        hits += callWide<_evaluateBatch>(mesh, grid, points + i, size, outputs.from(i));
    }
    return hits;
}

// Indices that the grid names must be valid, also after an edit that it does not know of.
bool MeshFunction2D::iIsIndexed() const {
    return fineGrid_ != nullptr && fineGrid_->vertexCount() <= params.size() &&
           fineGrid_->vertexCount() <= values.size();
}

}  // namespace geomKit
