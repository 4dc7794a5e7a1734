/// @file
/// The facet that extrapolation continues, found by asking every boundary chain.
#pragma once

#include "geomKit/meshFunc2d/MeshFunction2D.h"

/// -1 if no chain is within a distance of sqrt(1e13).
inline int facetOfNearestChain(const geomKit::MeshFunction2D& f, const ktNM::vect2<double>& p) {
    double best = 1e13;
    int chosen = -1;
    for (std::size_t k = 0; k < f.boundaries.size(); ++k) {
        const geomKit::PolylineProjection foot = f.boundaries[k]->nearest({p.u, p.v, 0.0});
        const geomKit::Vector3 d = foot.point - geomKit::Vector3(p.u, p.v, 0.0);
        const double distanceSq = d.y * d.y + d.x * d.x + d.z * d.z;
        if (!(distanceSq < best)) continue;
        best = distanceSq;
        chosen = f.boundaryFacets[k][static_cast<std::size_t>(foot.segment)];
    }
    return chosen;
}
