/// @file
/// The facets of a fine cell of a mesh function's index. Internal to mesh functions.
#pragma once

#include <cstdint>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/barycentric.h"

namespace geomKit::detail {

/// The position of the lowest of some bits.
inline unsigned lowestBit(unsigned bits) {
#if defined(__GNUC__)
    return static_cast<unsigned>(__builtin_ctz(bits));
#else
    unsigned position = 0;
    for (; (bits & 1U) == 0; bits >>= 1)
        ++position;
    return position;
#endif
}

/// The facets that may accept points of a fine cell, with their vertices, in two adjacent cache
/// lines: beyond the caches a query waits twice, for these and for the vertices.
///
/// The cell has 4 x 4 parts. Each lists, as bits, those of the facets that reach into it. A facet
/// is three positions, of four bits each, among the cell's vertices.
struct alignas(128) FacetCell {
    static constexpr int kPartsPerAxis = 4;
    static constexpr int kCapacity = 16;

    std::uint16_t facetsOfPart[kPartsPerAxis * kPartsPerAxis] = {};
    std::uint16_t corners[kCapacity] = {};
    int vertices[kCapacity] = {};

    /// No facet has its three corners at position 0: either the cell has no facets, or more than
    /// it can hold, and `vertices` begins with the range of their numbers in a list.
    bool isListed() const { return corners[0] == 0; }

    int vertex(unsigned facet, int corner) const {
        return vertices[(corners[facet] >> (4 * corner)) & 15];
    }
    FacetFrame frame(unsigned facet, const ktNM::vect2<double>* params) const {
        const ktNM::vect2<double>& p0 = params[toIndex(vertex(facet, 0))];
        return {p0, {p0, params[toIndex(vertex(facet, 1))], params[toIndex(vertex(facet, 2))]}};
    }
};

}  // namespace geomKit::detail
