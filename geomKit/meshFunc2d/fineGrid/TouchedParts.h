/// @file
/// `TouchedParts`, which parts of fine cells facets reach into. Internal to mesh functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/fineGrid/CellDivision.h"
#include "geomKit/meshFunc2d/fineGrid/FacetReach.h"
#include "geomKit/meshFunc2d/fineGrid/PartRange.h"

namespace geomKit::detail {

/// The parts of cell (cu, cv) that facets reach into.
///
/// Pairs of a facet and a fine cell that its box covers are gathered, an array for each quantity.
/// When the arrays are full, loops without branches find the parts that each facet reaches into;
/// the compiler vectorises them.
class TouchedParts {
public:
    TouchedParts(int cu, int cv, const CellDivision& division)
        : cu_(cu), cv_(cv), division_(division) {}

    /// Calls visit(fine cell, facet, parts) for each pair of a facet and a fine cell that it
    /// reaches into, with one bit for each part. The fine cell is counted from the first of the
    /// cell. A fine cell meets its facets in the order of the reaches.
    template <typename Visit>
    void forEach(const std::vector<FacetReach>& reaches, Visit visit) {
        for (const FacetReach& reach : reaches) {
            const PartRange range(reach, cu_, cv_, division_);
            iSetSides(reach);
            for (int fv = range.v0 / kParts; fv <= range.v1 / kParts; ++fv) {
                for (int fu = range.u0 / kParts; fu <= range.u1 / kParts; ++fu) {
                    iAdd(reach.facet, range, fu, fv);
                    if (count_ == kPairs) iVisitTouched(visit);
                }
            }
        }
        iVisitTouched(visit);
    }

private:
    static constexpr int kParts = FineCell::kPartsPerAxis;
    /// Pairs that are gathered.
    static constexpr std::size_t kPairs = 64;

    void iSetSides(const FacetReach& reach);
    void iAdd(int facet, const PartRange& range, int fu, int fv) {
        const std::size_t j = count_++;
        facet_[j] = facet;
        fineCell_[j] = fv * division_.fineCellsPerAxis + fu;
        for (int i = 0; i < 3; ++i) {
            const auto& [u, v, c] = sides_[i];
            u_[i][j] = u;
            v_[i][j] = v;
            c_[i][j] = c + u * (fu * kParts) + v * (fv * kParts);
        }
        parts_[j] = range.partsOf(fu, fv);
    }
    void iDropUntouched();
    static void iDropUntouchedKernel(TouchedParts* touched);

    template <typename Visit>
    void iVisitTouched(Visit visit) {
        iDropUntouched();
        for (std::size_t j = 0; j < count_; ++j) {
            const auto parts = static_cast<unsigned>(parts_[j]);
            if (parts != 0) visit(toIndex(fineCell_[j]), facet_[j], parts);
        }
        count_ = 0;
    }

    int cu_;
    int cv_;
    CellDivision division_;
    /// The half-planes of the facet at hand. The facet reaches into no part whose lower corner, in
    /// parts from the start of the cell, is outside of one of them.
    FacetReach::HalfPlane sides_[3];

    std::size_t count_ = 0;
    int facet_[kPairs];
    int fineCell_[kPairs];
    /// The half-planes, for parts that are counted from the start of the fine cell.
    double u_[3][kPairs];
    double v_[3][kPairs];
    double c_[3][kPairs];
    /// A bit for each part that the box covers; `iDropUntouched` leaves those that the facet
    /// reaches into. As wide as a double, so that the loop over both is vectorised.
    std::int64_t parts_[kPairs];
};

}  // namespace geomKit::detail
