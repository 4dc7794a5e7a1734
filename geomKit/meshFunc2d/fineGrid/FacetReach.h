/// @file
/// Where a facet may accept points. Internal to mesh functions.
#pragma once

#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/fineGrid/CellDivision.h"
#include "geomKit/meshFunc2d/vect2.h"

namespace geomKit::detail {

/// The region, in cell units, outside of which the rounded arithmetic of the containment test
/// accepts no point: a box cut by three half-planes. A little larger than the facet.
struct FacetReach {
    using Point = ktNM::vect2<double>;

    /// The points x with u x.u + v x.v + c >= 0.
    struct HalfPlane {
        double u = 0.0;
        double v = 0.0;
        double c = 0.0;
    };

    int facet;
    Point low;
    Point high;
    HalfPlane sides[3];

    /// The facet is not degenerate.
    FacetReach(int facet, const Point& p0, const Point& p1, const Point& p2,
               const FacetEdges& edges, const CellFrame& frame);
};

}  // namespace geomKit::detail
