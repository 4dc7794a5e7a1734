#include "geomKit/meshFunc2d/FacetIndex.h"

#include <algorithm>
#include <cmath>

#include "geomKit/at.h"

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

/// The position of `vertex` among those of the cell, where it is entered if need be.
unsigned positionOf(int vertex, FacetCell& cell, Fill& fill) {
    for (unsigned i = fill.vertices; i-- > 0;) {
        if (cell.vertices[i] == vertex) return i;
    }
    if (fill.vertices < FacetCell::kCapacity) cell.vertices[fill.vertices] = vertex;
    return fill.vertices++;
}

void enter(const int* corner, unsigned parts, FacetCell& cell, Fill& fill) {
    const int facet = fill.facets++;
    if (fill.isListed) return;
    unsigned corners = 0;
    for (int k = 0; k < 3; ++k) {
        corners |= positionOf(corner[k], cell, fill) << (4 * k);
        fill.isListed |= fill.vertices > FacetCell::kCapacity;
        if (fill.isListed) return;
    }
    fill.isListed = facet >= FacetCell::kCapacity;
    if (fill.isListed) return;
    cell.corners[facet] = static_cast<std::uint16_t>(corners);
    for (; parts != 0; parts &= parts - 1) {
        std::uint16_t& list = cell.facetsOfPart[lowestBit(parts)];
        list = static_cast<std::uint16_t>(list | (1U << facet));
    }
}

}  // namespace

/// A reach in the parts of a cell's fine cells.
struct FacetIndex::Footprint {
    int u0, u1, v0, v1;
    /// Where a part may be touched, by its lower corner.
    FacetReach::HalfPlane sides[3];

    Footprint(const FacetReach& reach, int cu, int cv, const CellDivision& division)
        : u0(division.partCoordinate(reach.low.u, cu)),
          u1(division.partCoordinate(reach.high.u, cu)),
          v0(division.partCoordinate(reach.low.v, cv)),
          v1(division.partCoordinate(reach.high.v, cv)) {
        const double part = 1.0 / (division.count * kParts);
        for (int i = 0; i < 3; ++i) {
            const auto& [u, v, c] = reach.sides[i];
            const double pu = u * part;
            const double pv = v * part;
            // What counts is the corner farthest inside, and a thousandth of a part beyond it:
            // the outermost parts own the positions that leave the grid by up to kMeshEps.
            const double farthest = (std::max)(pu, 0.0) + (std::max)(pv, 0.0);
            const double margin = 1e-3 * (std::abs(pu) + std::abs(pv));
            sides[i] = {pu, pv, c + u * cu + v * cv + farthest + margin};
        }
    }

    double fineCells() const {
        const int rows = u1 / kParts - u0 / kParts + 1;
        const int columns = v1 / kParts - v0 / kParts + 1;
        return static_cast<double>(rows) * columns;
    }

    bool touches(int u, int v) const {
        bool all = true;
        for (const auto& side : sides)
            all &= side.u * u + side.v * v + side.c >= 0.0;
        return all;
    }

    /// One bit for each part of fine cell (fu, fv) that the reach touches.
    unsigned partsOf(int fu, int fv) const {
        unsigned parts = 0;
        const int lastU = (std::min)(u1, fu * kParts + kParts - 1);
        const int lastV = (std::min)(v1, fv * kParts + kParts - 1);
        for (int v = (std::max)(v0, fv * kParts); v <= lastV; ++v) {
            for (int u = (std::max)(u0, fu * kParts); u <= lastU; ++u) {
                const unsigned bit = 1U << (v % kParts * kParts + u % kParts);
                parts |= touches(u, v) ? bit : 0U;
            }
        }
        return parts;
    }

    /// Calls visit(fine cell, parts) for the fine cells that the reach touches, of count x count.
    template <typename Visit>
    void forEachFineCell(int count, Visit visit) const {
        for (int fv = v0 / kParts; fv <= v1 / kParts; ++fv) {
            for (int fu = u0 / kParts; fu <= u1 / kParts; ++fu) {
                const unsigned parts = partsOf(fu, fv);
                if (parts != 0) visit(at(fv * count + fu), parts);
            }
        }
    }
};

FacetIndex::FacetIndex(const std::vector<std::vector<int>>& cells, int cellsV,
                       const std::vector<Point>& params, const std::vector<int>& facets,
                       const Point& origin, const Point& scale) {
    std::size_t fineCells = 0;
    for (const std::vector<int>& list : cells) {
        const std::size_t count = at(fineCellsPerAxis(list.size()));
        fineCells += count * count;
    }
    cells_.reserve(fineCells);
    divisions_.reserve(cells.size());
    std::vector<FacetReach> reaches;
    for (const std::vector<int>& list : cells) {
        reaches.clear();
        for (const int f : list) {
            const int* corner = &facets[3 * at(f)];
            const Point& p0 = params[at(corner[0])];
            const Point& p1 = params[at(corner[1])];
            const Point& p2 = params[at(corner[2])];
            const FacetEdges edges(p0, p1, p2);
            if (!edges.isDegenerate()) reaches.emplace_back(f, p0, p1, p2, edges, origin, scale);
        }
        const int cell = static_cast<int>(divisions_.size());
        divide(reaches, cell / cellsV, cell % cellsV, facets);
    }
    listed_.shrink_to_fit();
}

int FacetIndex::fineCellsPerAxis(std::size_t facets) {
    return (std::max)(1, static_cast<int>(std::sqrt(kFineCells * static_cast<double>(facets))));
}

void FacetIndex::divide(const std::vector<FacetReach>& reaches, int cu, int cv,
                        const std::vector<int>& facets) {
    const std::size_t start = cells_.size();
    CellDivision division = {static_cast<std::uint32_t>(start), fineCellsPerAxis(reaches.size())};
    // Facets much larger than a fine cell would fill the index: fewer, larger cells keep it linear.
    for (; division.count > 1; division.count /= 2) {
        double entries = 0.0;
        for (const FacetReach& reach : reaches)
            entries += Footprint(reach, cu, cv, division).fineCells();
        if (entries <= kMaxEntries * kFineCells * static_cast<double>(reaches.size())) break;
    }
    divisions_.push_back(division);
    const int count = division.count;
    cells_.resize(start + at(count) * at(count));
    FacetCell* fineCells = &cells_[start];
    const auto forEachEntry = [&](auto&& visit) {
        for (const FacetReach& reach : reaches) {
            Footprint(reach, cu, cv, division)
                .forEachFineCell(
                    count, [&](std::size_t i, unsigned parts) { visit(i, reach.facet, parts); });
        }
    };

    std::vector<Fill> fills(at(count) * at(count));
    forEachEntry([&](std::size_t i, int facet, unsigned parts) {
        enter(&facets[3 * at(facet)], parts, fineCells[i], fills[i]);
    });

    const std::size_t listedBefore = listed_.size();
    for (std::size_t i = 0; i < fills.size(); ++i) {
        if (!fills[i].isListed) continue;
        fineCells[i] = FacetCell();
        fineCells[i].vertices[0] = fineCells[i].vertices[1] = static_cast<int>(listed_.size());
        listed_.resize(listed_.size() + at(fills[i].facets));
    }
    if (listed_.size() == listedBefore) return;
    forEachEntry([&](std::size_t i, int facet, unsigned) {
        if (fills[i].isListed) listed_[at(fineCells[i].vertices[1]++)] = facet;
    });
}
