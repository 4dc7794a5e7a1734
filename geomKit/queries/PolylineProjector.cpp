#include "geomKit/queries/PolylineProjector.h"

#include <algorithm>
#include <limits>

#include "geomKit/internal/isFinite.h"
#include "geomKit/internal/toIndex.h"
#include "geomKit/queries/polylineRuns.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

namespace {

using detail::isFinite;
using detail::isShortRun;
using detail::kRunRounding;
using detail::middleOfRun;
using detail::toIndex;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// Polylines of fewer vertices are scanned.
constexpr std::size_t kShortPolyline = 20;

}  // namespace

PolylineProjector::PolylineProjector(const std::vector<Vector3>& pts)
    : points(pts), arcLength(pts.size(), 0.0) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        arcLength[i] = arcLength[i - 1] + dist(points[i - 1], points[i]);
    }
    if (points.size() < kShortPolyline) return;
    lastVertexOfRuns_ = iLastVertex();
    iAddRun(0, lastVertexOfRuns_);
}

std::int32_t PolylineProjector::iLastVertex() const {
    constexpr std::size_t kMost = (std::numeric_limits<std::int32_t>::max)();
    return static_cast<std::int32_t>((std::min)(points.size(), kMost)) - 1;
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
    if (isShortRun(first, last)) {
        for (std::int32_t i = first; i <= last; ++i) {
            // A segment at a vertex that is not finite may be at any distance.
            const Vector3 everywhere(kInfinity, kInfinity, kInfinity);
            isFinite(points[toIndex(i)]) ? include(points[toIndex(i)], points[toIndex(i)])
                                         : include(-everywhere, everywhere);
        }
    } else {
        const std::int32_t m = middleOfRun(first, last);
        iAddRun(first, m);
        include(runs_[node + 1].low, runs_[node + 1].high);
        box.secondHalf = static_cast<std::int32_t>(runs_.size());
        iAddRun(m, last);
        include(runs_[toIndex(box.secondHalf)].low, runs_[toIndex(box.secondHalf)].high);
    }
    box.rounding = kRunRounding * (box.high - box.low).lengthSq();
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

}  // namespace geomKit
