/// @file
/// `PartRange`, the parts of a cell that a facet's box covers. Internal to mesh functions.
#pragma once

#include <algorithm>

#include "geomKit/meshFunc2d/fineGrid/CellDivision.h"
#include "geomKit/meshFunc2d/fineGrid/FacetReach.h"

namespace geomKit::detail {

/// The parts of cell (cu, cv) that the box of a reach covers, from (u0, v0) to (u1, v1), both
/// included.
struct PartRange {
    static constexpr int kParts = FineCell::kPartsPerAxis;

    int u0, u1, v0, v1;

    PartRange(const FacetReach& reach, int cu, int cv, const CellDivision& division)
        : u0(division.partCoordinate(reach.low.u, cu)),
          u1(division.partCoordinate(reach.high.u, cu)),
          v0(division.partCoordinate(reach.low.v, cv)),
          v1(division.partCoordinate(reach.high.v, cv)) {}

    /// How many fine cells they lie in.
    double fineCells() const {
        const int rows = v1 / kParts - v0 / kParts + 1;
        const int columns = u1 / kParts - u0 / kParts + 1;
        return static_cast<double>(rows) * columns;
    }

    /// Those that lie in fine cell (fu, fv), one bit each; part (pu, pv) of it is bit 4 pv + pu.
    unsigned partsOf(int fu, int fv) const {
        const int firstU = (std::max)(u0 - fu * kParts, 0);
        const int lastU = (std::min)(u1 - fu * kParts, kParts - 1);
        const int firstV = (std::max)(v0 - fv * kParts, 0);
        const int lastV = (std::min)(v1 - fv * kParts, kParts - 1);
        const unsigned inColumns = kFirstColumn * ((2U << lastU) - (1U << firstU));
        const unsigned inRows = (2U << (kParts * lastV + kParts - 1)) - (1U << (kParts * firstV));
        return inColumns & inRows;
    }

private:
    /// The first bit of each row.
    static constexpr unsigned kFirstColumn = 0x1111U;
};

}  // namespace geomKit::detail
