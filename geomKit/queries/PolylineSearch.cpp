// The search for the nearest segment of a polyline.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "geomKit/internal/nearestFirst.h"
#include "geomKit/internal/toIndex.h"
#include "geomKit/queries/PolylineProjector.h"
#include "geomKit/queries/polylineRuns.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

namespace {

using detail::isShortRun;
using detail::kRunRounding;
using detail::middleOfRun;
using detail::toIndex;
using detail::visitNearestFirst;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// What an end or split vertex adds to its squared distance, so that a segment at exactly that
/// distance still wins.
constexpr double kVertexHandicap = 1e-13;

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
/// The least wins, and of equals the one that the promised order of runs meets first. A tree of
/// boxes finds the least quickly; the order is worked out only for the few that tie.
class PolylineProjector::Search {
public:
    Search(const PolylineProjector& line, const Vector3& x)
        : line_(line), x_(x), last_(line.lastVertexOfRuns_) {}

    std::int32_t run() {
        iConsiderEnd(0, 0);
        iConsiderEnd(last_, last_ - 1);
        visitNearestFirst(Run{0, 0, last_}, *this);
        return winner_.segment;
    }

    /// The segments from vertex `first` to vertex `last`, and their node in the tree.
    struct Run {
        std::int32_t node, first, last;
    };

    bool isLeaf(const Run& run) const { return isShortRun(run.first, run.last); }
    std::pair<Run, Run> halves(const Run& run) const {
        const std::int32_t m = middleOfRun(run.first, run.last);
        return {{run.node + 1, run.first, m},
                {line_.runs_[toIndex(run.node)].secondHalf, m, run.last}};
    }
    double boundOf(const Run& run) const {
        const RunBox& box = line_.runs_[toIndex(run.node)];
        const double d = _distSqToBox(x_, box.low, box.high);
        return d - (kRunRounding * d + box.rounding);
    }
    double best() const { return best_; }
    void visit(const Run& run) {
        // Every first vertex of a short run but the polyline's own was split at on the way.
        if (run.first > 0) {
            iConsider(distSq(line_.points[toIndex(run.first)], x_) + kVertexHandicap,
                      {run.first - 1, run.first});
        }
        const Nearest nearest = _scanSegments(line_.points, run.first, run.last, x_);
        iConsider(nearest.distanceSq, {nearest.segment, -1});
    }

private:
    /// A segment that competes; `vertex` is the split vertex on whose behalf it does, or -1.
    struct Candidate {
        std::int32_t segment;
        std::int32_t vertex;

        /// True when the half from vertex m on, not the one before it, leads to this candidate.
        bool isBeyond(std::int32_t m) const { return vertex >= 0 ? vertex > m : segment >= m; }
    };

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

    /// Lower bound of the distance to a run from its chord and arc length; 0 where rounding leaves
    /// none.
    double iChordBound(std::int32_t first, std::int32_t last) const {
        if (toIndex(last) >= line_.arcLength.size()) return 0.0;  // the caller's edit
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
        while (!isShortRun(first, last)) {
            const std::int32_t m = middleOfRun(first, last);
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
            if (isShortRun(path.first, path.last)) return takeA;
            const std::int32_t split = middleOfRun(path.first, path.last);
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

std::int32_t PolylineProjector::iNearestSegment(const Vector3& x) const {
    const std::int32_t last = iLastVertex();
    if (last == lastVertexOfRuns_ && !runs_.empty()) return Search(*this, x).run();
    return _scanSegments(points, 0, last, x).segment;
}

}  // namespace geomKit
