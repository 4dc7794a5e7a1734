/// @file
/// `FineCellPacker`, which enters facets into fine cells. Internal to mesh functions.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "geomKit/meshFunc2d/fineGrid/FineCell.h"

namespace geomKit::detail {

/// Fills the fine cells of a cell. The facets of each come twice, in order: at first all of them
/// are packed as long as they fit; then those of the fine cells that overflowed are listed.
class FineCellPacker {
public:
    using Corners = std::array<int, 3>;

    /// `fineCells` are empty.
    FineCellPacker(FineCell* fineCells, std::size_t count) : fineCells_(fineCells), fills_(count) {}

    /// Enters the facet with these corners into some parts of a fine cell, one bit each.
    void add(std::size_t fineCell, const int* corner, unsigned parts);

    /// Sets the kind of each fine cell, and appends space for those that are listed. Whether there
    /// are any.
    bool startLists(std::vector<Corners>& lists);

    /// Appends the facet to the list of a fine cell, if that is listed.
    void addToList(std::size_t fineCell, const int* corner, std::vector<Corners>& lists);

private:
    /// How full a fine cell is. After an overflow only the facets are counted.
    struct Fill {
        int facets = 0;
        unsigned vertices = 0;
        bool overflows = false;
    };

    FineCell* fineCells_;
    std::vector<Fill> fills_;
};

}  // namespace geomKit::detail
