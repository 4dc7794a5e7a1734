#include "geomKit/meshFunc2d/FacetIndex.h"

#include <algorithm>
#include <cmath>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/FacetOverlaps.h"

namespace geomKit::detail {

namespace {

constexpr int kParts = FacetCell::kPartsPerAxis;

/// Fine cells for each facet in a list: a cell of that size holds about eleven facets.
constexpr double kFineCells = 0.25;
/// The most entries that facets may cause on average in a fine cell.
constexpr double kMaxEntries = 32.0;

/// How full a fine cell is. One that cannot hold its facets only counts them.
struct Fill {
    int facets = 0;
    unsigned vertices = 0;
    bool isListed = false;
};

/// The positions of `corner[0..2]` among the cell's first vertices: one bit each, or none.
struct Positions {
    unsigned bits[3] = {};

    Positions(const int* corner, const FacetCell& cell, unsigned vertices) {
        for (unsigned i = 0; i < vertices; ++i) {
            for (int k = 0; k < 3; ++k)
                bits[k] |= static_cast<unsigned>(cell.vertices[i] == corner[k]) << i;
        }
    }
};

void _enter(const int* corner, unsigned parts, FacetCell& cell, Fill& fill) {
    const int facet = fill.facets++;
    fill.isListed |= facet >= FacetCell::kCapacity;
    if (fill.isListed) return;
    const Positions known(corner, cell, fill.vertices);
    unsigned corners = 0;
    for (int k = 0; k < 3; ++k) {
        unsigned position = fill.vertices;
        if (known.bits[k] != 0) {
            position = lowestBit(known.bits[k]);
        } else {
            fill.isListed |= fill.vertices == FacetCell::kCapacity;
            if (fill.isListed) return;
            cell.vertices[fill.vertices++] = corner[k];
        }
        corners |= position << (4 * k);
    }
    cell.corners[facet] = static_cast<std::uint16_t>(corners);
    for (int part = 0; part < kParts * kParts; ++part) {
        const unsigned bit = (parts >> part & 1U) << facet;
        cell.facetsOfPart[part] = static_cast<std::uint16_t>(cell.facetsOfPart[part] | bit);
    }
}

}  // namespace

FacetIndex::FacetIndex(const std::vector<std::vector<int>>& cells, int cellsV,
                       const std::vector<Point>& params, const std::vector<int>& facets,
                       const Point& origin, const Point& scale) {
    std::size_t fineCells = 0;
    for (const std::vector<int>& list : cells) {
        const std::size_t count = toIndex(iFineCellsPerAxis(list.size()));
        fineCells += count * count;
    }
    cells_.reserve(fineCells);
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
            if (!edges.isDegenerate()) reaches.emplace_back(f, p0, p1, p2, edges, origin, scale);
        }
        const int cell = static_cast<int>(divisions_.size());
        iDivide(reaches, cell / cellsV, cell % cellsV, facets);
    }
    listed_.shrink_to_fit();
}

int FacetIndex::iFineCellsPerAxis(std::size_t facets) {
    return (std::max)(1, static_cast<int>(std::sqrt(kFineCells * static_cast<double>(facets))));
}

void FacetIndex::iDivide(const std::vector<FacetReach>& reaches, int cu, int cv,
                         const std::vector<int>& facets) {
    const std::size_t start = cells_.size();
    CellDivision division = {static_cast<std::uint32_t>(start), iFineCellsPerAxis(reaches.size())};
    // Facets much larger than a fine cell would fill the index: fewer, larger cells keep it linear.
    for (; division.count > 1; division.count /= 2) {
        double entries = 0.0;
        for (const FacetReach& reach : reaches)
            entries += PartBox(reach, cu, cv, division).fineCells();
        if (entries <= kMaxEntries * kFineCells * static_cast<double>(reaches.size())) break;
    }
    divisions_.push_back(division);
    const std::size_t count = toIndex(division.count) * toIndex(division.count);
    cells_.resize(start + count);
    FacetCell* fineCells = &cells_[start];

    FacetOverlaps overlaps(cu, cv, division);
    std::vector<Fill> fills(count);
    overlaps.forEach(reaches, [&](std::size_t i, int facet, unsigned parts) {
        _enter(&facets[3 * toIndex(facet)], parts, fineCells[i], fills[i]);
    });

    const std::size_t listedBefore = listed_.size();
    for (std::size_t i = 0; i < fills.size(); ++i) {
        if (!fills[i].isListed) continue;
        fineCells[i] = FacetCell();
        fineCells[i].vertices[0] = fineCells[i].vertices[1] = static_cast<int>(listed_.size());
        listed_.resize(listed_.size() + toIndex(fills[i].facets));
    }
    if (listed_.size() == listedBefore) return;
    overlaps.forEach(reaches, [&](std::size_t i, int facet, unsigned) {
        if (fills[i].isListed) listed_[toIndex(fineCells[i].vertices[1]++)] = facet;
    });
}

}  // namespace geomKit::detail
