/// @file
/// Which parts of fine cells facets reach into. Internal to mesh functions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/FacetIndex.h"
#include "geomKit/meshFunc2d/FacetReach.h"

namespace geomKit::detail {

/// A reach's box in cell (cu, cv), in the parts of its fine cells.
struct PartBox {
    static constexpr int kParts = FacetCell::kPartsPerAxis;

    int u0, u1, v0, v1;

    PartBox(const FacetReach& reach, int cu, int cv, const CellDivision& division)
        : u0(division.partCoordinate(reach.low.u, cu)),
          u1(division.partCoordinate(reach.high.u, cu)),
          v0(division.partCoordinate(reach.low.v, cv)),
          v1(division.partCoordinate(reach.high.v, cv)) {}

    double fineCells() const {
        const int rows = v1 / kParts - v0 / kParts + 1;
        const int columns = u1 / kParts - u0 / kParts + 1;
        return static_cast<double>(rows) * columns;
    }

    /// A bit for each part of fine cell (fu, fv) in the box.
    unsigned partsOf(int fu, int fv) const {
        const int firstU = (std::max)(u0 - fu * kParts, 0);
        const int lastU = (std::min)(u1 - fu * kParts, kParts - 1);
        const int firstV = (std::max)(v0 - fv * kParts, 0);
        const int lastV = (std::min)(v1 - fv * kParts, kParts - 1);
        const unsigned inColumns = 0x1111U * ((2U << lastU) - (1U << firstU));
        const unsigned inRows = (2U << (kParts * lastV + kParts - 1)) - (1U << (kParts * firstV));
        return inColumns & inRows;
    }
};

/// The facets of cell (cu, cv) beside the fine cells that they touch.
///
/// Pairs of a facet and a fine cell in its box are gathered, an array for each quantity; which
/// parts the facet touches is then found by loops without branches, which are vectorised.
class FacetOverlaps {
public:
    FacetOverlaps(int cu, int cv, const CellDivision& division)
        : cu_(cu), cv_(cv), division_(division) {}

    /// Calls visit(fine cell, facet, parts) for each pair that touches, with a bit for each part.
    /// A fine cell meets its facets in the order of the reaches.
    template <typename Visit>
    void forEach(const std::vector<FacetReach>& reaches, Visit visit) {
        for (const FacetReach& reach : reaches) {
            const PartBox box(reach, cu_, cv_, division_);
            iSetSides(reach);
            for (int fv = box.v0 / kParts; fv <= box.v1 / kParts; ++fv) {
                for (int fu = box.u0 / kParts; fu <= box.u1 / kParts; ++fu) {
                    iAdd(reach.facet, box, fu, fv);
                    if (count_ == kCapacity) iVisitTouched(visit);
                }
            }
        }
        iVisitTouched(visit);
    }

private:
    static constexpr int kParts = FacetCell::kPartsPerAxis;
    static constexpr std::size_t kCapacity = 64;

    void iSetSides(const FacetReach& reach);
    void iAdd(int facet, const PartBox& box, int fu, int fv) {
        const std::size_t j = count_++;
        facet_[j] = facet;
        fineCell_[j] = fv * division_.count + fu;
        for (int i = 0; i < 3; ++i) {
            const auto& [u, v, c] = sides_[i];
            u_[i][j] = u;
            v_[i][j] = v;
            c_[i][j] = c + u * (fu * kParts) + v * (fv * kParts);
        }
        parts_[j] = box.partsOf(fu, fv);
    }
    void iChooseTouched();
    static void iChooseTouchedKernel(FacetOverlaps* overlaps);

    template <typename Visit>
    void iVisitTouched(Visit visit) {
        iChooseTouched();
        for (std::size_t j = 0; j < count_; ++j) {
            const auto parts = static_cast<unsigned>(parts_[j]);
            if (parts != 0) visit(toIndex(fineCell_[j]), facet_[j], parts);
        }
        count_ = 0;
    }

    int cu_;
    int cv_;
    CellDivision division_;
    /// Of the reach at hand, in parts: where one may be touched, by its lower corner.
    FacetReach::HalfPlane sides_[3];

    std::size_t count_ = 0;
    int facet_[kCapacity];
    int fineCell_[kCapacity];
    /// The sides, with the values at the first part of the fine cell.
    double u_[3][kCapacity];
    double v_[3][kCapacity];
    double c_[3][kCapacity];
    /// A bit for each part in the box; `iChooseTouched` leaves those that are touched. As wide as a
    /// double, for the sake of its loop.
    std::int64_t parts_[kCapacity];
};

}  // namespace geomKit::detail
