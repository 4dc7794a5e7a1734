/// @file
/// `FineCell`, the facets that may accept the points of a fine cell. Internal to mesh functions.
#pragma once

#include <array>
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

/// A square of the plane, and the facets that may accept its points, in two adjacent cache lines. A
/// query that misses the caches waits twice: for the fine cell, and for the vertices that it names.
struct alignas(128) FineCell {
    static constexpr int kPartsPerAxis = 4;
    static constexpr int kParts = kPartsPerAxis * kPartsPerAxis;
    static constexpr int kMaxFacets = 16;
    /// One less than positions of four bits allow, which makes room for the kind.
    static constexpr int kMaxVertices = 15;

    enum class Kind : std::int32_t {
        /// No facet may accept a point of the fine cell.
        Empty,
        /// The facets are held here.
        Packed,
        /// There are more facets or vertices than fit: the facets are `list` of the grid's lists.
        Listed,
    };
    /// Entries [begin, end) of the lists.
    struct ListRange {
        std::uint32_t begin;
        std::uint32_t end;
    };

    /// For each part, row by row along u, the facets that reach into it: bit f is facet f of the
    /// fine cell. All zero unless the fine cell is packed.
    std::uint16_t facetsOfPart[kParts] = {};
    /// For each facet the positions of its corners in `vertices`, four bits each.
    std::uint16_t corners[kMaxFacets] = {};
    union {
        /// If packed: the vertices of the facets, each once.
        int vertices[kMaxVertices] = {};
        /// If listed.
        ListRange list;
    };
    Kind kind = Kind::Empty;

    /// Of a packed fine cell, as all below.
    int vertex(unsigned facet, int corner) const {
        return vertices[(corners[facet] >> (4 * corner)) & 15];
    }
    std::array<int, 3> cornersOf(unsigned facet) const {
        return {vertex(facet, 0), vertex(facet, 1), vertex(facet, 2)};
    }
    FacetFrame frame(unsigned facet, const ktNM::vect2<double>* params) const {
        const ktNM::vect2<double>& p0 = params[toIndex(vertex(facet, 0))];
        return {p0, {p0, params[toIndex(vertex(facet, 1))], params[toIndex(vertex(facet, 2))]}};
    }
};
static_assert(sizeof(FineCell) == 128, "two cache lines");

/// A part of a fine cell, or none.
struct Part {
    const FineCell* fineCell = nullptr;
    unsigned number = 0;

    /// The facets that reach into it, as bits.
    unsigned facets() const { return fineCell->facetsOfPart[number]; }
};

}  // namespace geomKit::detail
