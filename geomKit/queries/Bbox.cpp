#include "geomKit/queries/Bbox.h"

#include <cstring>

#include "geomKit/WideCall.h"

namespace {

// The comparisons decide what NaN and zeros of both signs give: `v` replaces `kept` only when it is
// strictly beyond it. Written this way each is one vector instruction.
double lower(double v, double kept) {
    return v < kept ? v : kept;
}

double higher(double v, double kept) {
    return v > kept ? v : kept;
}

Vector3 lower(const Vector3& v, const Vector3& kept) {
    return {lower(v.x, kept.x), lower(v.y, kept.y), lower(v.z, kept.z)};
}

Vector3 higher(const Vector3& v, const Vector3& kept) {
    return {higher(v.x, kept.x), higher(v.y, kept.y), higher(v.z, kept.z)};
}

// The first zero of an axis in the list; its sign is the one that a pass in order would have kept.
double firstZero(const std::vector<Vector3>& pts, double Vector3::*axis) {
    for (const Vector3& p : pts) {
        if (p.*axis == 0.0) return p.*axis;
    }
    return 0.0;
}

// Four boxes side by side, each over every fourth point: no comparison waits for the one before it.
constexpr std::size_t kLanes = 4;

struct Lanes {
    Vector3 lo[kLanes];
    Vector3 hi[kLanes];
};

#if defined(__GNUC__)

// Four coordinates of successive points, so that three of them are a block of four points. The
// compilers do not find this layout by themselves; with AVX it takes a ninth of the time.
using Quad = double __attribute__((vector_size(4 * sizeof(double))));
constexpr std::size_t kQuads = 3;

GEOMKIT_INLINE_KERNEL void widenByQuads(const Vector3* pts, std::size_t blocks, Lanes* lanes) {
    Quad lo[kQuads];
    Quad hi[kQuads];
    std::memcpy(lo, lanes->lo, sizeof lo);
    std::memcpy(hi, lanes->hi, sizeof hi);
    const char* bytes = reinterpret_cast<const char*>(pts);
    for (std::size_t i = 0; i < blocks; ++i) {
        for (std::size_t k = 0; k < kQuads; ++k) {
            Quad v;
            std::memcpy(&v, bytes, sizeof v);
            bytes += sizeof v;
            lo[k] = v < lo[k] ? v : lo[k];
            hi[k] = v > hi[k] ? v : hi[k];
        }
    }
    std::memcpy(lanes->lo, lo, sizeof lo);
    std::memcpy(lanes->hi, hi, sizeof hi);
}

void widen(const Vector3* pts, std::size_t blocks, Lanes& lanes) {
    callWide<widenByQuads>(pts, blocks, &lanes);
}

#else

void widen(const Vector3* pts, std::size_t blocks, Lanes& lanes) {
    for (std::size_t i = 0; i < kLanes * blocks; ++i) {
        lanes.lo[i % kLanes] = lower(pts[i], lanes.lo[i % kLanes]);
        lanes.hi[i % kLanes] = higher(pts[i], lanes.hi[i % kLanes]);
    }
}

#endif

}  // namespace

Bbox::Bbox(const std::vector<Vector3>& pts) {
    if (pts.empty()) {
        maxPt = Vector3();
        return;
    }
    init(pts[0]);
    const Vector3 first = pts[0];
    Lanes lanes = {{first, first, first, first}, {first, first, first, first}};
    const std::size_t blocks = pts.size() / kLanes;
    widen(pts.data(), blocks, lanes);
    for (std::size_t k = 0; k < kLanes; ++k) {
        minPt = lower(lanes.lo[k], minPt);
        maxPt = higher(lanes.hi[k], maxPt);
    }
    for (std::size_t i = kLanes * blocks; i < pts.size(); ++i) {
        minPt = lower(pts[i], minPt);
        maxPt = higher(pts[i], maxPt);
    }

    // The lanes may have met the zeros of an axis in another order than the list has them.
    for (double Vector3::*axis : {&Vector3::x, &Vector3::y, &Vector3::z}) {
        if (minPt.*axis == 0.0) minPt.*axis = firstZero(pts, axis);
        if (maxPt.*axis == 0.0) maxPt.*axis = firstZero(pts, axis);
    }
}

Bbox Bbox::operator+(const Bbox& other) const {
    Bbox sum;
    if (isValid() && other.isValid()) {
        sum.minPt = lower(other.minPt, minPt);
        sum.maxPt = higher(other.maxPt, maxPt);
    }
    return sum;
}

Bbox& Bbox::operator+=(const Bbox& other) {
    *this = isValid() ? *this + other : other;
    return *this;
}

void Bbox::isec(const Bbox& other) {
    if (!isValid()) return;
    if (!other.isValid()) {
        reset();
        return;
    }
    minPt = higher(other.minPt, minPt);
    maxPt = lower(other.maxPt, maxPt);
}

void Bbox::boundsInDir(UVector3 dir, Vector3* low, Vector3* high) const {
    const bool swapped = (maxPt - minPt) * dir < -kNullComponentTol;
    Vector3 lowest = swapped ? maxPt : minPt;
    Vector3 highest = swapped ? minPt : maxPt;
    for (const double x : {minPt.x, maxPt.x}) {
        for (const double y : {minPt.y, maxPt.y}) {
            for (const double z : {minPt.z, maxPt.z}) {
                const Vector3 corner(x, y, z);
                if ((corner - lowest) * dir < -kNullComponentTol) {
                    lowest = corner;
                } else if ((corner - highest) * dir > kNullComponentTol) {
                    highest = corner;
                }
            }
        }
    }
    if (low != nullptr) *low = lowest;
    if (high != nullptr) *high = highest;
}
