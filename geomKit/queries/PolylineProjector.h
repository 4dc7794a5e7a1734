/// @file
/// `PolylineProjector`, the nearest point on an open polyline.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Where a point projects to on a polyline.
struct PolylineProjection {
    /// Index k of the segment from `points[k]` to `points[k + 1]`; -1 when there is no segment.
    std::int32_t segment = -1;
    /// Parameter in [0, 1] along that segment.
    double param = 0.0;
    /// The nearest point.
    Vector3 point;
};

/// Finds the nearest point on an open polyline; built once, queried many times.
///
/// Distances are squared distances by `distSqToLineSegment`. Fewer than 20 vertices are scanned in
/// order and the first of equally near segments wins. From 20 vertices on the index range is halved
/// down to runs of fewer than 10 segments. Of segments that are equally near to the bit, the one in
/// the run that comes first wins, runs being taken by falling lower bound max(0, d - sqrt(L^2 -
/// c^2)) of their halves: d is the distance to the run's chord, L its arc length, c its chord. Runs
/// of equal bound come in index order, and no run is passed over because its bound was rounded up
/// beyond the distance of a segment in it. An end or split vertex competes as well, with its
/// squared distance plus 1e-13, on behalf of segment 0, the last segment or the one that ends in
/// it; this decides where the distance to a long segment has lost more than that to cancellation.
///
/// Repeated vertices are allowed. A segment at a vertex with NaN counts as being at distance 0, one
/// at an infinite vertex as that or as its finite end; a NaN query is answered by any segment. If
/// no distance is below infinity (a query or a polyline whose squares overflow), segment 0 is
/// taken.
///
/// `project` writes the result fields; `nearest` is const, so any number of threads may call it on
/// one object.
class PolylineProjector {
public:
    /// The vertices. Changing them after construction has no defined effect on queries, but for
    /// their number, which must not shrink.
    std::vector<Vector3> points;
    /// Length of the polyline up to each vertex; `arcLength[0]` is 0.
    std::vector<double> arcLength;
    /// Result of the last `project`.
    double param = 0.0;
    std::int32_t segment = 0;
    Vector3 point;

    /// Copies the vertices. An empty polyline is allowed and answers like one of a single vertex.
    GEOMKIT_API explicit PolylineProjector(const std::vector<Vector3>& pts);

    /// Sets `segment`, `param` and `point` for `x`. With fewer than two vertices does nothing.
    GEOMKIT_API void project(const Vector3& x);

    /// What `project` would store. With fewer than two vertices `segment` is -1, and `point` the
    /// only vertex or the origin. Allocates nothing.
    GEOMKIT_API PolylineProjection nearest(const Vector3& x) const;

    /// `nearest` of `count` queries, each result the same to the bit.
    GEOMKIT_API void nearest(const Vector3* queries, std::size_t count,
                             PolylineProjection* results) const;

private:
    class Search;

    /// The box of a run of vertices. The runs form a binary tree in preorder: the first half of a
    /// run comes right behind it.
    struct RunBox {
        Vector3 low;
        Vector3 high;
        /// How far, squared, rounding may take distances to the run below that to its box.
        double rounding;
        std::int32_t secondHalf;
    };

    void iAddRun(std::int32_t first, std::int32_t last);
    std::int32_t iNearestSegment(const Vector3& x) const;

    std::vector<RunBox> runs_;
};

}  // namespace geomKit
