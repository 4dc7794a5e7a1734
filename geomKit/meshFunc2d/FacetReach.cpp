#include "geomKit/meshFunc2d/FacetReach.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace geomKit::detail {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

// A point is accepted when its computed weights are at least -kMeshEps. With u = 2^-53, S the sum
// of the magnitudes of the two products in the determinant and K = sum |R_ij| W_j, R the inverse of
// the edge matrix and W the summed edge extents, rounding takes a weight off its true value by at
// most about 1.5 K u (4 S / |det| + 9), as long as that is below 1/2. Accepted points thus have
// true weights of at least -slack and lie within 2 slack extents of the bounding box. The constants
// leave a factor of two or more. Facets too thin for the bound to hold reach everywhere.
FacetReach::FacetReach(int facet_, const Point& p0, const Point& p1, const Point& p2,
                       const FacetEdges& edges, const Point& origin, const Point& scale)
    : facet(facet_), low(-kInfinity, -kInfinity), high(kInfinity, kInfinity) {
    const auto& [e1, e2, det] = edges;
    const double absDet = std::abs(det);
    const Point extent(std::abs(e1.u) + std::abs(e2.u), std::abs(e1.v) + std::abs(e2.v));
    const double condition = 2.0 * extent.u * extent.v / absDet;
    const double products = std::abs(e1.u * e2.v) + std::abs(e2.u * e1.v);
    const double rounding = condition * 0x1p-49 * (products / absDet + 3.0);
    if (!(rounding < 0.25)) return;
    const double slack = 2.0 * kMeshEps + 2.0 * rounding;

    const Point corners[3] = {p0, p1, p2};
    Point x[3];
    for (int k = 0; k < 2; ++k) {
        const double margin = 4.0 * slack * extent[k];
        const double least = (std::min)({p0[k], p1[k], p2[k]}) - margin;
        const double most = (std::max)({p0[k], p1[k], p2[k]}) + margin;
        low[k] = (least - origin[k]) * scale[k];
        high[k] = (most - origin[k]) * scale[k];
        for (int i = 0; i < 3; ++i)
            x[i][k] = (corners[i][k] - origin[k]) * scale[k];
    }
    // The determinant times the weight of the opposite corner, turned so that it grows inwards.
    const double sign = det < 0.0 ? -1.0 : 1.0;
    const double offset = 2.0 * slack * absDet * scale.u * scale.v;
    for (int i = 0; i < 3; ++i) {
        const Point along = (x[(i + 1) % 3] - x[i]) * sign;
        sides[i] = {-along.v, along.u, along.v * x[i].u - along.u * x[i].v + offset};
    }
}

}  // namespace geomKit::detail
