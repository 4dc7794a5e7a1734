#include "geomKit/meshFunc2d/FacetIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geomKit/at.h"

namespace {

/// Meshes of up to this many facets are prepared: 1 MiB.
constexpr std::size_t kSmallMesh = std::size_t{1} << 14;
/// Fine cells for each facet in a list. Small meshes can afford more.
constexpr double kFineCellsSmall = 2.0;
constexpr double kFineCellsLarge = 1.0;
/// The most entries a facet may cause on average, for each fine cell that it is worth.
constexpr double kMaxEntries = 8.0;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

/// Where a facet may accept points, in cell units.
struct FacetIndex::Reach {
    int facet;
    Point low;
    Point high;

    /// A point is accepted when its computed weights are at least -kMeshEps. With u = 2^-53, S the
    /// sum of the magnitudes of the two products in the determinant and K = sum |R_ij| W_j, R the
    /// inverse of the edge matrix and W the summed edge extents, rounding takes a weight off its
    /// true value by at most about 1.5 K u (4 S / |det| + 9), as long as that is below 1/2.
    /// Accepted points thus have true weights of at least -slack and lie within 2 slack extents of
    /// the bounding box. The constants leave a factor of two or more. Facets too thin for the bound
    /// to hold reach everywhere.
    Reach(int facet_, const Point& p0, const Point& p1, const Point& p2, const FacetEdges& edges,
          const Point& origin, const Point& scale)
        : facet(facet_), low(-kInfinity, -kInfinity), high(kInfinity, kInfinity) {
        const auto& [e1, e2, det] = edges;
        const double absDet = std::abs(det);
        const Point extent(std::abs(e1.u) + std::abs(e2.u), std::abs(e1.v) + std::abs(e2.v));
        const double condition = 2.0 * extent.u * extent.v / absDet;
        const double products = std::abs(e1.u * e2.v) + std::abs(e2.u * e1.v);
        const double rounding = condition * 0x1p-49 * (products / absDet + 3.0);
        if (!(rounding < 0.25)) return;
        const double slack = 2.0 * kMeshEps + 2.0 * rounding;
        for (int k = 0; k < 2; ++k) {
            const double margin = 4.0 * slack * extent[k];
            const double least = (std::min)({p0[k], p1[k], p2[k]}) - margin;
            const double most = (std::max)({p0[k], p1[k], p2[k]}) + margin;
            low[k] = (least - origin[k]) * scale[k];
            high[k] = (most - origin[k]) * scale[k];
        }
    }
};

FacetIndex::FacetIndex(const std::vector<std::vector<int>>& cells, int cellsV,
                       const std::vector<Point>& params, const std::vector<int>& facets,
                       const Point& origin, const Point& scale) {
    const std::size_t facetCount = facets.size() / 3;
    const bool small = facetCount <= kSmallMesh;
    if (small) prepared_.resize(facetCount);
    std::vector<Reach> reaches;
    divisions_.reserve(cells.size());
    for (const std::vector<int>& list : cells) {
        reaches.clear();
        for (const int f : list) {
            const int* corner = &facets[3 * at(f)];
            const Point& p0 = params[at(corner[0])];
            const Point& p1 = params[at(corner[1])];
            const Point& p2 = params[at(corner[2])];
            const FacetEdges edges(p0, p1, p2);
            if (edges.isDegenerate()) continue;
            reaches.emplace_back(f, p0, p1, p2, edges, origin, scale);
            if (small) {
                prepared_[at(f)] = {FacetFrame(p0, edges), {corner[0], corner[1], corner[2]}};
            }
        }
        const int cell = static_cast<int>(divisions_.size());
        divisions_.push_back(divide(reaches, cell / cellsV, cell % cellsV,
                                    small ? kFineCellsSmall : kFineCellsLarge));
    }
    starts_.shrink_to_fit();
    entries_.shrink_to_fit();
}

FacetIndex::Division FacetIndex::divide(const std::vector<Reach>& reaches, int cu, int cv,
                                        double fineCellsPerFacet) {
    struct Range {
        int u0, u1, v0, v1;
    };
    const auto rangeOf = [cu, cv](const Reach& reach, int count) {
        return Range{
            fineCoordinate(reach.low.u, cu, count), fineCoordinate(reach.high.u, cu, count),
            fineCoordinate(reach.low.v, cv, count), fineCoordinate(reach.high.v, cv, count)};
    };
    const double fineCells = fineCellsPerFacet * static_cast<double>(reaches.size());
    Division division = {static_cast<std::uint32_t>(starts_.size()),
                         (std::max)(1, static_cast<int>(std::sqrt(fineCells)))};
    // Facets much larger than a fine cell would fill the index: fewer, larger cells keep it linear.
    for (; division.count > 1; division.count /= 2) {
        double entries = 0.0;
        for (const Reach& reach : reaches) {
            const Range r = rangeOf(reach, division.count);
            entries += static_cast<double>(r.u1 - r.u0 + 1) * (r.v1 - r.v0 + 1);
        }
        if (entries <= kMaxEntries * fineCells) break;
    }

    const int count = division.count;
    const auto forEachEntry = [&](auto&& visit) {
        for (const Reach& reach : reaches) {
            const Range r = rangeOf(reach, count);
            for (int fu = r.u0; fu <= r.u1; ++fu) {
                for (int fv = r.v0; fv <= r.v1; ++fv)
                    visit(at(fu * count + fv), reach.facet);
            }
        }
    };
    std::vector<std::uint32_t> next(at(count * count), 0);
    forEachEntry([&next](std::size_t fine, int) { ++next[fine]; });
    auto total = static_cast<std::uint32_t>(entries_.size());
    for (std::uint32_t& n : next) {
        starts_.push_back(total);
        total += n;
        n = starts_.back();
    }
    starts_.push_back(total);
    entries_.resize(total);
    forEachEntry([this, &next](std::size_t fine, int facet) { entries_[next[fine]++] = facet; });
    return division;
}
