#include "geomKit/meshFunc2d/fineGrid/FacetReach.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace geomKit::detail {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// How far rounding takes a computed weight off its true value, at most; the bound holds below
/// 0.25. README.md derives a bound smaller by a factor of two and more.
double _roundingOfWeights(const FacetEdges& edges, const ktNM::vect2<double>& extent) {
    const auto& [e1, e2, det] = edges;
    const double absDet = std::abs(det);
    const double condition = 2.0 * extent.u * extent.v / absDet;
    const double products = std::abs(e1.u * e2.v) + std::abs(e2.u * e1.v);
    return condition * 0x1p-49 * (products / absDet + 3.0);
}

}  // namespace

FacetReach::FacetReach(int facet_, const Point& p0, const Point& p1, const Point& p2,
                       const FacetEdges& edges, const CellFrame& frame)
    : facet(facet_), low(-kInfinity, -kInfinity), high(kInfinity, kInfinity) {
    const auto& [e1, e2, det] = edges;
    const Point extent(std::abs(e1.u) + std::abs(e2.u), std::abs(e1.v) + std::abs(e2.v));
    const double rounding = _roundingOfWeights(edges, extent);
    if (!(rounding < 0.25)) return;
    // The true weights of accepted points are at least -slack / 2.
    const double slack = 2.0 * kMeshEps + 2.0 * rounding;

    const Point margin = extent * (4.0 * slack);
    const Point least((std::min)({p0.u, p1.u, p2.u}), (std::min)({p0.v, p1.v, p2.v}));
    const Point most((std::max)({p0.u, p1.u, p2.u}), (std::max)({p0.v, p1.v, p2.v}));
    low = frame.position(least - margin);
    high = frame.position(most + margin);

    // The weight of the opposite corner times the determinant, turned so that it grows inwards.
    const Point x[3] = {frame.position(p0), frame.position(p1), frame.position(p2)};
    const double sign = det < 0.0 ? -1.0 : 1.0;
    const double offset = 2.0 * slack * std::abs(det) * frame.scale.u * frame.scale.v;
    for (int i = 0; i < 3; ++i) {
        const Point along = (x[(i + 1) % 3] - x[i]) * sign;
        sides[i] = {-along.v, along.u, along.v * x[i].u - along.u * x[i].v + offset};
    }
}

}  // namespace geomKit::detail
