/// @file
/// `FineGrid`, the index that finds the facet of a point. Internal to mesh functions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "geomKit/meshFunc2d/fineGrid/CellDivision.h"
#include "geomKit/meshFunc2d/fineGrid/FacetReach.h"
#include "geomKit/meshFunc2d/fineGrid/FineCell.h"
#include "geomKit/meshFunc2d/vect2.h"

namespace geomKit::detail {

/// For a point, those facets of its cell's list that may accept it, in the list's order.
///
/// Each cell of the location grid is divided into n x n fine cells, n by the length of its list,
/// and each fine cell into 4 x 4 parts. A facet is entered in each part where the rounded
/// arithmetic of the containment test might accept a point. So the first facet that accepts a point
/// is the same one as in the whole list. README.md in this folder explains the structure.
class FineGrid {
public:
    using Point = ktNM::vect2<double>;
    /// The vertices of a facet.
    using Corners = std::array<int, 3>;

    struct CornersRange {
        const Corners* first;
        const Corners* last;

        const Corners* begin() const { return first; }
        const Corners* end() const { return last; }
    };

    /// `cells`, entry cu * counts.v + cv for cell (cu, cv), list facets with corners that are valid
    /// in `params`.
    FineGrid(const CellFrame& frame, const std::vector<std::vector<int>>& cells,
             const std::vector<Point>& params, const std::vector<int>& facets);

    const CellFrame& frame() const { return frame_; }
    /// One more than the largest vertex that the index names.
    std::size_t vertexCount() const { return vertexCount_; }

    const CellDivision& division(int cu, int cv) const {
        return divisions_[toIndex(cu * frame_.counts.v + cv)];
    }
    /// The part at coordinates (partU, partV) of a cell. Fine cells are stored row by row along u,
    /// as a raster visits them.
    Part part(const CellDivision& division, int partU, int partV) const {
        constexpr unsigned kParts = FineCell::kPartsPerAxis;
        const auto pu = static_cast<unsigned>(partU);
        const auto pv = static_cast<unsigned>(partV);
        const auto perAxis = static_cast<unsigned>(division.fineCellsPerAxis);
        const unsigned fineCell = (pv / kParts) * perAxis + pu / kParts;
        return {&fineCells_[division.firstFineCell + fineCell],
                (pv % kParts) * kParts + pu % kParts};
    }
    /// The part of a point, or none outside of the grid.
    Part partAt(const Point& p) const {
        const Point x = frame_.position(p);
        if (!isInGrid(x.u, frame_.counts.u) || !isInGrid(x.v, frame_.counts.v)) return {};
        const int cu = cellCoordinate(x.u, frame_.counts.u);
        const int cv = cellCoordinate(x.v, frame_.counts.v);
        const CellDivision& cell = division(cu, cv);
        return part(cell, cell.partCoordinate(x.u, cu), cell.partCoordinate(x.v, cv));
    }

    /// The facets of a listed fine cell.
    CornersRange listOf(const FineCell& listed) const {
        return {lists_.data() + listed.list.begin, lists_.data() + listed.list.end};
    }

private:
    void iAddCell(int cu, int cv, const std::vector<FacetReach>& reaches,
                  const std::vector<int>& facets);

    CellFrame frame_;
    std::vector<CellDivision> divisions_;
    std::vector<FineCell> fineCells_;
    /// The facets of the listed fine cells.
    std::vector<Corners> lists_;
    std::size_t vertexCount_ = 0;
};

}  // namespace geomKit::detail
