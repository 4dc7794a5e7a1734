/// @file
/// From a position in a grid to a cell. Internal to mesh functions.
#pragma once

#include <algorithm>

namespace geomKit::detail {

/// The tolerance of mesh functions: on barycentric weights, on determinants in parameter units
/// squared, on positions in cell units, and on lengths.
inline constexpr double kMeshEps = 1e-8;

/// Whether position `x`, in cell units, lies along an axis of `n` cells or beyond its ends by
/// kMeshEps at most. NaN does not. Free of branches, for loops over many positions.
inline bool isInGrid(double x, int n) {
    return (x >= -kMeshEps) & (x <= n + kMeshEps);
}

/// The cell of position `x`, in cell units and finite, along an axis of `n` cells. Positions beyond
/// the ends belong to the end cells. For single queries, whose next step waits for the cell: the
/// processor predicts these branches, and does not wait.
inline int cellCoordinate(double x, int n) {
    if (x > n - kMeshEps) return n - 1;
    if (x < kMeshEps) return 0;
    return static_cast<int>(x);
}

/// The same for any `x`, NaN as 0, without branches: for loops over many positions.
inline int clampedCellCoordinate(double x, int n) {
    return static_cast<int>((std::min)((std::max)(0.0, x), n - 1.0));
}

}  // namespace geomKit::detail
