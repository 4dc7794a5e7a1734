#include "geomKit/queries/Bbox.h"

#include <cstring>
#include <ostream>

#include "geomKit/internal/wideCall.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

namespace {

using detail::callWide;

// `v` replaces `kept` only when it is strictly beyond it: this decides about NaN and about zeros of
// both signs. In this form each is one vector instruction.
double _lower(double v, double kept) {
    return v < kept ? v : kept;
}

double _higher(double v, double kept) {
    return v > kept ? v : kept;
}

Vector3 _lower(const Vector3& v, const Vector3& kept) {
    return {_lower(v.x, kept.x), _lower(v.y, kept.y), _lower(v.z, kept.z)};
}

Vector3 _higher(const Vector3& v, const Vector3& kept) {
    return {_higher(v.x, kept.x), _higher(v.y, kept.y), _higher(v.z, kept.z)};
}

// The first zero of an axis in the list. A pass in order would keep its sign.
double _firstZero(const Vector3* pts, std::size_t count, double Vector3::*axis) {
    for (std::size_t i = 0; i < count; ++i) {
        if (pts[i].*axis == 0.0) return pts[i].*axis;
    }
    return 0.0;
}

// Four boxes side by side, each of every fourth point, so that no comparison waits for the one
// before.
constexpr std::size_t kLanes = 4;

struct Lanes {
    Vector3 lo[kLanes];
    Vector3 hi[kLanes];
};

#if defined(__GNUC__)

// Four coordinates that follow each other in memory; three quads are four points. Compilers do not
// find this layout by themselves. With AVX it takes a ninth of the time of a plain loop.
using Quad = double __attribute__((vector_size(4 * sizeof(double))));
constexpr std::size_t kQuads = 3;

GEOMKIT_INLINE_KERNEL void _widenByQuads(const Vector3* pts, std::size_t blocks, Lanes* lanes) {
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

void _widen(const Vector3* pts, std::size_t blocks, Lanes& lanes) {
    callWide<_widenByQuads>(pts, blocks, &lanes);
}

#else

void _widen(const Vector3* pts, std::size_t blocks, Lanes& lanes) {
    for (std::size_t i = 0; i < kLanes * blocks; ++i) {
        lanes.lo[i % kLanes] = _lower(pts[i], lanes.lo[i % kLanes]);
        lanes.hi[i % kLanes] = _higher(pts[i], lanes.hi[i % kLanes]);
    }
}

#endif

}  // namespace

Bbox::Bbox(const Vector3* pts, std::size_t count) noexcept {
    if (count == 0) {
        maxPt = Vector3();
        return;
    }
    init(pts[0]);
    const Vector3 first = pts[0];
    Lanes lanes = {{first, first, first, first}, {first, first, first, first}};
    const std::size_t blocks = count / kLanes;
    _widen(pts, blocks, lanes);
    for (std::size_t k = 0; k < kLanes; ++k) {
        minPt = _lower(lanes.lo[k], minPt);
        maxPt = _higher(lanes.hi[k], maxPt);
    }
    for (std::size_t i = kLanes * blocks; i < count; ++i) {
        minPt = _lower(pts[i], minPt);
        maxPt = _higher(pts[i], maxPt);
    }

    // The lanes may have met the zeros of an axis in another order than the list has them.
    for (double Vector3::*axis : {&Vector3::x, &Vector3::y, &Vector3::z}) {
        if (minPt.*axis == 0.0) minPt.*axis = _firstZero(pts, count, axis);
        if (maxPt.*axis == 0.0) maxPt.*axis = _firstZero(pts, count, axis);
    }
}

Bbox Bbox::operator+(const Bbox& other) const noexcept {
    Bbox sum;
    if (isValid() && other.isValid()) {
        sum.minPt = _lower(other.minPt, minPt);
        sum.maxPt = _higher(other.maxPt, maxPt);
    }
    return sum;
}

Bbox& Bbox::operator+=(const Bbox& other) noexcept {
    *this = isValid() ? *this + other : other;
    return *this;
}

void Bbox::isec(const Bbox& other) noexcept {
    if (!isValid()) return;
    if (!other.isValid()) {
        reset();
        return;
    }
    minPt = _higher(other.minPt, minPt);
    maxPt = _lower(other.maxPt, maxPt);
}

void Bbox::boundsInDir(UVector3 dir, Vector3* low, Vector3* high) const noexcept {
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

std::ostream& operator<<(std::ostream& os, const Bbox& box) {
    if (!box.isValid()) return os << "empty";
    return os << box.minPt << " to " << box.maxPt;
}

}  // namespace geomKit
