/// @file
/// `BatchTrials`, which finds the facets of a batch of points. Internal to mesh functions.
#pragma once

#include <cstddef>

#include "geomKit/internal/toIndex.h"
#include "geomKit/internal/wideCall.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/fineGrid/PointBatch.h"

namespace geomKit::detail {

/// Candidates of each point whose data are fetched ahead. Few points try more.
inline constexpr int kPrefetchedCandidates = 2;
/// The data of meshes with up to this many vertices stay in the caches, and are not fetched ahead.
inline constexpr std::size_t kCachedVertices = 65536;

/// The next candidate of each point that no facet has accepted yet.
struct BatchTrials {
    std::size_t count;
    /// Which point of the batch.
    std::size_t point[PointBatch::kSize];
    double position[2][PointBatch::kSize];
    double corner[3][2][PointBatch::kSize];
    double weights[3][PointBatch::kSize];
    int isRejected[PointBatch::kSize];
};

/// Fetches the data of the first candidates ahead.
GEOMKIT_INLINE_KERNEL void prefetchVertices(const MeshFunction2D& mesh, const FineCell& cell,
                                            unsigned candidates) {
    const bool hasFloats = mesh.normaldots.size() >= mesh.values.size();
    for (int n = 0; n < kPrefetchedCandidates && candidates != 0;
         ++n, candidates &= candidates - 1) {
        for (int k = 0; k < 3; ++k) {
            const std::size_t vertex = toIndex(cell.vertex(lowestBit(candidates), k));
            prefetch(&mesh.params[vertex]);
            prefetch(&mesh.values[vertex]);
            if (hasFloats) prefetch(&mesh.normaldots[vertex]);
        }
    }
}

/// Starts the trials of all points that have candidates.
GEOMKIT_INLINE_KERNEL void startTrials(const MeshFunction2D& mesh, PointBatch& batch,
                                       BatchTrials& trials) {
    const bool isLarge = mesh.params.size() > kCachedVertices;
    trials.count = 0;
    for (std::size_t i = 0; i < batch.count; ++i) {
        const Part& part = batch.part[i];
        batch.candidates[i] = batch.isInGrid[i] != 0 ? part.facets() : 0U;
        if (isLarge) prefetchVertices(mesh, *part.fineCell, batch.candidates[i]);
        trials.point[trials.count] = i;
        trials.count += batch.candidates[i] != 0 ? 1 : 0;
    }
}

GEOMKIT_INLINE_KERNEL void readCorners(const MeshFunction2D& mesh, const PointBatch& batch,
                                       BatchTrials& trials) {
    for (std::size_t j = 0; j < trials.count; ++j) {
        const std::size_t i = trials.point[j];
        const unsigned f = lowestBit(batch.candidates[i]);
        trials.position[0][j] = batch.points[i].u;
        trials.position[1][j] = batch.points[i].v;
        for (int k = 0; k < 3; ++k) {
            const PointBatch::Point& corner =
                mesh.params[toIndex(batch.part[i].fineCell->vertex(f, k))];
            trials.corner[k][0][j] = corner.u;
            trials.corner[k][1][j] = corner.v;
        }
    }
}

GEOMKIT_INLINE_KERNEL void weighCandidates(BatchTrials& trials) {
    using Point = PointBatch::Point;
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
}

/// Tries one candidate of each point, and keeps the points that have more to try. There is no
/// branch on the outcome, because the processor cannot predict it.
GEOMKIT_INLINE_KERNEL void tryCandidates(const MeshFunction2D& mesh, PointBatch& batch,
                                         BatchTrials& trials) {
    readCorners(mesh, batch, trials);
    weighCandidates(trials);
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

}  // namespace geomKit::detail
