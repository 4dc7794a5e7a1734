/// @file
/// `PolylineProjector`, the nearest point on an open polyline.
#pragma once

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
/// Which segment is found, to the bit:
///
/// 1. The distance of a segment is the square that `distSqToLineSegment` gives. The nearest segment
///    wins.
/// 2. Fewer than 20 vertices: of equally near segments the first wins.
/// 3. From 20 vertices on the segments lie in runs. The run of all segments is halved, and a run
///    from vertex i to vertex j again at vertex (i + j) / 2, until it has fewer than 10 segments.
/// 4. The bound of a run is max(0, d - sqrt(L^2 - c^2)), or 0 if L^2 < c^2 by rounding: d is the
///    distance to its chord, L its arc length and c the length of its chord.
/// 5. Runs are met in this order: of the runs that wait, at first that of all segments, the one of
///    the largest bound comes next, and of equal bounds the one with the lowest index. Its halves
///    wait instead of it.
/// 6. Of equally near segments in different runs, the one whose run is met first wins, and in one
///    run the first. No run is passed over, not even when rounding takes its bound above the
///    distance of a segment in it.
/// 7. End and split vertices compete too, with their squared distance plus 1e-13. The first vertex,
///    then the last one, come before all runs, on behalf of segment 0 and of the last segment. A
///    split vertex is met with the run that it splits, on behalf of the segment that ends in it.
///    This only decides where the distance to a long segment has lost more than 1e-13 to
///    cancellation.
/// 8. The point found is the start a of the segment if (x - a) . (b - a) <= 1e-13, else its end
///    b if (x - b) . (a - b) <= 1e-13, else the foot of the perpendicular.
///
/// Repeated vertices are allowed. A segment at a vertex with NaN counts as being at distance 0, one
/// at an infinite vertex as that or as its finite end; a NaN query is answered by any segment. If
/// no distance is below infinity (a query or a polyline whose squares overflow), segment 0 is
/// taken. Vertices beyond the first 2^31 - 1 take part in no query.
///
/// `project` writes the result fields; `nearest` is const, so any number of threads may call it on
/// one object. Neither allocates.
class PolylineProjector {
public:
    /// The vertices. When they are moved after construction, queries find some segment, not always
    /// the nearest; when their number changes, queries scan all segments by rules 1 and 2.
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
    /// only vertex or the origin.
    [[nodiscard]] GEOMKIT_API PolylineProjection nearest(const Vector3& x) const;

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
    /// The index of the last vertex that takes part.
    std::int32_t iLastVertex() const;
    std::int32_t iNearestSegment(const Vector3& x) const;

    std::vector<RunBox> runs_;
    /// For which `iLastVertex` the runs were built; -1 when there are none.
    std::int32_t lastVertexOfRuns_ = -1;
};

}  // namespace geomKit
