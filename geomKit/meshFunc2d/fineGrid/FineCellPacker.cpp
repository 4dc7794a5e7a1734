#include "geomKit/meshFunc2d/fineGrid/FineCellPacker.h"

#include <cstdint>

namespace geomKit::detail {

namespace {

/// The positions of a facet's corners among the first vertices of a fine cell: for each corner one
/// bit, or none if the vertex is new.
struct KnownCorners {
    unsigned bits[3] = {};

    KnownCorners(const int* corner, const FineCell& cell, unsigned vertices) {
        for (unsigned i = 0; i < vertices; ++i) {
            for (int k = 0; k < 3; ++k)
                bits[k] |= static_cast<unsigned>(cell.vertices[i] == corner[k]) << i;
        }
    }
};

}  // namespace

void FineCellPacker::add(std::size_t fineCell, const int* corner, unsigned parts) {
    FineCell& cell = fineCells_[fineCell];
    Fill& fill = fills_[fineCell];
    const int facet = fill.facets++;
    fill.overflows |= facet >= FineCell::kMaxFacets;
    if (fill.overflows) return;
    const KnownCorners known(corner, cell, fill.vertices);
    unsigned corners = 0;
    for (int k = 0; k < 3; ++k) {
        unsigned position = fill.vertices;
        if (known.bits[k] != 0) {
            position = lowestBit(known.bits[k]);
        } else {
            fill.overflows |= fill.vertices == FineCell::kMaxVertices;
            if (fill.overflows) return;
            cell.vertices[fill.vertices++] = corner[k];
        }
        corners |= position << (4 * k);
    }
    cell.corners[facet] = static_cast<std::uint16_t>(corners);
    for (int part = 0; part < FineCell::kParts; ++part) {
        const unsigned bit = (parts >> part & 1U) << facet;
        cell.facetsOfPart[part] = static_cast<std::uint16_t>(cell.facetsOfPart[part] | bit);
    }
}

bool FineCellPacker::startLists(std::vector<Corners>& lists) {
    const std::size_t before = lists.size();
    for (std::size_t i = 0; i < fills_.size(); ++i) {
        const Fill& fill = fills_[i];
        FineCell& cell = fineCells_[i];
        if (!fill.overflows) {
            cell.kind = fill.facets == 0 ? FineCell::Kind::Empty : FineCell::Kind::Packed;
            continue;
        }
        cell = FineCell();
        cell.kind = FineCell::Kind::Listed;
        cell.list.begin = cell.list.end = static_cast<std::uint32_t>(lists.size());
        lists.resize(lists.size() + static_cast<std::size_t>(fill.facets));
    }
    return lists.size() != before;
}

void FineCellPacker::addToList(std::size_t fineCell, const int* corner,
                               std::vector<Corners>& lists) {
    FineCell& cell = fineCells_[fineCell];
    if (cell.kind != FineCell::Kind::Listed) return;
    lists[cell.list.end++] = {corner[0], corner[1], corner[2]};
}

}  // namespace geomKit::detail
