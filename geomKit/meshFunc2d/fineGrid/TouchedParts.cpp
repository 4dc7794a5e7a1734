#include "geomKit/meshFunc2d/fineGrid/TouchedParts.h"

#include <algorithm>
#include <cmath>

#include "geomKit/internal/wideCall.h"

namespace geomKit::detail {

void TouchedParts::iSetSides(const FacetReach& reach) {
    const double part = 1.0 / (division_.fineCellsPerAxis * kParts);
    for (int i = 0; i < 3; ++i) {
        const auto& [u, v, c] = reach.sides[i];
        const double pu = u * part;
        const double pv = v * part;
        // A part is touched if its corner farthest inside is inside of the half-plane. A thousandth
        // of a part is added: the outermost parts own the positions that leave the grid by up to
        // kMeshEps.
        const double farthest = (std::max)(pu, 0.0) + (std::max)(pv, 0.0);
        const double margin = 1e-3 * (std::abs(pu) + std::abs(pv));
        sides_[i] = {pu, pv, c + u * cu_ + v * cv_ + farthest + margin};
    }
}

GEOMKIT_INLINE_KERNEL void TouchedParts::iDropUntouchedKernel(TouchedParts* touched) {
    const auto& u = touched->u_;
    const auto& v = touched->v_;
    const auto& c = touched->c_;
    for (int part = 0; part < FineCell::kParts; ++part) {
        const int row = part / kParts;
        const double pu = part % kParts;
        const double pv = row;
        const std::int64_t others = ~(std::int64_t(1) << part);
        for (std::size_t j = 0; j < touched->count_; ++j) {
            const int isTouched = static_cast<int>(u[0][j] * pu + v[0][j] * pv + c[0][j] >= 0.0) &
                                  static_cast<int>(u[1][j] * pu + v[1][j] * pv + c[1][j] >= 0.0) &
                                  static_cast<int>(u[2][j] * pu + v[2][j] * pv + c[2][j] >= 0.0);
            touched->parts_[j] &= isTouched != 0 ? std::int64_t(-1) : others;
        }
    }
}

void TouchedParts::iDropUntouched() {
    callWide<iDropUntouchedKernel>(this);
}

}  // namespace geomKit::detail
