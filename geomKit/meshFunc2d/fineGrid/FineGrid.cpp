#include "geomKit/meshFunc2d/fineGrid/FineGrid.h"

#include <algorithm>
#include <cmath>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/fineGrid/FineCellPacker.h"
#include "geomKit/meshFunc2d/fineGrid/PartRange.h"
#include "geomKit/meshFunc2d/fineGrid/TouchedParts.h"

namespace geomKit::detail {

namespace {

/// Fine cells for each facet in a cell's list. In a fine cell are then about eleven facets.
constexpr double kFineCellsPerFacet = 0.25;
/// The most fine cells that a facet may be entered in, on average over a cell.
constexpr double kMaxEntriesPerFacet = 8.0;

int _fineCellsPerAxis(std::size_t facets) {
    const double fineCells = kFineCellsPerFacet * static_cast<double>(facets);
    return (std::max)(1, static_cast<int>(std::sqrt(fineCells)));
}

/// Facets much larger than a fine cell would fill the index. Fewer, larger fine cells keep it
/// linear in the facets.
int _fineCellsPerAxis(const std::vector<FacetReach>& reaches, int cu, int cv) {
    CellDivision division;
    division.fineCellsPerAxis = _fineCellsPerAxis(reaches.size());
    for (; division.fineCellsPerAxis > 1; division.fineCellsPerAxis /= 2) {
        double entries = 0.0;
        for (const FacetReach& reach : reaches)
            entries += PartRange(reach, cu, cv, division).fineCells();
        if (entries <= kMaxEntriesPerFacet * static_cast<double>(reaches.size())) break;
    }
    return division.fineCellsPerAxis;
}

}  // namespace

FineGrid::FineGrid(const CellFrame& frame, const std::vector<std::vector<int>>& cells,
                   const std::vector<Point>& params, const std::vector<int>& facets)
    : frame_(frame) {
    std::size_t fineCells = 0;
    for (const std::vector<int>& list : cells) {
        const std::size_t perAxis = toIndex(_fineCellsPerAxis(list.size()));
        fineCells += perAxis * perAxis;
    }
    fineCells_.reserve(fineCells);
    divisions_.reserve(cells.size());
    std::vector<FacetReach> reaches;
    for (const std::vector<int>& list : cells) {
        reaches.clear();
        for (const int f : list) {
            const int* corner = &facets[3 * toIndex(f)];
            const Point& p0 = params[toIndex(corner[0])];
            const Point& p1 = params[toIndex(corner[1])];
            const Point& p2 = params[toIndex(corner[2])];
            const FacetEdges edges(p0, p1, p2);
            if (edges.isDegenerate()) continue;
            reaches.emplace_back(f, p0, p1, p2, edges, frame);
            const int largest = (std::max)({corner[0], corner[1], corner[2]});
            vertexCount_ = (std::max)(vertexCount_, toIndex(largest) + 1);
        }
        const int cell = static_cast<int>(divisions_.size());
        iAddCell(cell / frame.counts.v, cell % frame.counts.v, reaches, facets);
    }
    lists_.shrink_to_fit();
}

void FineGrid::iAddCell(int cu, int cv, const std::vector<FacetReach>& reaches,
                        const std::vector<int>& facets) {
    const std::size_t first = fineCells_.size();
    const CellDivision division = {static_cast<std::uint32_t>(first),
                                   _fineCellsPerAxis(reaches, cu, cv)};
    divisions_.push_back(division);
    const std::size_t count =
        toIndex(division.fineCellsPerAxis) * toIndex(division.fineCellsPerAxis);
    fineCells_.resize(first + count);

    FineCellPacker packer(&fineCells_[first], count);
    TouchedParts touched(cu, cv, division);
    touched.forEach(reaches, [&](std::size_t fineCell, int facet, unsigned parts) {
        packer.add(fineCell, &facets[3 * toIndex(facet)], parts);
    });
    if (!packer.startLists(lists_)) return;
    touched.forEach(reaches, [&](std::size_t fineCell, int facet, unsigned) {
        packer.addToList(fineCell, &facets[3 * toIndex(facet)], lists_);
    });
}

}  // namespace geomKit::detail
