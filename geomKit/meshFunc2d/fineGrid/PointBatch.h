/// @file
/// `PointBatch`, points that are located together. Internal to mesh functions.
#pragma once

#include <algorithm>
#include <cstddef>

#include "geomKit/export.h"
#include "geomKit/internal/wideCall.h"
#include "geomKit/meshFunc2d/fineGrid/FineGrid.h"

namespace geomKit::detail {

/// Fetches a cache line ahead. It must be inlined, as its callers must: g++ drops calls of a
/// function that only prefetches, as if it had no effect.
GEOMKIT_ALWAYS_INLINE void prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

/// Points that are located together, so that their accesses to memory overlap. There is an array
/// for each quantity: the compiler vectorises loops of arithmetic over them.
struct PointBatch {
    using Point = FineGrid::Point;

    static constexpr std::size_t kSize = 64;

    const Point* points;
    std::size_t count;
    /// In cell units, by axis.
    double position[2][kSize];
    int cell[2][kSize];
    int isInGrid[kSize];
    CellDivision division[kSize];
    int partCoordinate[2][kSize];
    Part part[kSize];
    /// The facets that are left to try. Once the first of them accepts the point, it stays.
    unsigned candidates[kSize];
    /// In the last facet that was tried.
    double weights[3][kSize];
};

/// Finds the cells of the points.
GEOMKIT_INLINE_KERNEL void locateCells(const FineGrid& grid, PointBatch& batch) {
    std::fill_n(batch.isInGrid, batch.count, 1);
    for (int k = 0; k < 2; ++k) {
        const double origin = grid.frame().origin[k];
        const double scale = grid.frame().scale[k];
        const int cells = grid.frame().counts[k];
        for (std::size_t i = 0; i < batch.count; ++i) {
            const PointBatch::Point& p = batch.points[i];
            const double x = ((k == 0 ? p.u : p.v) - origin) * scale;
            batch.isInGrid[i] = isInGrid(x, cells) ? batch.isInGrid[i] : 0;
            batch.position[k][i] = x;
            batch.cell[k][i] = clampedCellCoordinate(x, cells);
        }
    }
}

/// Finds the parts of the points. Points outside of the grid get one too: that costs less than to
/// leave them out.
GEOMKIT_INLINE_KERNEL void locateParts(const FineGrid& grid, PointBatch& batch) {
    for (std::size_t i = 0; i < batch.count; ++i)
        batch.division[i] = grid.division(batch.cell[0][i], batch.cell[1][i]);
    for (int k = 0; k < 2; ++k) {
        for (std::size_t i = 0; i < batch.count; ++i) {
            batch.partCoordinate[k][i] =
                batch.division[i].partCoordinate(batch.position[k][i], batch.cell[k][i]);
        }
    }
    for (std::size_t i = 0; i < batch.count; ++i) {
        batch.part[i] =
            grid.part(batch.division[i], batch.partCoordinate[0][i], batch.partCoordinate[1][i]);
        prefetch(batch.part[i].fineCell->facetsOfPart);
        prefetch(batch.part[i].fineCell->vertices);
    }
}

}  // namespace geomKit::detail
