#include "geomKit/queries/PolylineProjector.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geomKit/internal/isFinite.h"
#include "geomKit/internal/toIndex.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

namespace {

using detail::isFinite;
using detail::toIndex;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Polylines of fewer vertices are scanned.
constexpr std::int32_t kShortPolyline = 20;
/// Runs of fewer segments are scanned, longer ones halved.
constexpr std::int32_t kShortRun = 10;
/// What an end or split vertex adds to its squared distance, so that a segment at exactly that
/// distance still wins.
constexpr double kVertexHandicap = 1e-13;
/// Bounds the rounding of `distSqToLineSegment` and of the distance to a box, in units of the
/// squared distance to the far side of the box: 128 units in the last place, twice what the
/// worst-case analysis of the formulas needs.
constexpr double kRounding = 0x1p-46;

std::int32_t _middle(std::int32_t first, std::int32_t last) {
    return first + (last - first) / 2;
}

bool _isShort(std::int32_t first, std::int32_t last) {
    return last - first < kShortRun;
}

double _distSqToBox(const Vector3& x, const Vector3& low, const Vector3& high) {
    const auto outside = [](double v, double lo, double hi) {
        return (std::max)(0.0, (std::max)(lo - v, v - hi));
    };
    return Vector3(outside(x.x, low.x, high.x), outside(x.y, low.y, high.y),
                   outside(x.z, low.z, high.z))
        .lengthSq();
}

struct Nearest {
    double distanceSq;
    std::int32_t segment;
};

/// The first of the nearest segments first..last-1; `first` itself if none is below infinity.
Nearest _scanSegments(const std::vector<Vector3>& points, std::int32_t first, std::int32_t last,
                      const Vector3& x) {
    Nearest nearest = {kInfinity, first};
    for (std::int32_t k = first; k < last; ++k) {
        const double d =
            distSqToLineSegment(x, points[toIndex(k)], points[toIndex(k + 1)], nullptr);
        if (d < nearest.distanceSq) nearest = {d, k};
    }
    return nearest;
}

}  // namespace

/// One query of a long polyline.
///
/// What competes are the segments, each with its squared distance, and the end and split vertices.
/// The least wins, and of equals the one that the promised order of runs meets first. Boxes find
/// the least quickly; the order is worked out only for the few that tie.
class PolylineProjector::Search {
public:
    Search(const PolylineProjector& line, const Vector3& x)
        : line_(line), x_(x), last_(static_cast<std::int32_t>(line.points.size()) - 1) {}

    std::int32_t run() {
        iConsiderEnd(0, 0);
        iConsiderEnd(last_, last_ - 1);

        struct Pending {
            double bound;
            std::int32_t node, first, last;
        };
        // One entry a level, and an index range halves 31 times at most.
        Pending stack[32];
        int depth = 0;
        Pending here = {iBoundOf(0), 0, 0, last_};
        for (;;) {
            if (!(here.bound > best_)) {
                if (!_isShort(here.first, here.last)) {
                    const std::int32_t m = _middle(here.first, here.last);
                    const std::int32_t secondNode = line_.runs_[toIndex(here.node)].secondHalf;
                    Pending near = {iBoundOf(here.node + 1), here.node + 1, here.first, m};
                    Pending far = {iBoundOf(secondNode), secondNode, m, here.last};
                    if (far.bound < near.bound) std::swap(near, far);
                    stack[depth++] = far;
                    here = near;
                    continue;
                }
                iScan(here.first, here.last);
            }
            if (depth == 0) return winner_.segment;
            here = stack[--depth];
        }
    }

private:
    /// A segment that competes; `vertex` is the split vertex on whose behalf it does, or -1.
    struct Candidate {
        std::int32_t segment;
        std::int32_t vertex;

        /// True when the half from vertex m on, not the one before it, leads to this candidate.
        bool isBeyond(std::int32_t m) const { return vertex >= 0 ? vertex > m : segment >= m; }
    };

    double iBoundOf(std::int32_t node) const {
        const RunBox& box = line_.runs_[toIndex(node)];
        const double d = _distSqToBox(x_, box.low, box.high);
        return d - (kRounding * d + box.rounding);
    }

    void iConsiderEnd(std::int32_t vertex, std::int32_t ownSegment) {
        const double d = distSq(line_.points[toIndex(vertex)], x_) + kVertexHandicap;
        if (d < best_) {
            best_ = d;
            winner_ = {ownSegment, -1};
        }
    }

    void iConsider(double d, const Candidate& candidate) {
        if (d < best_ || (d == best_ && !endWins_ && iIsBefore(candidate, winner_))) {
            best_ = d;
            winner_ = candidate;
            endWins_ = false;
        }
    }

    void iScan(std::int32_t first, std::int32_t last) {
        // Every first vertex of a short run but the polyline's own was split at on the way.
        if (first > 0) {
            iConsider(distSq(line_.points[toIndex(first)], x_) + kVertexHandicap,
                      {first - 1, first});
        }
        const Nearest run = _scanSegments(line_.points, first, last, x_);
        iConsider(run.distanceSq, {run.segment, -1});
    }

    /// Lower bound of the distance to a run from its chord and arc length; 0 where rounding leaves
    /// none.
    double iChordBound(std::int32_t first, std::int32_t last) const {
        const Vector3& a = line_.points[toIndex(first)];
        const Vector3& b = line_.points[toIndex(last)];
        const double length = line_.arcLength[toIndex(last)] - line_.arcLength[toIndex(first)];
        const double slackSq = length * length - distSq(a, b);
        if (!(slackSq >= 0.0)) return 0.0;
        const double bound = std::sqrt(distSqToLineSegment(x_, a, b, nullptr)) - std::sqrt(slackSq);
        return bound > 0.0 ? bound : 0.0;
    }

