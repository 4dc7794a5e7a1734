/// @file
/// Barycentric weights in a facet. Internal to mesh functions.
#pragma once

#include <cmath>

#include "geomKit/meshFunc2d/cellCoordinate.h"
#include "geomKit/meshFunc2d/vect2.h"

namespace geomKit::detail {

/// The edges of a facet from its first corner, and twice its signed area.
struct FacetEdges {
    using Point = ktNM::vect2<double>;

    Point e1;
    Point e2;
    double det;

    FacetEdges(const Point& p0, const Point& p1, const Point& p2)
        : e1(p1 - p0), e2(p2 - p0), det(e1.u * e2.v - e2.u * e1.v) {}

    /// Strictly below the tolerance. A NaN determinant is not.
    bool isDegenerate() const { return std::abs(det) < kMeshEps; }
};

/// Barycentric weights: `a` of the second corner, `b` of the third, `c` of the first.
struct FacetWeights {
    double a;
    double b;
    double c;

    /// True when a weight is strictly below -1e-8. Weights that are NaN count as inside. One branch
    /// instead of three: the processor cannot predict which weight rejects a point.
    bool isOutside() const {
        return (static_cast<int>(a < -kMeshEps) | static_cast<int>(b < -kMeshEps) |
                static_cast<int>(c < -kMeshEps)) != 0;
    }
};

/// The affine map from parameters to weights, of a facet that is not degenerate.
struct FacetFrame {
    using Point = ktNM::vect2<double>;

    Point p0;
    /// Inverse of the matrix whose columns are the edges.
    double r00 = 0.0;
    double r01 = 0.0;
    double r10 = 0.0;
    double r11 = 0.0;

    FacetFrame() = default;
    /// Copies the origin by components: compilers do not vectorise loops that copy points whole.
    FacetFrame(const Point& origin, const FacetEdges& edges) : p0(origin.u, origin.v) {
        const double r = 1.0 / edges.det;
        r00 = edges.e2.v * r;
        r01 = -edges.e2.u * r;
        r10 = -edges.e1.v * r;
        r11 = edges.e1.u * r;
    }

    FacetWeights weightsAt(const Point& p) const {
        const Point d = p - p0;
        const double a = r00 * d.u + r01 * d.v;
        const double b = r10 * d.u + r11 * d.v;
        return {a, b, 1.0 - a - b};
    }
};

}  // namespace geomKit::detail
