/// @file
/// How cells lie in the plane, and fine cells and parts in a cell. Internal to mesh functions.
#pragma once

#include <cstdint>

#include "geomKit/meshFunc2d/cellCoordinate.h"
#include "geomKit/meshFunc2d/fineGrid/FineCell.h"
#include "geomKit/meshFunc2d/vect2.h"

namespace geomKit::detail {

/// The cells of the location grid.
struct CellFrame {
    using Point = ktNM::vect2<double>;

    Point origin;
    /// Cells per parameter unit.
    Point scale;
    ktNM::vect2<int> counts;

    /// `p` in cell units.
    Point position(const Point& p) const {
        return {(p.u - origin.u) * scale.u, (p.v - origin.v) * scale.v};
    }
};

/// The fine cells of a cell.
struct CellDivision {
    /// The number of the first.
    std::uint32_t firstFineCell = 0;
    int fineCellsPerAxis = 1;

    /// Along an axis, in which part of cell number `cell` position `x` lies, in cell units. It
    /// never falls as `x` grows, which is all that the index relies on.
    int partCoordinate(double x, int cell) const {
        const int parts = fineCellsPerAxis * FineCell::kPartsPerAxis;
        return clampedCellCoordinate((x - cell) * parts, parts);
    }
};

}  // namespace geomKit::detail