    /// True when the search through runs by falling bound meets `a` before `b`.
    bool iIsBefore(const Candidate& a, const Candidate& b) const {
        std::int32_t first = 0;
        std::int32_t last = last_;
        while (!_isShort(first, last)) {
            const std::int32_t m = _middle(first, last);
            if (a.vertex == m || b.vertex == m) return a.vertex == m && b.vertex != m;
            if (a.isBeyond(m) != b.isBeyond(m)) {
                return a.isBeyond(m) ? !iIsFirstHalfMetFirst(b, first, m, a, last)
                                     : iIsFirstHalfMetFirst(a, first, m, b, last);
            }
            (a.isBeyond(m) ? first : last) = m;
        }
        return a.segment < b.segment;
    }

    /// With `a` in the run from `first` to `m` and `b` in that from `m` to `last`: which is met
    /// first when the run of larger bound is always taken next, and the first of equal ones?
    bool iIsFirstHalfMetFirst(const Candidate& a, std::int32_t first, std::int32_t m,
                              const Candidate& b, std::int32_t last) const {
        Path pathA = {a, first, m, iChordBound(first, m)};
        Path pathB = {b, m, last, iChordBound(m, last)};
        for (;;) {
            const bool takeA = pathA.bound >= pathB.bound;
            Path& path = takeA ? pathA : pathB;
            if (_isShort(path.first, path.last)) return takeA;
            const std::int32_t split = _middle(path.first, path.last);
            if (path.target.vertex == split) return takeA;
            (path.target.isBeyond(split) ? path.first : path.last) = split;
            path.bound = iChordBound(path.first, path.last);
        }
    }

    struct Path {
        Candidate target;
        std::int32_t first, last;
        double bound;
    };

    const PolylineProjector& line_;
    const Vector3& x_;
    const std::int32_t last_;
    double best_ = kInfinity;
    Candidate winner_ = {0, -1};
    /// The end vertices come before everything else, so none but a nearer candidate beats them.
    bool endWins_ = true;
};

PolylineProjector::PolylineProjector(const std::vector<Vector3>& pts)
    : points(pts), arcLength(pts.size(), 0.0) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        arcLength[i] = arcLength[i - 1] + dist(points[i - 1], points[i]);
    }
    const auto count = static_cast<std::int32_t>(points.size());
    if (count >= kShortPolyline) iAddRun(0, count - 1);
}

void PolylineProjector::iAddRun(std::int32_t first, std::int32_t last) {
    const std::size_t node = runs_.size();
    runs_.emplace_back();
    RunBox box = {Vector3(kInfinity, kInfinity, kInfinity),
                  Vector3(-kInfinity, -kInfinity, -kInfinity), 0.0, -1};
    const auto include = [&box](const Vector3& low, const Vector3& high) {
        box.low = Vector3((std::min)(box.low.x, low.x), (std::min)(box.low.y, low.y),
                          (std::min)(box.low.z, low.z));
        box.high = Vector3((std::max)(box.high.x, high.x), (std::max)(box.high.y, high.y),
                           (std::max)(box.high.z, high.z));
    };
    if (_isShort(first, last)) {
        for (std::int32_t i = first; i <= last; ++i) {
            // A segment at a vertex that is not finite may be at any distance.
            const Vector3 everywhere(kInfinity, kInfinity, kInfinity);
            isFinite(points[toIndex(i)]) ? include(points[toIndex(i)], points[toIndex(i)])
                                         : include(-everywhere, everywhere);
        }
    } else {
        const std::int32_t m = _middle(first, last);
        iAddRun(first, m);
        include(runs_[node + 1].low, runs_[node + 1].high);
        box.secondHalf = static_cast<std::int32_t>(runs_.size());
        iAddRun(m, last);
        include(runs_[toIndex(box.secondHalf)].low, runs_[toIndex(box.secondHalf)].high);
    }
    box.rounding = kRounding * (box.high - box.low).lengthSq();
    runs_[node] = box;
}

void PolylineProjector::project(const Vector3& x) {
    const PolylineProjection result = nearest(x);
    if (result.segment < 0) return;
    segment = result.segment;
    param = result.param;
    point = result.point;
}

PolylineProjection PolylineProjector::nearest(const Vector3& x) const {
    PolylineProjection result;
    if (points.size() < 2) {
        if (!points.empty()) result.point = points[0];
        return result;
    }
    result.segment = iNearestSegment(x);
    const Vector3& a = points[toIndex(result.segment)];
    const Vector3& b = points[toIndex(result.segment + 1)];
    const Vector3 ab = b - a;
    const double along = (x - a) * ab;
    if (along <= kNullComponentTol) {
        result.param = 0.0;
        result.point = a;
    } else if ((x - b) * (a - b) <= kNullComponentTol) {
        result.param = 1.0;
        result.point = b;
    } else {
        result.param = along / ab.lengthSq();
        result.point = a + ab * result.param;
    }
    return result;
}

void PolylineProjector::nearest(const Vector3* queries, std::size_t count,
                                PolylineProjection* results) const {
    for (std::size_t i = 0; i < count; ++i)
        results[i] = nearest(queries[i]);
}

std::int32_t PolylineProjector::iNearestSegment(const Vector3& x) const {
    if (!runs_.empty()) return Search(*this, x).run();
    return _scanSegments(points, 0, static_cast<std::int32_t>(points.size()) - 1, x).segment;
}

}  // namespace geomKit
