/// @file
/// A finer grid below the cells of a mesh function's location grid. Internal to mesh functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "geomKit/meshFunc2d/FacetCell.h"
#include "geomKit/meshFunc2d/FacetReach.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"
#include "geomKit/meshFunc2d/vect2.h"

namespace geomKit::detail {

/// The fine cells of a cell: the number of the first, and how many there are along an axis.
struct CellDivision {
    std::uint32_t start = 0;
    int count = 1;

    /// In parts of fine cells from the start of the cell, for position `x` in it. Monotonic in `x`,
    /// which is all that the index relies on.
    int partCoordinate(double x, int cell) const {
        const int parts = count * FacetCell::kPartsPerAxis;
        return clampedCellCoordinate((x - cell) * parts, parts);
    }
};

/// Where a position lies: a part of a fine cell, or nowhere.
struct FacetPlace {
    const FacetCell* cell = nullptr;
    unsigned part = 0;
};

/// For a position in a cell of the location grid, the facets of that cell's list that may contain
/// it, in the list's order.
///
/// Each cell is divided into n x n fine cells, n by the length of its list. A facet is entered
/// wherever the rounded arithmetic of the containment test might accept a point, so the first facet
/// to accept a point is the same one as in the whole list. Facets that accept nothing are left out.
class FacetIndex {
public:
    using Point = ktNM::vect2<double>;

    /// `cells`, `cellsV` columns of them, list facets whose corners are valid in `params`; a point
    /// p lies at (p - origin) * scale in cell units.
    FacetIndex(const std::vector<std::vector<int>>& cells, int cellsV,
               const std::vector<Point>& params, const std::vector<int>& facets,
               const Point& origin, const Point& scale);

    const CellDivision& division(std::size_t cell) const { return divisions_[cell]; }

    /// The place at the coordinates of a part. Fine cells follow each other along u, the rows of a
    /// picture, which lets the memory run ahead of a raster.
    FacetPlace place(const CellDivision& division, int partU, int partV) const {
        constexpr unsigned kParts = FacetCell::kPartsPerAxis;
        const auto pu = static_cast<unsigned>(partU);
        const auto pv = static_cast<unsigned>(partV);
        const unsigned fine = (pv / kParts) * static_cast<unsigned>(division.count) + pu / kParts;
        return {&cells_[division.start + fine], (pv % kParts) * kParts + pu % kParts};
    }

    /// The facets, by number, of a cell that cannot hold its own.
    const int* begin(const FacetCell& listed) const { return listed_.data() + listed.vertices[0]; }
    const int* end(const FacetCell& listed) const { return listed_.data() + listed.vertices[1]; }

private:
    static int iFineCellsPerAxis(std::size_t facets);
    void iDivide(const std::vector<FacetReach>& reaches, int cu, int cv,
                 const std::vector<int>& facets);

    std::vector<CellDivision> divisions_;
    std::vector<FacetCell> cells_;
    /// Facet numbers, for cells that cannot hold theirs.
    std::vector<int> listed_;
};

}  // namespace geomKit::detail
